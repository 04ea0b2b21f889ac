// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dorvanel::terminal {

/// The words of a text in lines of at most so many columns, none of them empty. A word that is
/// wider has a line of its own, which is then too wide.
std::vector<std::string> wrappedLines(std::string_view text, int columns);

}  // namespace dorvanel::terminal
