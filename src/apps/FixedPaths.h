// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "prefs/Keys.h"

namespace dorvanel {

/// One file or folder that an application always keeps in the same place. Texts are plain pointers:
/// the table is looked up in every process of the program, and they are half as large.
class FixedPath {
  public:
    constexpr FixedPath() = default;
    constexpr FixedPath(const char* path) : path_(path) {}

    /// The same path under another name in both lines of the log.
    [[nodiscard]] constexpr FixedPath loggedAs(const char* name) const {
        FixedPath other = *this;
        other.shredAs_ = other.skipAs_ = name;
        return other;
    }
    /// The same path under another name in the Skip line only.
    [[nodiscard]] constexpr FixedPath skippedAs(const char* name) const {
        FixedPath other = *this;
        other.skipAs_ = name;
        return other;
    }

    [[nodiscard]] constexpr bool isNone() const { return path_ == nullptr; }
    /// What is shredded: UTF-8; a leading "~" is the home folder, without one the path starts at
    /// the root of the start-up volume.
    [[nodiscard]] constexpr std::string_view path() const { return path_; }
    /// In the "Shred: " line.
    [[nodiscard]] constexpr std::string_view shredAs() const {
        return shredAs_ != nullptr ? shredAs_ : path_;
    }
    /// In the "Skip: " line.
    [[nodiscard]] constexpr std::string_view skipAs() const {
        return skipAs_ != nullptr ? skipAs_ : path_;
    }

  private:
    const char* path_ = nullptr;
    const char* shredAs_ = nullptr;  ///< null: as the path
    const char* skipAs_ = nullptr;   ///< likewise
};

/// The paths that one preference turns on and off; the first that is none ends them.
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
