// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "app/terminal/ExitStatus.h"
#include "app/terminal/Terminal.h"

namespace CLI {
class App;
}

namespace dorvanel::terminal {

/// What the command line chose to do; runs after the whole line has been read.
using Action = std::function<ExitStatus(Terminal&)>;

/// Each adds one command with its words and options to the program. When the command is on the
/// command line, `chosen` becomes what it does. `chosen` must outlive `program`.
void addShredCommand(CLI::App& program, Action& chosen);
void addRecoverCommand(CLI::App& program, Action& chosen);
void addWatchCommand(CLI::App& program, Action& chosen);
void addRunCommand(CLI::App& program, Action& chosen);
void addPrefsCommand(CLI::App& program, Action& chosen);
void addAppsCommand(CLI::App& program, Action& chosen);
void addProfilesCommand(CLI::App& program, Action& chosen);
void addTracesCommand(CLI::App& program, Action& chosen);
void addTrashCommand(CLI::App& program, Action& chosen);
void addLogCommand(CLI::App& program, Action& chosen);

}  // namespace dorvanel::terminal
