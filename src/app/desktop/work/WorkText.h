// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "app/WorkEstimate.h"
#include "run/RunReport.h"
#include "ui/WorkProgress.h"

namespace dorvanel::desktop {

/// How much of the work is done, 0 to 100; -1 where that is not known.
int percentOf(const ui::WorkState& state);

/// "41 % · 2.1 of 5.0 GiB · 180 MB/s · about 3 min", as far as it is known, or what the request is
/// at in place of speed and time.
QString workTextOf(const ui::WorkState& state, const WorkEstimate& estimate);

/// "Item 3 of 12: cache2"; "" before the first.
QString itemTextOf(const ui::WorkState& state);

/// What was done and what is left after a stop, and that no ending follows; "" where the request
/// was not stopped and its ending, if it had one, not struck.
QString stopTextOf(const RunReport& report);

/// "Logging out in 10 s…".
QString countdownTextOf(Ending ending, int seconds);
/// "Log Out Now".
QString endNowTextOf(Ending ending);

}  // namespace dorvanel::desktop
