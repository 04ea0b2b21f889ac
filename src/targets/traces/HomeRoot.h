// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace dorvanel::traces {

/// The folder that a root of a description stands for, "~/.mozilla" or "$XDG_CACHE_HOME/lynx": its
/// path without links. "" where there is no such folder, or where it does not lie below the home
/// folder once its links are followed: nothing is ever looked for outside.
std::string homeRoot(const std::string& root);

/// The home folder's path without links; "" where there is none.
std::string realHome();

/// The part of `path` behind the folder `above` and its slash; "" where it does not lie below it.
std::string pathBelow(const std::string& path, const std::string& above);

}  // namespace dorvanel::traces
