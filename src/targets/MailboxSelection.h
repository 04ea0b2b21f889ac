// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

#include "targets/MailboxUrl.h"

namespace dorvanel {

/// The mailbox folders that a mailbox URL may stand for, absolute, in the order they are tried.
struct MailboxCandidates {
    std::optional<std::string> first;
    std::optional<std::string> second;
};

/// A "local" mailbox lies below "~/Library/Mail/Mailboxes"; one of a POP account below
/// "~/Library/Mail/POP-USER@HOST" or "~/Library/Mail/POP:USER@HOST"; others have no candidate.
MailboxCandidates mailboxCandidates(const MailboxUrl& url);

/// Whether the messages of the mailbox leave the index: when the shred list holds one of its
/// candidates, and always for a trash mailbox, of whatever scheme.
bool mailboxIsSelected(const MailboxUrl& url,
                       const std::unordered_set<std::string_view>& shredList);

}  // namespace dorvanel
