// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string_view>

#include "prefs/Number.h"

namespace dorvanel {

/// One preference: its name in the user's defaults, exact in every letter, and its factory
/// default, whose kind is the kind as stored. An integer is the index of an item in a pop-up menu.
struct PreferenceKey {
    std::string_view name;
    Number factoryDefault;
    int lastIndex = 0;  ///< of the menu, for an integer
    /// Listed only where somebody chose another value than the factory's: scripts read lists that
    /// have the others alone.
    bool isListedWhenChosen = false;

    [[nodiscard]] constexpr bool isBool() const { return factoryDefault.isBool(); }
};

/// The preferences, in the order in which they are loaded, saved and listed.
inline constexpr std::array<PreferenceKey, 18> preferenceKeys = {{
    {"ShredCache", Number::fromBool(true)},
    {"ShredIEDownloadCache", Number::fromBool(false)},
    {"ShredMailTrash", Number::fromBool(true)},
    {"ShredHistory", Number::fromBool(false)},
    {"HideAfterShredding", Number::fromBool(false)},
    {"BrowserWatch", Number::fromBool(true)},
    {"ActivityLog", Number::fromBool(false)},
    {"ConfirmShredding", Number::fromBool(true)},
    {"DoDSanitize", Number::fromBool(false)},
    {"NumberOfWrites", Number::fromInt(0), 16},
    {"OverwritePattern", Number::fromInt(0), 6},
    {"ShredAppleMailJunk", Number::fromBool(false)},
    {"NSA", Number::fromBool(false)},
    {"ShredMailsmithSpam", Number::fromBool(false)},
    {"shredSafariFavicon", Number::fromBool(false)},  // small s: stored values are found by it
    {"ShredQuicktimeCache", Number::fromBool(false)},
    {"ShredMailCache", Number::fromBool(false)},
    {"ShredMentions", Number::fromBool(false), 0, true},
}};

/// In both menus a line between the first item and the others, which nobody can choose: as a
/// number of writes it would mean 65536 passes.
inline constexpr int separatorIndex = 1;

/// Whether the panel could store this index under the key.
constexpr bool canBeChosen(const PreferenceKey& key, int index) {
    return !key.isBool() && index >= 0 && index <= key.lastIndex && index != separatorIndex;
}

/// The key under which the enabled applications are stored.
inline constexpr std::string_view enabledBrowsersKey = "EnabledBrowsers";

}  // namespace dorvanel
