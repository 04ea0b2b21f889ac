// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"

namespace dorvanel::traces {

/// A profile as an application's own list names it; nothing of it has been looked at.
struct ListedProfile {
    std::string path;  ///< below the list's folder, or absolute
    std::string name;  ///< for people; may be empty

    bool operator==(const ListedProfile&) const = default;
};

/// Those of a profiles.ini, and those that only its installations name. Any bytes will do.
std::vector<ListedProfile> profilesOfIni(std::string_view bytes);

/// Those of an installs.ini. Any bytes will do.
std::vector<ListedProfile> profilesOfInstalls(std::string_view bytes);

/// Those of a Local State. An error where the bytes are not what Chromium writes.
Result<std::vector<ListedProfile>> profilesOfLocalState(std::string_view bytes);

/// Those of a profile store, a database that Firefox keeps beside profiles.ini since profiles can
/// be switched in its window, with what waits in its log. Nothing on the disk is touched.
Result<std::vector<ListedProfile>> profilesOfStore(const std::string& path);

}  // namespace dorvanel::traces
