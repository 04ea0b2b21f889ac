// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace dorvanel::traces {

/// Whether `pattern` has a "*" or "?".
[[nodiscard]] bool isNamePattern(std::string_view pattern);

/// Whether the name, in bytes, is one that the pattern describes: "*" stands for any bytes or none,
/// "?" for one. A leading dot is a byte like any other.
[[nodiscard]] bool matchesName(std::string_view pattern, std::string_view name);

}  // namespace dorvanel::traces
