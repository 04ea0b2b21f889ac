// SPDX-License-Identifier: MIT
#pragma once

#include "ui/Outlets.h"

namespace dorvanel {

/// The status line of Browser Watch and a label for each supported application, named like the
/// controls of the window. All are connected, and live as long as the watch.
struct BrowserWatchOutlets {
    ui::TextField* browserWatchStatusTextbox = nullptr;
#define APPLICATION(flag, label, ...) ui::TextField* label = nullptr;
#include "apps/Applications.def"
};

}  // namespace dorvanel
