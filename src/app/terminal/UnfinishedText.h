// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "app/terminal/Terminal.h"
#include "base/Result.h"

namespace dorvanel::terminal {

/// Says on `err` that holding folders of runs that were cut off are left; nothing of none.
void tellUnfinished(std::size_t count, const Terminal& terminal);

/// Says on `err` that what is in work could not be written down.
void tellNotWrittenDown(const Error& error, const Terminal& terminal);

}  // namespace dorvanel::terminal
