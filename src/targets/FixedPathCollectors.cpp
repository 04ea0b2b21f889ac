// SPDX-License-Identifier: MIT
#include "log/ActivityLog.h"
#include "targets/Collectors.h"
#include "targets/LogTexts.h"

namespace dorvanel {

void Collectors::QuicktimeCache() {
    collectFixedPaths(quicktimeCache, {});
}

void Collectors::MailCache() {
    collect(collectorRow("MailCache"));
}
void Collectors::IE51() {
    collect(collectorRow("IE51"));
}
void Collectors::iCab28() {
    collect(collectorRow("iCab28"));
}
void Collectors::OmniWeb41() {
    collect(collectorRow("OmniWeb41"));
}
void Collectors::OmniWeb51() {
    collect(collectorRow("OmniWeb51"));
}
void Collectors::Opera50() {
    collect(collectorRow("Opera50"));
}
void Collectors::Opera60() {
    collect(collectorRow("Opera60"));
}
void Collectors::Opera70() {
    collect(collectorRow("Opera70"));
}
void Collectors::AppleMail11() {
    collect(collectorRow("AppleMail11"));
}
void Collectors::Eudora51() {
    collect(collectorRow("Eudora51"));
}
void Collectors::Eudora62() {
    collect(collectorRow("Eudora62"));
}
void Collectors::Safari10() {
    collect(collectorRow("Safari10"));
}

void Collectors::collectFixedPaths(const FixedPathTargets& targets, std::string_view enableName) {
    kalvet_logger(targets.heading);
    if (!enableName.empty() && !isEnabled(enableName)) {
        kalvet_logger(notEnabledLine);
    } else {
        for (const FixedPathGroup& group : targets.groups) {
            if (group.key.isNone()) break;
            collectGroup(group);
        }
    }
    kalvet_logger(separatorLine);
}

void Collectors::collectGroup(const FixedPathGroup& group) {
    const bool on = isOn(group.key);
    for (const FixedPath& target : group.paths) {
        if (target.isNone()) break;
        collectPath(on, target);
    }
}

void Collectors::collectPath(bool on, const FixedPath& target) {
    if (on) {
        const std::string path = platform::expandingTilde(std::string(target.path()));
        if (!mayTake(path)) return;
        mPathArray.push_back(path);
    }
    kalvet_logger(on ? "Shred: " + std::string(target.shredAs())
                     : "Skip: " + std::string(target.skipAs()));
}

}  // namespace dorvanel
