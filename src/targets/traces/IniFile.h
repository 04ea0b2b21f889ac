// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dorvanel::traces {

/// A section of an INI file, as Mozilla's programs write them.
struct IniSection {
    std::string name;
    std::vector<std::pair<std::string, std::string>> values;

    /// The first value of this name; "" where there is none.
    [[nodiscard]] std::string value(std::string_view key) const;
};

/// The sections in their order, any bytes will do: what is no line of an INI file is passed over.
std::vector<IniSection> readIni(std::string_view bytes);

}  // namespace dorvanel::traces
