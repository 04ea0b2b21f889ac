// SPDX-License-Identifier: MIT
#include "targets/traces/IniFile.h"

#include <algorithm>

namespace dorvanel::traces {

std::string IniSection::value(std::string_view key) const {
    const auto found =
        std::ranges::find_if(values, [&](const auto& one) { return one.first == key; });
    return found == values.end() ? std::string() : found->second;
}

std::vector<IniSection> readIni(std::string_view bytes) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(byteOrderMark)) bytes.remove_prefix(byteOrderMark.size());
    std::vector<IniSection> sections;
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.starts_with('[') && line.ends_with(']')) {
            sections.push_back({std::string(line.substr(1, line.size() - 2)), {}});
            continue;
        }
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos || sections.empty() || line.starts_with(';') ||
            line.starts_with('#')) {
            continue;
        }
        sections.back().values.emplace_back(line.substr(0, equals), line.substr(equals + 1));
    }
    return sections;
}

}  // namespace dorvanel::traces
