// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

#include "apps/catalogue/Entry.h"
#include "platform/SystemCalls.h"
#include "targets/traces/Obstacle.h"

namespace dorvanel::traces {

/// One profile of an application: a folder that is there.
struct Profile {
    std::string folder;  ///< absolute, without links
    std::string path;    ///< below the root of the profiles; "" for one that lies elsewhere
    std::string name;    ///< for people, any text; the folder's name where it has none
};

/// Where the profiles of one way of installing are listed.
struct ProfileRoot {
    const catalogue::Profiles& profiles;
    std::string folder;  ///< the root, without links
};

/// The profiles that an application keeps, each once, in the order of its own list. A list that
/// cannot be read, a profile outside of the home folder or behind a link are obstacles.
std::vector<Profile> findProfiles(const ProfileRoot& root, platform::SystemCalls& system,
                                  std::vector<Obstacle>& obstacles);

}  // namespace dorvanel::traces
