// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "base/Result.h"
#include "platform/Clock.h"
#include "ui/RunLoop.h"

namespace dorvanel::platform {

/// A loop for programs without a toolkit. Sleeps while nothing is due. An error where descriptors
/// have run out.
/// `clock` tells when a timer is due, and must outlive the loop.
Result<std::unique_ptr<ui::RunLoop>> makeRunLoop(const Clock& clock = systemClock());

}  // namespace dorvanel::platform
