// SPDX-License-Identifier: MIT
#include "targets/traces/NamePattern.h"

#include <cstddef>

namespace dorvanel::traces {

bool isNamePattern(std::string_view pattern) {
    return pattern.find_first_of("*?") != std::string_view::npos;
}

bool matchesName(std::string_view pattern, std::string_view name) {
    std::size_t inPattern = 0;
    std::size_t inName = 0;
    // Where the latest star stands, and what it has taken up so far: only that one is ever tried
    // again, which keeps a pattern of many stars from taking exponential time.
    std::size_t star = std::string_view::npos;
    std::size_t taken = 0;
    while (inName < name.size()) {
        if (inPattern < pattern.size() && pattern[inPattern] == '*') {
            star = inPattern++;
            taken = inName;
        } else if (inPattern < pattern.size() &&
                   (pattern[inPattern] == '?' || pattern[inPattern] == name[inName])) {
            ++inPattern;
            ++inName;
        } else if (star != std::string_view::npos) {
            inPattern = star + 1;
            inName = ++taken;
        } else {
            return false;
        }
    }
    while (inPattern < pattern.size() && pattern[inPattern] == '*') ++inPattern;
    return inPattern == pattern.size();
}

}  // namespace dorvanel::traces
