// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "prefs/Keys.h"

namespace dorvanel {

/// One file or folder that an application always keeps in the same place.
struct FixedPath {
    constexpr FixedPath() = default;
    constexpr FixedPath(const char* name) : path(name), shredAs(name), skipAs(name) {}

    /// The same path under another name in both lines of the log.
    [[nodiscard]] constexpr FixedPath loggedAs(const char* name) const {
        FixedPath other = *this;
        other.shredAs = other.skipAs = name;
        return other;
    }
    /// The same path under another name in the Skip line only.
    [[nodiscard]] constexpr FixedPath skippedAs(const char* name) const {
        FixedPath other = *this;
        other.skipAs = name;
        return other;
    }

    /// What is shredded: UTF-8; a leading "~" is the home folder, without one the path starts at
    /// the root of the start-up volume.
    std::string_view path;
    std::string_view shredAs;  ///< in the "Shred: " line
    std::string_view skipAs;   ///< in the "Skip: " line
};

/// The paths that one preference turns on and off; the first empty path ends them.
struct FixedPathGroup {
    BoolKey key{};
    FixedPath paths[5]{};
};

/// What a collector does whose application keeps everything in fixed places; the first group
/// without a key ends the groups.
///
/// Some keys serve several applications: ShredIEDownloadCache is the switch for every download
/// list, shredSafariFavicon for every page icon, ShredAppleMailJunk for Eudora's junk mail too.
struct FixedPathTargets {
    std::string_view operation;  ///< of `Collectors`
    std::string_view heading;    ///< in the log
    FixedPathGroup groups[4]{};
};

}  // namespace dorvanel
