// SPDX-License-Identifier: MIT
#include "run/ItemSummary.h"

#include <string_view>

namespace dorvanel {
namespace {

struct Group {
    BoolKey key;
    std::string_view name;
    bool setsSeparator;
};

constexpr Group groups[] = {
    {"ShredCache", "Browser Cache", true},
    {"ShredHistory", "Browser History", true},
    {"ShredIEDownloadCache", "Download Cache", true},
    {"ShredMailCache", "Mail Cache", true},
    {"ShredMailTrash", "Mail Trash", false},
    {"ShredAppleMailJunk", "Apple Mail Junk", true},
    {"ShredMailsmithSpam", "Mailsmith Spam", true},
    {"shredSafariFavicon", "Browser Icons", false},
};

}  // namespace

std::string itemSummary(const PreferenceReader& preferences) {
    std::string summary;
    bool separator = false;
    for (const Group& group : groups) {
        if (!preferences.boolForKey(group.key)) continue;
        if (separator) summary += ", ";
        summary += group.name;
        separator = separator || group.setsSeparator;
    }
    return summary;
}

}  // namespace dorvanel
