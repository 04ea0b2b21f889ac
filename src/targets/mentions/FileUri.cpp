// SPDX-License-Identifier: MIT
#include "targets/mentions/FileUri.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>

#include "base/Percent.h"

namespace dorvanel::mentions {
namespace {

bool staysInUri(char c) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    const bool isDigit = c >= '0' && c <= '9';
    constexpr std::string_view others = "!$&'()*+,-./:=@_~";
    return isLetter || isDigit || others.find(c) != std::string_view::npos;
}

bool startsWithLetters(std::string_view text, std::string_view lower) {
    const auto small = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    };
    return text.size() >= lower.size() &&
           std::ranges::equal(text.substr(0, lower.size()), lower, {}, small);
}

/// The escapes of a desktop entry's value.
std::string unescaped(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        const char next = value[++i];
        switch (next) {
            case 's':
                text += ' ';
                break;
            case 'n':
                text += '\n';
                break;
            case 't':
                text += '\t';
                break;
            case 'r':
                text += '\r';
                break;
            case '\\':
                text += '\\';
                break;
            default:
                text += '\\';
                text += next;
                break;
        }
    }
    return text;
}

/// KDE's "$HOME" and "${HOME}", where a path may begin, and "$$" for "$".
std::string expanded(std::string_view text, const std::string& home) {
    std::string whole;
    for (const std::string_view scheme : {"file://", "file:"}) {
        if (!text.starts_with(scheme)) continue;
        whole = scheme;
        text.remove_prefix(scheme.size());
        break;
    }
    for (const std::string_view variable : {"$HOME/", "${HOME}/"}) {
        if (!text.starts_with(variable)) continue;
        whole += home;
        text.remove_prefix(variable.size() - 1);
        break;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i).starts_with("$$")) ++i;
        whole += text[i];
    }
    return whole;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r')) {
        text.remove_suffix(1);
    }
    return text;
}

}  // namespace

void addToUri(std::string& uri, std::string_view pathPart) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    for (const char c : pathPart) {
        if (staysInUri(c)) {
            uri += c;
            continue;
        }
        const auto byte = static_cast<std::uint8_t>(c);
        uri += '%';
        uri += digits[byte >> 4];
        uri += digits[byte & 15];
    }
}

std::string fileUri(std::string_view path) {
    std::string uri = "file://";
    addToUri(uri, path);
    return uri;
}

std::string plainPath(std::string_view path) {
    std::string plain = std::filesystem::path(path).lexically_normal().native();
    while (plain.size() > 1 && plain.ends_with('/')) plain.pop_back();
    // Two slashes at the beginning may mean something of their own elsewhere, but not here.
    const std::size_t slashes = std::min(plain.find_first_not_of('/'), plain.size());
    if (slashes > 1) plain.erase(0, slashes - 1);
    return plain;
}

std::optional<std::string> pathOfUri(std::string_view uri) {
    if (!startsWithLetters(uri, "file:")) return std::nullopt;
    uri.remove_prefix(5);
    if (uri.starts_with("//")) {
        uri.remove_prefix(2);
        if (startsWithLetters(uri, "localhost/")) uri.remove_prefix(9);
    }
    const std::string path = percentDecoded(uri);
    if (!path.starts_with('/') || path.find('\0') != std::string::npos) return std::nullopt;
    return plainPath(path);
}

std::optional<std::string> pathOfLinkEntry(std::string_view text, const std::string& home) {
    bool isInEntry = false;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.starts_with('[')) isInEntry = line == "[Desktop Entry]";
        const std::size_t equals = line.find('=');
        if (!isInEntry || equals == std::string_view::npos) continue;
        const std::string_view key = trimmed(line.substr(0, equals));
        const bool isExpanded = key == "URL[$e]";
        if (key != "URL" && !isExpanded) continue;
        std::string value = unescaped(trimmed(line.substr(equals + 1)));
        if (isExpanded) value = expanded(value, home);
        if (value.starts_with('/')) return plainPath(value);
        return pathOfUri(value);
    }
    return std::nullopt;
}

}  // namespace dorvanel::mentions
