// SPDX-License-Identifier: MIT
#pragma once

#include "app/terminal/Terminal.h"
#include "engine/Plan.h"

namespace dorvanel::terminal {

/// Prints on `out`, for people, what a plan would do: its items by application and kind of trace,
/// what it passes over and why, what all comes to, and at last what should be known beforehand. No
/// line is wider than `columns`, 80 where that is 0; paths are shortened for it on a terminal, and
/// are whole anywhere else.
void tellPlan(const Plan& plan, Terminal& terminal, int columns);

}  // namespace dorvanel::terminal
