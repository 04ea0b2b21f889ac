// SPDX-License-Identifier: MIT
#include "targets/MailboxUrl.h"

#include <algorithm>

#include "base/Percent.h"

namespace dorvanel {
namespace {

constexpr auto npos = std::string_view::npos;

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isScheme(std::string_view text) {
    return !text.empty() && isLetter(text.front()) && std::ranges::all_of(text, [](char c) {
        return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
    });
}

/// Splits "user:password@host:port". The last "@" counts: an address as user may hold one itself.
void parseAuthority(std::string_view authority, MailboxUrl& url) {
    const std::size_t at = authority.rfind('@');
    if (at != npos) {
        const std::string_view user = authority.substr(0, at);
        url.user = percentDecoded(user.substr(0, user.find(':')));
        authority.remove_prefix(at + 1);
    }
    if (authority.starts_with('[')) {
        url.host = authority.substr(1, authority.find(']') - 1);
    } else {
        url.host = authority.substr(0, authority.find(':'));
    }
}

}  // namespace

MailboxUrl parseMailboxUrl(std::string_view text) {
    MailboxUrl url;
    text = text.substr(0, text.find_first_of("?#"));

    const std::size_t colon = text.find(':');
    if (colon != npos && isScheme(text.substr(0, colon))) {
        url.scheme = text.substr(0, colon);
        text.remove_prefix(colon + 1);
        if (!text.starts_with('/')) return url;
    }
    if (text.starts_with("//")) {
        text.remove_prefix(2);
        const std::size_t end = std::min(text.find('/'), text.size());
        parseAuthority(text.substr(0, end), url);
        text.remove_prefix(end);
    }
    if (text.size() > 1 && text.ends_with('/')) text.remove_suffix(1);
    url.path = percentDecoded(text);
    return url;
}

std::string lowercaseString(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}

}  // namespace dorvanel
