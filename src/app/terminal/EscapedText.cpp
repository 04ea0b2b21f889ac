// SPDX-License-Identifier: MIT
#include "app/terminal/EscapedText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "base/Utf8.h"

namespace dorvanel::terminal {
namespace {

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

/// Characters that reorder, hide or break the text around them, or that stand for nothing.
constexpr std::array<Range, 14> harmful = {{{0x80, 0x9F},
                                            {0xAD, 0xAD},
                                            {0x61C, 0x61C},
                                            {0x115F, 0x1160},
                                            {0x180E, 0x180E},
                                            {0x200B, 0x200F},
                                            {0x2028, 0x202E},
                                            {0x2060, 0x206F},
                                            {0x3164, 0x3164},
                                            {0xE000, 0xF8FF},
                                            {0xFEFF, 0xFEFF},
                                            {0xFFA0, 0xFFA0},
                                            {0xFFF0, 0xFFFB},
                                            {0xE0000, 0x10FFFF}}};

/// Characters that take two columns.
constexpr std::array<Range, 8> wide = {{{0x1100, 0x115F},
                                        {0x231A, 0x232A},
                                        {0x23E9, 0x23F3},
                                        {0x25FD, 0x27BF},
                                        {0x2B1B, 0x2B55},
                                        {0x2E80, 0xA4CF},
                                        {0xA960, 0xFFE6},
                                        {0x16FE0, 0x3FFFD}}};

template <std::size_t Size>
bool isIn(const std::array<Range, Size>& ranges, std::uint32_t code) {
    return std::any_of(ranges.begin(), ranges.end(), [code](const Range& range) {
        return code >= range.first && code <= range.last;
    });
}

std::string escaped(std::uint32_t control) {
    switch (control) {
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            return fmt::format("\\x{:02x}", control);
    }
}

int columnsOf(std::uint32_t code) {
    return isIn(wide, code) ? 2 : 1;
}

}  // namespace

std::string escapedForTerminal(std::string_view bytes) {
    std::string text;
    while (!bytes.empty()) {
        const Utf8Character character = firstCharacter(bytes);
        const std::size_t length = std::max<std::size_t>(character.length, 1);
        if (character.length == 0) {
            text += escaped(static_cast<unsigned char>(bytes[0]));
        } else if (character.code < 0x20 || character.code == 0x7F) {
            text += escaped(character.code);
        } else if (character.code == '\\') {
            text += "\\\\";
        } else if (isIn(harmful, character.code) || (character.code & 0xFFFEU) == 0xFFFE) {
            text += fmt::format("\\u{{{:x}}}", character.code);
        } else {
            text += bytes.substr(0, length);
        }
        bytes.remove_prefix(length);
    }
    return text;
}

int displayWidth(std::string_view text) {
    int columns = 0;
    while (!text.empty()) {
        const Utf8Character character = firstCharacter(text);
        columns += columnsOf(character.code);
        text.remove_prefix(std::max<std::size_t>(character.length, 1));
    }
    return columns;
}

std::string shortenedInMiddle(std::string_view text, int columns) {
    constexpr int dots = 3;
    if (displayWidth(text) <= columns) return std::string(text);
    const int room = columns - dots;
    const int tailRoom = room / 2;
    const int headRoom = room < 0 ? columns : room - tailRoom;

    std::vector<std::size_t> starts;  // of each character
    for (std::size_t at = 0; at < text.size();) {
        starts.push_back(at);
        at += std::max<std::size_t>(firstCharacter(text.substr(at)).length, 1);
    }
    std::size_t head = 0;
    for (int used = 0; head < text.size();) {
        const Utf8Character character = firstCharacter(text.substr(head));
        used += columnsOf(character.code);
        if (used > headRoom) break;
        head += std::max<std::size_t>(character.length, 1);
    }
    if (room < 0) return std::string(text.substr(0, head));
    std::size_t tail = text.size();
    int used = 0;
    for (auto start = starts.rbegin(); start != starts.rend(); ++start) {
        used += columnsOf(firstCharacter(text.substr(*start)).code);
        if (used > tailRoom) break;
        tail = *start;
    }
    return std::string(text.substr(0, head)) + "..." + std::string(text.substr(tail));
}

}  // namespace dorvanel::terminal
