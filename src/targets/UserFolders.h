// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace dorvanel {

/// The folder in which programs keep data of this user, $XDG_DATA_HOME, without links; "" where
/// there is none. Where another home folder stands in for the user's, only what lies in that one.
std::string userDataFolder();
/// The same of $XDG_CACHE_HOME.
std::string userCacheFolder();

}  // namespace dorvanel
