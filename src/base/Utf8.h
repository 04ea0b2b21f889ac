// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace dorvanel {

/// A character at the beginning of a text.
struct Utf8Character {
    std::uint32_t code = 0;
    std::size_t length = 0;  ///< bytes; 0 where the text does not begin with valid UTF-8
};

/// The first character of a text that is not empty.
Utf8Character firstCharacter(std::string_view text);

/// Whether the bytes are valid UTF-8 from the first to the last.
bool isUtf8(std::string_view bytes);

}  // namespace dorvanel
