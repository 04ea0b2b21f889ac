// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "base/Result.h"

namespace dorvanel::platform {

/// Where a file system is mounted, and which one it is.
struct FileSystemPlace {
    std::string mountPoint;  ///< bytes
    std::string device;      ///< of the whole file system: one for all its mounts and subvolumes
};

/// The free space of file systems. Any thread.
class FreeSpace {
  public:
    enum class Answer { discarded, notPermitted, notSupported, failed };
    struct Discarded {
        Answer answer = Answer::failed;
        std::uint64_t bytes = 0;  ///< that the file system says it has told the medium of
        int code = 0;             ///< errno of what went wrong
    };

    virtual ~FreeSpace() = default;

    /// The file system on which the folder lies; the error where it cannot be told.
    [[nodiscard]] virtual Result<FileSystemPlace> placeOf(const std::string& folder) = 0;

    /// Brings what was removed from the folder's file system to the medium, so that its blocks are
    /// free, and tells the medium that all free blocks hold nothing of use. Takes as long as the
    /// medium does. Whether the medium forgets what they held is its own affair.
    virtual Discarded discard(const std::string& folder) = 0;
};

/// The real one.
std::unique_ptr<FreeSpace> makeFreeSpace();

}  // namespace dorvanel::platform
