// SPDX-License-Identifier: MIT
#include "targets/SqlLiteral.h"

#include <algorithm>
#include <cctype>

namespace dorvanel {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isHexDigit(char c) {
    return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

/// Takes the digits that the text begins with; how many.
std::size_t takeDigits(std::string_view& text) {
    const auto end = std::ranges::find_if_not(text, isDigit);
    const auto count = static_cast<std::size_t>(end - text.begin());
    text.remove_prefix(count);
    return count;
}

bool take(std::string_view& text, std::string_view oneOf) {
    if (text.empty() || oneOf.find(text.front()) == std::string_view::npos) return false;
    text.remove_prefix(1);
    return true;
}

bool isNumber(std::string_view text) {
    take(text, "+-");
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
        return !text.empty() && std::ranges::all_of(text, isHexDigit);
    }
    std::size_t digits = takeDigits(text);
    if (take(text, ".")) digits += takeDigits(text);
    if (digits == 0) return false;
    if (take(text, "eE")) {
        take(text, "+-");
        if (takeDigits(text) == 0) return false;
    }
    return text.empty();
}

bool isQuotedText(std::string_view text) {
    if (text.size() < 2 || !text.starts_with('\'') || !text.ends_with('\'')) return false;
    text = text.substr(1, text.size() - 2);
    for (std::size_t at = text.find('\''); at != std::string_view::npos; at = text.find('\'')) {
        if (text.substr(at + 1, 1) != "'") return false;
        text.remove_prefix(at + 2);
    }
    return true;
}

bool isBlob(std::string_view text) {
    if (!take(text, "xX") || !isQuotedText(text)) return false;
    text = text.substr(1, text.size() - 2);
    return text.size() % 2 == 0 && std::ranges::all_of(text, isHexDigit);
}

bool isNull(std::string_view text) {
    return std::ranges::equal(text, std::string_view("null"), [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) == b;
    });
}

}  // namespace

bool isSqlLiteral(std::string_view text) {
    constexpr std::string_view blanks = " \t\n\r\f";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return false;
    text = text.substr(first, text.find_last_not_of(blanks) - first + 1);
    return isNumber(text) || isQuotedText(text) || isBlob(text) || isNull(text);
}

}  // namespace dorvanel
