// SPDX-License-Identifier: MIT
#include "platform/linux/SandboxNames.h"

#include <algorithm>
#include <charconv>

namespace dorvanel::platform {
namespace {

/// Takes what stands before the next `separator` off `text`, and the separator too.
std::string_view takeUpTo(std::string_view& text, char separator) {
    const std::string_view part = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(part.size() + 1, text.size()));
    return part;
}

/// A name as it was before it became part of a unit's: "\x2d" there is a dash.
std::string withoutEscapes(std::string_view name) {
    std::string plain;
    while (!name.empty()) {
        unsigned char character = 0;
        if (name.size() >= 4 && name.starts_with("\\x") &&
            std::from_chars(name.data() + 2, name.data() + 4, character, 16).ptr ==
                name.data() + 4) {
            plain += static_cast<char>(character);
            name.remove_prefix(4);
        } else {
            plain += name.front();
            name.remove_prefix(1);
        }
    }
    return plain;
}

/// The first name that `nameIn` finds in a component of the groups' paths.
template <typename NameIn>
std::string firstName(std::string_view groups, NameIn nameIn) {
    while (!groups.empty()) {
        std::string_view path = takeUpTo(groups, '\n');
        takeUpTo(path, ':');  // the hierarchy's number
        takeUpTo(path, ':');  // its controllers
        while (!path.empty()) {
            const std::string_view name = nameIn(takeUpTo(path, '/'));
            if (!name.empty()) return withoutEscapes(name);
        }
    }
    return {};
}

bool isNumber(std::string_view text) {
    return !text.empty() &&
           std::ranges::all_of(text, [](char digit) { return digit >= '0' && digit <= '9'; });
}

/// Of "app-flatpak-ID-NUMBER.scope".
std::string_view flatpakOfUnit(std::string_view unit) {
    constexpr std::string_view prefix = "app-flatpak-";
    constexpr std::string_view suffix = ".scope";
    if (!unit.starts_with(prefix) || !unit.ends_with(suffix)) return {};
    unit.remove_prefix(prefix.size());
    unit.remove_suffix(std::min(suffix.size(), unit.size()));
    const std::size_t dash = unit.rfind('-');
    if (dash == std::string_view::npos || !isNumber(unit.substr(dash + 1))) return {};
    return unit.substr(0, dash);
}

/// Of "snap.NAME.APPLICATION-UUID.scope", "snap.NAME.APPLICATION.service".
std::string_view snapOfUnit(std::string_view unit) {
    constexpr std::string_view prefix = "snap.";
    if (!unit.starts_with(prefix)) return {};
    unit.remove_prefix(prefix.size());
    const std::size_t dot = unit.find('.');
    return dot == std::string_view::npos ? std::string_view() : unit.substr(0, dot);
}

std::string_view trimmed(std::string_view text) {
    constexpr const char* blank = " \t\r";
    text.remove_prefix(std::min(text.find_first_not_of(blank), text.size()));
    return text.substr(0, text.find_last_not_of(blank) + 1);
}

}  // namespace

std::string flatpakOfControlGroups(std::string_view groups) {
    return firstName(groups, flatpakOfUnit);
}

std::string flatpakOfInfo(std::string_view info) {
    bool inApplication = false;
    while (!info.empty()) {
        std::string_view line = trimmed(takeUpTo(info, '\n'));
        if (line.starts_with('[')) {
            inApplication = line == "[Application]";
        } else if (inApplication && trimmed(takeUpTo(line, '=')) == "name") {
            return std::string(trimmed(line));
        }
    }
    return {};
}

std::string snapOfControlGroups(std::string_view groups) {
    return firstName(groups, snapOfUnit);
}

std::string snapOfExecutable(std::string_view path) {
    constexpr std::string_view prefix = "/snap/";
    if (!path.starts_with(prefix)) return {};
    path.remove_prefix(prefix.size());
    const std::size_t slash = path.find('/');
    return slash == std::string_view::npos ? std::string() : std::string(path.substr(0, slash));
}

}  // namespace dorvanel::platform
