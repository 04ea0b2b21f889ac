// SPDX-License-Identifier: MIT
#include "targets/MailboxSelection.h"

#include "base/PathComponents.h"
#include "platform/FileManager.h"

namespace dorvanel {
namespace {

std::string mailboxFolder(const std::string& account, const std::string& path) {
    return appendingPathExtension(
        appendingPathComponent(platform::expandingTilde("~/Library/Mail/" + account), path),
        "mbox");
}

}  // namespace

MailboxCandidates mailboxCandidates(const MailboxUrl& url) {
    if (!url.path) return {};
    const std::string scheme = lowercaseString(url.scheme);
    if (scheme == "local") return {mailboxFolder("Mailboxes", *url.path), std::nullopt};
    if (scheme != "pop" || *url.path == "/") return {};
    const std::string account = url.user + "@" + url.host;
    return {mailboxFolder("POP-" + account, *url.path), mailboxFolder("POP:" + account, *url.path)};
}

bool mailboxIsSelected(const MailboxUrl& url,
                       const std::unordered_set<std::string_view>& shredList) {
    const MailboxCandidates candidates = mailboxCandidates(url);
    if (candidates.first && shredList.contains(*candidates.first)) return true;
    if (candidates.second && shredList.contains(*candidates.second)) return true;
    return url.path == "/Deleted Messages" || url.path == "/Deleted Items" || url.path == "/Trash";
}

}  // namespace dorvanel
