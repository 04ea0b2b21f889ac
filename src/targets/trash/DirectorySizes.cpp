// SPDX-License-Identifier: MIT
#include "targets/trash/DirectorySizes.h"

#include <algorithm>
#include <optional>

#include "base/Percent.h"

namespace dorvanel::trash {
namespace {

/// Takes the first line off, its end with it.
std::string_view takeLine(std::string_view& list) {
    const std::size_t end = list.find('\n');
    const std::size_t size = end == std::string_view::npos ? list.size() : end + 1;
    const std::string_view line = list.substr(0, size);
    list.remove_prefix(size);
    return line;
}

bool takeNumber(std::string_view& line) {
    const std::size_t end = line.find(' ');
    const bool isNumber =
        end != std::string_view::npos && end > 0 &&
        std::ranges::all_of(line.substr(0, end), [](char c) { return c >= '0' && c <= '9'; });
    if (isNumber) line.remove_prefix(end + 1);
    return isNumber;
}

/// "SIZE TIME NAME", the name encoded like a part of a URI.
std::optional<std::string> nameIn(std::string_view line) {
    if (!takeNumber(line) || !takeNumber(line)) return std::nullopt;
    if (line.ends_with('\n')) line.remove_suffix(1);
    std::string name = percentDecoded(line);
    const bool isName = !name.empty() && name.find('/') == std::string::npos &&
                        name.find('\0') == std::string::npos;
    return isName ? std::optional(std::move(name)) : std::nullopt;
}

}  // namespace

std::vector<std::string> namesInSizes(std::string_view list) {
    std::vector<std::string> names;
    while (!list.empty()) {
        if (auto name = nameIn(takeLine(list))) names.push_back(std::move(*name));
    }
    return names;
}

std::string withoutSizes(std::string_view list,
                         const std::function<bool(const std::string& name)>& goes,
                         std::uint64_t& count) {
    std::string rest;
    count = 0;
    while (!list.empty()) {
        const std::string_view line = takeLine(list);
        const auto name = nameIn(line);
        if (name && goes(*name)) {
            ++count;
        } else {
            rest.append(line);
        }
    }
    return rest;
}

}  // namespace dorvanel::trash
