// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "prefs/Keys.h"

namespace dorvanel {

/// Where a browser of the Mozilla family has its profiles.
enum class ProfileSource {
    defaultOnly,  ///< the one profile "default"
    menu,         ///< those that the user ticked in the Profiles menu
    rootItself,   ///< none: the targets lie in the root folder
};

/// The files of a profile that one preference turns on and off; the first empty name ends them.
struct ProfileGroup {
    BoolKey key{};
    std::string_view names[3]{};
};

/// What a collector does whose application keeps profiles as the Mozilla family does.
struct ProfileTargets {
    std::string_view operation;  ///< of `Collectors`
    std::string_view heading;    ///< in the log
    std::string_view root;       ///< a leading "~" is the home folder
    ProfileSource source = ProfileSource::defaultOnly;
    /// A name without a folder under the root is passed over in silence.
    bool passesOverMissing = false;
    /// The profile's "Mail" folder is looked through at the end.
    bool hasMail = false;
    /// The line written when there is no profile to look at.
    std::string_view noProfiles{};
    /// The targets lie in the profile's one folder whose name ends in ".slt". These lines say that
    /// there is none, and that there are several. Empty: the targets lie in the profile itself.
    std::string_view noSalt{};
    std::string_view severalSalts{};
    ProfileGroup groups[4]{};  ///< the first group without a key ends the groups
};

inline constexpr std::string_view notOneSalt = "Not exactly 1 Salt folder.  Profile Skipped.";

}  // namespace dorvanel
