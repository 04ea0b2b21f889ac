// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>
#include <vector>

namespace dorvanel::test {

/// What a command prints, errors too; a command that fails fails the test. Words are passed as
/// they are.
std::string outputOf(const std::vector<std::string>& command);

/// The lines of a text, without empty ones.
std::set<std::string> linesOf(const std::string& text);

/// Whether a program is installed; says on the test's output that the case was not run where it
/// is not.
bool isInstalled(const std::string& program);

/// What the terminal program's help says of one command ("prefs set", "" for the program itself).
struct Help {
    std::set<std::string> commands;
    std::set<std::string> options;  ///< the long ones, "--help"
};
Help helpOf(const std::string& command);

}  // namespace dorvanel::test
