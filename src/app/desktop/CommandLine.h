// SPDX-License-Identifier: MIT
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace dorvanel::desktop {

/// What the program was started with.
struct CommandLine {
    std::string action;              ///< an action of the launcher; empty for none
    bool isHidden = false;           ///< the window is put away at the start
    std::vector<std::string> files;  ///< absolute paths in bytes
    bool asks = false;               ///< about the files, of which there is one at least
};

/// Reads the arguments after the program's name. Where there is nothing to start (help, version, a
/// mistake), tells so on `out` or `err`, sets `status` and returns nothing.
std::optional<CommandLine> readCommandLine(const std::vector<std::string>& arguments,
                                           std::ostream& out, std::ostream& err, int& status);

}  // namespace dorvanel::desktop
