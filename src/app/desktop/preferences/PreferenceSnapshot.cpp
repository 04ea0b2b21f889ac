// SPDX-License-Identifier: MIT
#include "app/desktop/preferences/PreferenceSnapshot.h"

#include <algorithm>

namespace dorvanel::desktop {
namespace {

const std::string listKey(enabledBrowsersKey);

const std::vector<std::string>& enabledIn(Preferences& preferences) {
    preferences.loadBrowserInfo();
    return *preferences.mEnableBrowsers;
}

}  // namespace

PreferenceSnapshot::PreferenceSnapshot(Preferences& preferences,
                                       const platform::UserDefaults& defaults)
    : values_(*preferences.preferences()),
      enabled_(enabledIn(preferences)),
      isListStored_(defaults.hasObjectForKey(listKey)) {}

bool PreferenceSnapshot::differsFrom(Preferences& preferences) const {
    // An application that went and came back stands at the end of the list: it means the same.
    const std::vector<std::string>& now = enabledIn(preferences);
    return preferences.displayedValues != values_ || !std::ranges::is_permutation(now, enabled_);
}

Result<Done> PreferenceSnapshot::restore(Preferences& preferences,
                                         platform::UserDefaults& defaults) const {
    preferences.mEnableBrowsers = enabled_;
    // A list that was never stored means "all", also of applications that are supported later.
    if (isListStored_) {
        defaults.setArray(enabled_, listKey);
    } else {
        defaults.removeObjectForKey(listKey);
    }
    preferences.displayedValues = values_;
    return preferences.commitDisplayedValues();
}

}  // namespace dorvanel::desktop
