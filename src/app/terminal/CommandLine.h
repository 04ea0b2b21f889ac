#pragma once

#include <string>
#include <vector>

#include "app/terminal/ExitStatus.h"
#include "app/terminal/Terminal.h"

namespace dorvanel::terminal {

/// Reads the command line (without the program's name), does what it says, and returns what to
/// tell the shell.
ExitStatus runCommandLine(const std::vector<std::string>& arguments, Terminal& terminal);

}  // namespace dorvanel::terminal
