// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/SystemCalls.h"

namespace dorvanel {

/// What is written down of a holding folder before it is made.
struct UnfinishedEntry {
    std::string folder;  ///< path of the folder that holds it: bytes, absolute, without links
    std::string name;
    std::uint64_t device = 0;  ///< of that folder, as are the rest
    std::uint64_t inode = 0;
    std::int64_t born = 0;  ///< nanoseconds since 1970; 0 where the file system has none

    [[nodiscard]] std::string path() const {
        return (folder == "/" ? folder : folder + "/") + name;
    }
    /// Whether this is the folder that held it. A disk has another device number after a restart;
    /// its inodes keep theirs, and the times at which they were made.
    [[nodiscard]] bool wasIn(const platform::FileStatus& found) const {
        if (inode != found.inode) return false;
        return born != 0 && found.born != 0 ? born == found.born : device == found.device;
    }
};

/// The entry as lines of text, in ASCII.
std::string textOf(const UnfinishedEntry& entry);

/// Reads such a text; nothing where it is not exactly what `textOf` makes.
std::optional<UnfinishedEntry> unfinishedEntryOf(std::string_view text);

}  // namespace dorvanel
