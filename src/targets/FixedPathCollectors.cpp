#include "log/ActivityLog.h"
#include "targets/Catalogue.h"
#include "targets/Collectors.h"
#include "targets/LogTexts.h"

namespace dorvanel {
namespace {

/// The collector's row; a name without one does not compile.
consteval const FixedPathTargets& row(std::string_view collector) {
    for (const FixedPathTargets& targets : fixedPathCatalogue) {
        if (targets.collector == collector) return targets;
    }
    throw "no such row";
}

}  // namespace

void Collectors::QuicktimeCache() {
    collectFixedPaths(row("QuicktimeCache"));
}
void Collectors::MailCache() {
    collectFixedPaths(row("MailCache"));
}
void Collectors::IE51() {
    collectFixedPaths(row("IE51"));
}
void Collectors::iCab28() {
    collectFixedPaths(row("iCab28"));
}
void Collectors::OmniWeb41() {
    collectFixedPaths(row("OmniWeb41"));
}
void Collectors::OmniWeb51() {
    collectFixedPaths(row("OmniWeb51"));
}
void Collectors::Opera50() {
    collectFixedPaths(row("Opera50"));
}
void Collectors::Opera60() {
    collectFixedPaths(row("Opera60"));
}
void Collectors::Opera70() {
    collectFixedPaths(row("Opera70"));
}
void Collectors::AppleMail11() {
    collectFixedPaths(row("AppleMail11"));
}
void Collectors::Eudora51() {
    collectFixedPaths(row("Eudora51"));
}
void Collectors::Eudora62() {
    collectFixedPaths(row("Eudora62"));
}
void Collectors::Safari10() {
    collectFixedPaths(row("Safari10"));
}

void Collectors::collectFixedPaths(const FixedPathTargets& targets) {
    kalvet_logger(targets.label);
    if (!targets.enableName.empty() && !isEnabled(targets.enableName)) {
        kalvet_logger(notEnabledLine);
    } else {
        for (const FixedPathGroup& group : targets.groups) {
            if (group.key.empty()) break;
            collectGroup(group);
        }
    }
    kalvet_logger(separatorLine);
}

void Collectors::collectGroup(const FixedPathGroup& group) {
    const bool on = isOn(group.key);
    for (const FixedPath& target : group.paths) {
        if (target.path.empty()) break;
        collectPath(on, target);
    }
}

void Collectors::collectPath(bool on, const FixedPath& target) {
    if (on) mPathArray.push_back(platform::expandingTilde(std::string(target.path)));
    kalvet_logger(on ? "Shred: " + std::string(target.shredAs)
                     : "Skip: " + std::string(target.skipAs));
}

}  // namespace dorvanel
