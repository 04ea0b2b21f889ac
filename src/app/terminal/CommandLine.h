// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/terminal/Commands.h"
#include "app/terminal/ExitStatus.h"
#include "app/terminal/Terminal.h"

namespace dorvanel::terminal {

/// What a command line asks for.
struct Command {
    Action action;
    std::optional<std::string> home;  ///< the home folder to use instead of the user's own
    /// Whether root stays root in a home folder that belongs to somebody else. Any other command
    /// works as that person.
    bool keepsRights = false;
};

/// Reads the command line (without the program's name) and does nothing of what it says. No
/// command: `ended` is what to tell the shell, and the user has been told.
std::optional<Command> readCommandLine(const std::vector<std::string>& arguments,
                                       Terminal& terminal, ExitStatus& ended);

/// Reads the command line (without the program's name), does what it says, and returns what to
/// tell the shell.
ExitStatus runCommandLine(const std::vector<std::string>& arguments, Terminal& terminal);

}  // namespace dorvanel::terminal
