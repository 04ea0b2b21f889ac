// SPDX-License-Identifier: MIT
#include <optional>

#include "base/PathComponents.h"
#include "log/ActivityLog.h"
#include "targets/Collectors.h"
#include "targets/LogTexts.h"
#include "targets/ProfilesMenu.h"

namespace dorvanel {
namespace {

/// The one folder of a profile that holds its files; nothing, with the reason in the log, when
/// there is none or there are several.
std::optional<std::string> saltFolder(const ProfileTargets& targets, const std::string& profile,
                                      const platform::FileManager& files) {
    std::vector<std::string> salts;
    for (const std::string& entry : files.directoryContentsAtPath(profile)) {
        if (entry.ends_with(".slt")) salts.push_back(entry);
    }
    if (salts.size() == 1) return appendingPathComponent(profile, salts.front());
    kalvet_logger(salts.empty() ? targets.noSalt : targets.severalSalts);
    return std::nullopt;
}

}  // namespace

void Collectors::Camino07() {
    collect(collectorRow("Camino07"));
}
void Collectors::Camino08() {
    collect(collectorRow("Camino08"));
}
void Collectors::Firefox08() {
    collect(collectorRow("Firefox08"));
}
void Collectors::Firefox10() {
    collect(collectorRow("Firefox10"));
}
void Collectors::Firefox15() {
    collect(collectorRow("Firefox15"));
}
void Collectors::Mozilla() {
    collect(collectorRow("Mozilla"));
}

void Collectors::collectProfiles(const ProfileTargets& targets,
                                 const SupportedApplication& application) {
    std::vector<std::string> profiles;
    if (targets.source == ProfileSource::defaultOnly) profiles = {"default"};
    if (targets.source == ProfileSource::menu) profiles = selectedProfiles(defaults_);

    kalvet_logger(targets.heading);
    const std::string_view companion = application.companion;
    const bool enabled = isEnabled(application.name) && (companion.empty() || isEnabled(companion));
    const std::string root = platform::expandingTilde(std::string(targets.root));
    if (!enabled) {
        kalvet_logger(notEnabledLine);
    } else if (targets.source == ProfileSource::rootItself) {
        collectProfileGroups(targets, root);
    } else if (profiles.empty()) {
        kalvet_logger(targets.noProfiles);
    } else {
        for (const std::string& name : profiles) {
            const std::string profile = appendingPathComponent(root, name);
            if (targets.passesOverMissing && !files_.fileExistsAtPath(profile)) continue;
            collectProfile(targets, profile);
        }
    }
    kalvet_logger(separatorLine);
}

void Collectors::collectProfile(const ProfileTargets& targets, const std::string& profile) {
    kalvet_logger(onOneLine(profile));
    std::optional<std::string> folder = profile;
    if (!targets.noSalt.empty()) folder = saltFolder(targets, profile, files_);
    if (folder) {
        collectProfileGroups(targets, *folder);
        if (targets.hasMail) MozillaMail(appendingPathComponent(*folder, "Mail"));
    }
    kalvet_logger(separatorLine);
}

void Collectors::collectProfileGroups(const ProfileTargets& targets, const std::string& folder) {
    for (const ProfileGroup& group : targets.groups) {
        if (group.key.isNone()) break;
        std::vector<std::string> paths;
        for (const std::string_view name : group.names) {
            if (!name.empty()) paths.push_back(appendingPathComponent(folder, name));
        }
        collectPaths(group.key, paths);
    }
}

void Collectors::MozillaMail(const std::string& mailFolder) {
    for (const std::string& entry : files_.directoryContentsAtPath(mailFolder)) {
        const std::string account = appendingPathComponent(mailFolder, entry);
        collectPaths("ShredMailTrash", {appendingPathComponent(account, "Trash"),
                                        appendingPathComponent(account, "Trash.msf")});
    }
}

void Collectors::collectPaths(BoolKey key, const std::vector<std::string>& paths) {
    const bool on = isOn(key);
    kalvet_logger(on ? "Shred:" : "Skip:");
    for (const std::string& path : paths) {
        if (on && !mayTake(path)) continue;
        kalvet_logger(onOneLine(path));
        if (on) mPathArray.push_back(path);
    }
}

}  // namespace dorvanel
