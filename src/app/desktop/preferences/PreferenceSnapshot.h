// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "base/Result.h"
#include "platform/UserDefaults.h"
#include "prefs/Preferences.h"

namespace dorvanel::desktop {

/// The preferences and the enabled applications as they were at one moment, to go back to. Main
/// thread.
class PreferenceSnapshot {
  public:
    PreferenceSnapshot(Preferences& preferences, const platform::UserDefaults& defaults);

    /// Whether what is shown now is something else.
    [[nodiscard]] bool differsFrom(Preferences& preferences) const;
    /// Makes it what is in force, and stores it. After a failure it is in force all the same.
    Result<Done> restore(Preferences& preferences, platform::UserDefaults& defaults) const;

  private:
    PreferenceValues values_;
    std::vector<std::string> enabled_;
    bool isListStored_;  ///< the list of the enabled applications
};

}  // namespace dorvanel::desktop
