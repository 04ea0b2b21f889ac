// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "base/Result.h"

namespace dorvanel::mentions {

/// One bookmark of a list of recently used files.
struct RecentEntry {
    std::string uri;        ///< as the list says it, entities resolved
    std::size_t begin = 0;  ///< of its bytes, tags and all, in the list
    std::size_t end = 0;    ///< behind them
};

/// The bookmarks of a list in the form XBEL, in order; one within another follows it. An error, of
/// no path, where the list is damaged or is none, or has entities of its own, by which its bytes
/// would not be what they say.
Result<std::vector<RecentEntry>> readRecentList(const std::string& list);

/// The list without these of its entries; all other bytes stay but for the line that an entry had
/// for itself. An error where the rest would not have exactly the other entries.
Result<std::string> withoutEntries(const std::string& list,
                                   const std::vector<RecentEntry>& entries);

}  // namespace dorvanel::mentions
