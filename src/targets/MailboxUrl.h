// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace dorvanel {

/// The parts of a mailbox URL, as the Mac's URL class gives them.
struct MailboxUrl {
    std::string scheme;  ///< as written; "" when the URL names none
    std::string user;    ///< percent-decoded once, without a password; "" when there is none
    std::string host;    ///< as written, without its port and an address's brackets
    /// Percent-decoded once, without query, fragment and one trailing slash ("/" stays). Nothing
    /// when the scheme is followed by something that is no path, as in "mailto:someone".
    std::optional<std::string> path;
};

/// Takes any bytes: a character that a URL may not hold stands for itself, and so does a "%" that
/// two hexadecimal digits do not follow.
MailboxUrl parseMailboxUrl(std::string_view text);

/// ASCII letters in lower case, all other bytes as they are.
std::string lowercaseString(std::string_view text);

}  // namespace dorvanel
