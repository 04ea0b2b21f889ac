// SPDX-License-Identifier: MIT
#include "targets/Collectors.h"

#include "log/ActivityLog.h"

namespace dorvanel {

Collectors::Collectors(std::vector<std::string>& pathArray, PreferenceReader& preferences,
                       platform::FileManager& files, platform::UserDefaults& defaults,
                       platform::Clock& clock)
    : mPathArray(pathArray),
      preferencesInstance(preferences),
      files_(files),
      defaults_(defaults),
      clock_(clock) {}

void Collectors::collect(const CollectorRow& row) {
    if (const auto* fixed = std::get_if<FixedPathTargets>(&row.collector)) {
        collectFixedPaths(*fixed, row.application.name);
    } else if (const auto* profiles = std::get_if<ProfileTargets>(&row.collector)) {
        collectProfiles(*profiles, row.application);
    } else if (const auto* steps = std::get_if<OwnSteps>(&row.collector)) {
        switch (*steps) {
            case OwnSteps::appleMail12:
                return AppleMail12();
            case OwnSteps::appleMail20:
                return AppleMail20();
            case OwnSteps::mailsmith21:
                return Mailsmith21();
        }
    }
}

bool Collectors::isEnabled(std::string_view application) {
    return preferencesInstance.browserIsEnabled(application);
}

bool Collectors::isOn(BoolKey key) const {
    return preferencesInstance.boolForKey(key);
}

bool Collectors::mayTake(const std::string& path) const {
    if (!mayTake_ || mayTake_(path)) return true;
    kalvet_logger(onOneLine("Skip: " + path) + " -- not in the preview");
    return false;
}

}  // namespace dorvanel
