#pragma once

#include <memory>

#include "base/Result.h"
#include "ui/RunLoop.h"

namespace dorvanel::platform {

/// A loop for programs without a toolkit. Sleeps while nothing is due. An error where descriptors
/// have run out.
Result<std::unique_ptr<ui::RunLoop>> makeRunLoop();

}  // namespace dorvanel::platform
