// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/SystemCalls.h"

namespace dorvanel {

/// What an item consists of, a link counted as itself.
struct ItemCount {
    std::uint64_t files = 0;    ///< entries that are no folder, the item with them
    std::uint64_t folders = 0;  ///< the item with them
    std::uint64_t bytes = 0;    ///< of plain files: what would be overwritten

    /// What could not be looked into.
    struct Unread {
        std::string path;
        int code = 0;  ///< errno
    };
    std::vector<Unread> unread;
    std::string mountPoint;  ///< the first one in the item, the item itself too; "" for none
};

/// Counts an item by one walk, relative to open folders, onto no other mount and through no link.
/// Changes nothing. Nothing is counted where there is nothing. `stop`, which may be empty, is asked
/// before each entry; where it says true, the count ends with what has been counted.
ItemCount countItem(platform::SystemCalls& system, const std::string& path,
                    const std::function<bool()>& stop = {});

}  // namespace dorvanel
