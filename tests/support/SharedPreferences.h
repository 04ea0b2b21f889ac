// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "apps/Applications.h"
#include "prefs/Preferences.h"

namespace dorvanel::test {

/// The preferences that these defaults hold, with all supported applications.
inline std::shared_ptr<Preferences> sharedPreferences(platform::UserDefaults& defaults) {
    PreferencesOwner owner{.defaults = defaults, .applications = supportedApplications};
    return Preferences::sharedInstance(owner);
}

}  // namespace dorvanel::test
