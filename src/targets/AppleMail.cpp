// SPDX-License-Identifier: MIT
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/PathComponents.h"
#include "log/ActivityLog.h"
#include "targets/Collectors.h"
#include "targets/LogTexts.h"
#include "targets/MailboxSelection.h"
#include "targets/cleaning/Cleaning.h"

namespace dorvanel {
namespace {

std::string valueOf(const MailboxRow& row, const std::string& column) {
    const auto found = row.find(column);
    return found == row.end() ? std::string() : found->second;
}

}  // namespace

void Collectors::AppleMail12() {
    kalvet_logger("Apple Mail 1.2 (Jaguar)");
    if (!isEnabled("Apple Mail")) {
        kalvet_logger(notEnabledLine);
    } else {
        collectPath(isOn("ShredCache"), "~/Library/Caches/Mail");
        collectPath(isOn("ShredAppleMailJunk"), "~/Library/Mail/Mailboxes/Junk.mbox");
        const std::string mail = platform::expandingTilde("~/Library/Mail");
        for (const std::string& entry : files_.directoryContentsAtPath(mail)) {
            if (entry.starts_with("POP")) collectAccount(appendingPathComponent(mail, entry));
        }
    }
    kalvet_logger(separatorLine);
}

void Collectors::collectAccount(const std::string& account) {
    const bool trash = isOn("ShredMailTrash");
    for (const char* name : {"Deleted Items.mbox", "Deleted Messages.mbox", "Trash.mbox"}) {
        const std::string path = appendingPathComponent(account, name);
        if (trash && !mayTake(path)) continue;
        kalvet_logger(onOneLine(trash ? path : "Skip: " + path));
        if (trash) mPathArray.push_back(path);
    }
    // The junk mailbox has the same line whether it is taken or not.
    const std::string junk = appendingPathComponent(account, "Junk.mbox");
    const bool takesJunk = isOn("ShredAppleMailJunk");
    if (takesJunk && !mayTake(junk)) return;
    kalvet_logger(onOneLine(junk));
    if (takesJunk) mPathArray.push_back(junk);
}

void Collectors::AppleMail20() {
    kalvet_logger("Apple Mail 2.0 (Tiger)");
    if (!isEnabled("Apple Mail")) {
        kalvet_logger(notEnabledLine);
    } else {
        updateIndex(
            appendingPathComponent(platform::expandingTilde("~/Library/Mail"), "Envelope Index"));
    }
    kalvet_logger(separatorLine);
}

void Collectors::updateIndex(const std::string& indexPath) {
    if (!files_.fileExistsAtPath(indexPath)) {
        kalvet_logger(
            "Envelope Index does not exist - launch Mail 2 to create an Envelope Index database");
        return;
    }
    if (!mayTake(indexPath)) return;
    std::unique_ptr<platform::CleaningCalls> calls;  // of an index that is only looked at
    if (onlyLooks_) calls = platform::makeCleaningCalls();
    const auto index = onlyLooks_ ? EnvelopeIndex::openToLook(indexPath, clock_, *calls)
                                  : EnvelopeIndex::open(indexPath, clock_);
    if (!index) {
        kalvet_logger(
            "Could not open Envelope Index - launch Mail 2 to repair the Envelope Index database");
        return;
    }
    mMailboxRows.clear();
    if (const auto read = index.value()->readMailboxes(mMailboxRows); !read) {
        kalvet_logger(
            "Could not obtain a list of Mailboxes - launch Mail 2 to repair the Envelope Index "
            "database");
        kalvet_logger(read.error().detail);
    } else {
        removeMessages(*index.value());
    }
    if (index.value()->removedMessages() > 0) {
        cleanedIndex_ = {.path = indexPath, .rows = index.value()->removedMessages()};
    }
    index.value()->close();
    if (onlyLooks_) return;
    // With those of earlier runs that came to nothing.
    usedJournals_ = cleaning::Cleaner::leftovers(indexPath);
}

void Collectors::removeMessages(EnvelopeIndex& index) {
    // Made once: the list may be long, and each mailbox asks it up to twice.
    const std::unordered_set<std::string_view> shredList(mPathArray.begin(), mPathArray.end());
    std::vector<std::string> rowids;
    for (const MailboxRow& row : mMailboxRows) {
        if (!mailboxIsSelected(parseMailboxUrl(valueOf(row, "url")), shredList)) continue;
        rowids.push_back(valueOf(row, "ROWID"));
    }
    const std::vector<EnvelopeIndex::Removal> removals = index.removeMessages(rowids);
    for (std::size_t i = 0; i < rowids.size(); ++i) {
        kalvet_logger(onOneLine("delete from messages where mailbox == " + rowids[i]));
        if (removals[i]) continue;
        kalvet_logger("Could not remove messages from index database");
        kalvet_logger(removals[i].error().detail);
        kalvet_logger(separatorLine);
    }
}

}  // namespace dorvanel
