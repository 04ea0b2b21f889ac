// SPDX-License-Identifier: MIT
#include "log/ActivityLog.h"
#include "targets/Collectors.h"
#include "targets/LogTexts.h"

namespace dorvanel {

void Collectors::Mailsmith21() {
    const std::string templateFolder =
        platform::expandingTilde("~/Mail/Mailsmith User Data/Mail/(dorvanelx)");
    kalvet_logger("Mailsmith");
    if (!isEnabled("Mailsmith")) {
        kalvet_logger(notEnabledLine);
    } else {
        collectPath(isOn("ShredMailTrash"), "~/Mail/Mailsmith User Data/Mail/Deleted Mail");
        if (!isOn("ShredMailsmithSpam")) {
            kalvet_logger(
                "Skip: ~/Mail/Mailsmith User Data/Mail/(spam) -- not selected in preferences");
        } else if (!files_.fileExistsAtPath(templateFolder)) {
            kalvet_logger("Skip: ~/Mail/Mailsmith User Data/Mail/(dorvanelx) not found");
        } else {
            swapSpam(templateFolder);
        }
    }
    kalvet_logger(separatorLine);
}

void Collectors::swapSpam(const std::string& templateFolder) {
    const std::string spam = platform::expandingTilde("~/Mail/Mailsmith User Data/Mail/(spam)");
    const std::string parked =
        platform::expandingTilde("~/Mail/Mailsmith User Data/Mail/(dorvanelspam)");
    // What lies parked from an earlier run goes by its own name.
    const bool takesOnlyParked = files_.fileExistsAtPath(parked) || !files_.fileExistsAtPath(spam);
    if (!mayTake(takesOnlyParked ? parked : spam)) return;
    if (!files_.movePath(spam, parked)) {
        kalvet_logger("Skip: ~/Mail/Mailsmith User Data/Mail/(spam) -- move (spam) failed");
        kalvet_logger(
            "Shred: ~/Mail/Mailsmith User Data/Mail/(dorvanelspam) -- an old file may be present");
        mPathArray.push_back(parked);
        return;
    }
    if (!files_.copyPath(templateFolder, spam)) {
        files_.movePath(parked, spam);
        kalvet_logger(
            "Skip: ~/Mail/Mailsmith User Data/Mail/(dorvanelspam) -- copy (dorvanelx) failed");
        return;
    }
    kalvet_logger("Shred: ~/Mail/Mailsmith User Data/Mail/(dorvanelspam)");
    mPathArray.push_back(parked);
    movedFrom_[parked] = spam;
}

}  // namespace dorvanel
