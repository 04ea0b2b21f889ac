// SPDX-License-Identifier: MIT
#include "watch/ListedApplication.h"

#include <algorithm>

namespace dorvanel {
namespace {

bool contains(std::string_view line, std::string_view part) {
    return line.find(part) != std::string_view::npos;
}

}  // namespace

std::vector<std::string_view> testStrings() {
    std::vector<std::string_view> strings;
    strings.reserve(applicationCount);
    for (const SupportedApplication& application : applications) {
        strings.push_back(application.processText);
    }
    return strings;
}

std::size_t applicationNamedIn(std::string_view line,
                               const std::vector<std::string_view>& strings) {
    if (contains(line, "/usr/bin/hdid")) return strings.size();
    const auto found = std::find_if(strings.begin(), strings.end(),
                                    [&](std::string_view part) { return contains(line, part); });
    return static_cast<std::size_t>(found - strings.begin());
}

}  // namespace dorvanel
