// SPDX-License-Identifier: MIT
#pragma once

#include "app/terminal/ExitStatus.h"
#include "app/terminal/Terminal.h"
#include "engine/Outcome.h"

namespace dorvanel::terminal {

/// Tells what a shredding request did in a line on `out`, and on `err` what it could not do, each
/// with path and reason, and after a stop what is left and where.
void tellOutcome(const Outcome& outcome, Terminal& terminal);

/// What the outcome means to the shell.
ExitStatus statusOf(const Outcome& outcome);

}  // namespace dorvanel::terminal
