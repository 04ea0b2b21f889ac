// SPDX-License-Identifier: MIT
#pragma once

#include "app/terminal/ExitStatus.h"
#include "app/terminal/Terminal.h"
#include "run/RunReport.h"

namespace dorvanel::terminal {

/// Tells what a run came to: what it shredded, what it passed over because its application runs,
/// what it could not do, and where the Activity Log is when it `wroteLog`; or why there is none.
void tellReport(const RunReport& report, bool wroteLog, Terminal& terminal);

/// What the report means to the shell.
ExitStatus statusOf(const RunReport& report);

}  // namespace dorvanel::terminal
