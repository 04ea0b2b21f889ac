#pragma once

#include <array>
#include <string_view>

#include "prefs/Number.h"

namespace dorvanel {

/// One preference: its name in the user's defaults, exact in every letter, and its factory
/// default, whose kind is the kind as stored.
struct PreferenceKey {
    std::string_view name;
    Number factoryDefault;

    [[nodiscard]] constexpr bool isBool() const { return factoryDefault.isBool(); }
};

/// The seventeen preferences, in the order in which they are loaded, saved and listed.
inline constexpr std::array<PreferenceKey, 17> preferenceKeys = {{
    {"ShredCache", Number::fromBool(true)},
    {"ShredIEDownloadCache", Number::fromBool(false)},
    {"ShredMailTrash", Number::fromBool(true)},
    {"ShredHistory", Number::fromBool(false)},
    {"HideAfterShredding", Number::fromBool(false)},
    {"BrowserWatch", Number::fromBool(true)},
    {"ActivityLog", Number::fromBool(false)},
    {"ConfirmShredding", Number::fromBool(true)},
    {"DoDSanitize", Number::fromBool(false)},
    {"NumberOfWrites", Number::fromInt(0)},
    {"OverwritePattern", Number::fromInt(0)},
    {"ShredAppleMailJunk", Number::fromBool(false)},
    {"NSA", Number::fromBool(false)},
    {"ShredMailsmithSpam", Number::fromBool(false)},
    {"shredSafariFavicon", Number::fromBool(false)},  // small s: stored values are found by it
    {"ShredQuicktimeCache", Number::fromBool(false)},
    {"ShredMailCache", Number::fromBool(false)},
}};

/// The applications that can be enabled, in the order of the default list.
inline constexpr std::array<std::string_view, 12> applicationNames = {
    "Safari", "Internet Explorer", "Mozilla",    "Netscape", "iCab",     "Omniweb", "Opera",
    "Camino", "Firefox",           "Apple Mail", "Eudora",   "Mailsmith"};

/// The key under which the enabled applications are stored.
inline constexpr std::string_view enabledBrowsersKey = "EnabledBrowsers";

}  // namespace dorvanel
