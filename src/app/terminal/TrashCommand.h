// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "app/terminal/ExitStatus.h"
#include "app/terminal/Report.h"
#include "app/terminal/Terminal.h"

namespace dorvanel::terminal {

struct TrashOptions {
    bool yes = false;  ///< nothing is asked
    ReportOptions report{};
};

/// Shreds the trash of the user's home folder, and of what is mounted at these points.
ExitStatus shredTrash(Terminal& terminal, const TrashOptions& options,
                      const std::vector<std::string>& mountPoints);

}  // namespace dorvanel::terminal
