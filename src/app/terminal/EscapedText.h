// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace dorvanel::terminal {

/// Text for a person at a terminal, made from bytes that anybody may have chosen, a file's name
/// for example: valid UTF-8 that moves no cursor, changes no colour and cannot pass for other
/// text. Control characters become \n, \t and the like or \xNN, bytes that are not UTF-8 \xNN,
/// characters that reorder, hide or break text \u{N}, and a backslash \\.
std::string escapedForTerminal(std::string_view bytes);

/// Columns that such a text takes on a terminal, never fewer than it does.
int displayWidth(std::string_view text);

/// The text with "..." in place of its middle where it is wider than `columns`; cut off where
/// even that has no room.
std::string shortenedInMiddle(std::string_view text, int columns);

}  // namespace dorvanel::terminal
