// SPDX-License-Identifier: MIT
#include "app/terminal/WrappedText.h"

#include <algorithm>

#include "app/terminal/EscapedText.h"

namespace dorvanel::terminal {

std::vector<std::string> wrappedLines(std::string_view text, int columns) {
    std::vector<std::string> lines;
    int used = 0;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        if (word.empty()) continue;
        const int width = displayWidth(word);
        if (lines.empty() || used + 1 + width > columns) {
            lines.emplace_back(word);
            used = width;
        } else {
            lines.back() += ' ';
            lines.back() += word;
            used += 1 + width;
        }
    }
    return lines;
}

}  // namespace dorvanel::terminal
