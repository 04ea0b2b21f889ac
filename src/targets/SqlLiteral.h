// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace dorvanel {

/// Whether the text is one literal of SQL and nothing else: a number, with a sign or without, a
/// text in single quotes, a blob, or NULL; with blanks around it. Such a text can stand in a
/// statement and be no more than a value there. Words that may also name a column are none.
bool isSqlLiteral(std::string_view text);

}  // namespace dorvanel
