// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/Medium.h"

namespace dorvanel::platform {

/// What the kernel says of the file system that a file is on.
struct FileSystemFacts {
    std::uint32_t type = 0;  ///< the magic number of statfs(2)
    unsigned deviceMajor = 0;
    unsigned deviceMinor = 0;
};

/// Where the inspector gets its answers.
struct MediumSources {
    /// Of the file at a path, links followed; nothing where there is none.
    std::function<std::optional<FileSystemFacts>(const std::string& path)> fileSystemOf;
    std::string sysfs = "/sys";
};

std::unique_ptr<MediumInspector> makeMediumInspector(MediumSources sources);

}  // namespace dorvanel::platform
