#pragma once

#include <string_view>

namespace dorvanel {

/// Where a browser of the Mozilla family has its profiles.
enum class ProfileSource {
    defaultOnly,  ///< the one profile "default"
    menu,         ///< those that the user ticked in the Profiles menu
    rootItself,   ///< none: the targets lie in the root folder
};

/// The files of a profile that one preference key turns on and off; the first empty name ends them.
struct ProfileGroup {
    std::string_view key{};
    std::string_view names[3]{};
};

/// What one collector of the Mozilla family does.
struct ProfileTargets {
    std::string_view collector;       ///< the operation of `Collectors` that this row stands for
    std::string_view label;           ///< its heading in the log
    std::string_view enableNames[2];  ///< the applications that must all be enabled
    std::string_view root;            ///< a leading "~" is the home folder
    ProfileSource source;
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

/// The Mozilla family, a row for each version.
// clang-format off
inline constexpr ProfileTargets profileCatalogue[] = {
    {.collector = "Camino07", .label = "Camino 0.7", .enableNames = {"Camino"},
     .root = "~/Library/Application Support/Chimera/Profiles",
     .source = ProfileSource::defaultOnly,
     .noProfiles = "No profiles selected.",
     .noSalt = "No Camino 0.7 profile found.  Profile Skipped.", .severalSalts = notOneSalt,
     .groups = {{"ShredCache", {"Cache"}},
                {"ShredHistory", {"history.dat"}}}},

    {.collector = "Camino08", .label = "Camino 0.8", .enableNames = {"Camino"},
     .root = "~/Library/Application Support/Camino",
     .source = ProfileSource::rootItself,
     .groups = {{"ShredCache", {"Cache"}},
                {"ShredHistory", {"history.dat"}}}},

    {.collector = "Firefox08", .label = "Firefox 0.8", .enableNames = {"Firefox"},
     .root = "~/Library/Phoenix/Profiles",
     .source = ProfileSource::defaultOnly,
     .noProfiles = "No profiles selected.",
     .noSalt = notOneSalt, .severalSalts = notOneSalt,
     .groups = {{"ShredCache", {"Cache"}},
                {"ShredHistory", {"history.dat"}},
                {"ShredIEDownloadCache", {"downloads.rdf"}}}},

    {.collector = "Firefox10", .label = "Firefox 1.0", .enableNames = {"Firefox"},
     .root = "~/Library/Application Support/Firefox/Profiles",
     .source = ProfileSource::menu, .passesOverMissing = true,
     .noProfiles = "No profiles selected.",
     .groups = {{"ShredCache", {"Cache"}},
                {"ShredHistory", {"history.dat"}},
                {"ShredIEDownloadCache", {"downloads.rdf"}}}},

    {.collector = "Firefox15", .label = "Firefox 1.5", .enableNames = {"Firefox"},
     .root = "~/Library/Caches/Firefox/Profiles",
     .source = ProfileSource::menu, .passesOverMissing = true,
     .noProfiles = "No profiles selected.",
     .groups = {{"ShredCache", {"Cache"}}}},

    // Mozilla and Netscape share their profiles, so both must be enabled.
    {.collector = "Mozilla", .label = "Mozilla 1.x and Netscape 7",
     .enableNames = {"Mozilla", "Netscape"},
     .root = "~/Library/Mozilla/Profiles",
     .source = ProfileSource::menu, .hasMail = true,
     .noProfiles = "No profiles selected in the Profiles menu",
     .noSalt = notOneSalt, .severalSalts = notOneSalt,
     .groups = {{"ShredCache", {"Cache"}},
                {"ShredHistory", {"history.dat", "history.mab", "Netscape History"}},
                {"ShredIEDownloadCache", {"downloads.rdf"}}}},
};
// clang-format on

}  // namespace dorvanel
