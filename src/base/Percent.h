// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace dorvanel {

/// The value of a hexadecimal digit; -1 for any other character.
int hexDigit(char c);

/// The text with each "%" and two hexadecimal digits decoded once; a "%" that no two such digits
/// follow stands for itself.
std::string percentDecoded(std::string_view text);

}  // namespace dorvanel
