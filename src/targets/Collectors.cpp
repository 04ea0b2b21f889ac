#include "targets/Collectors.h"

namespace dorvanel {

Collectors::Collectors(std::vector<std::string>& pathArray, PreferenceReader& preferences,
                       platform::FileManager& files, platform::UserDefaults& defaults,
                       platform::Clock& clock)
    : mPathArray(pathArray),
      preferencesInstance(preferences),
      files_(files),
      defaults_(defaults),
      clock_(clock) {}

bool Collectors::isEnabled(std::string_view application) {
    return preferencesInstance.browserIsEnabled(application);
}

bool Collectors::isOn(std::string_view key) const {
    return preferencesInstance.boolForKey(key);
}

}  // namespace dorvanel
