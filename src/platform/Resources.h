// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace dorvanel::platform {

/// Where the interface files, the icons and "Info.plist" lie: in ../share/dorvanel-x as seen from
/// the program's own folder, in the build tree as when installed. "" when it cannot be told.
std::string resourcesFolder();

/// Where the shipped descriptions of applications lie: in ../share/dorvanel/applications, likewise.
std::string catalogueFolder();

/// Where the translations of the terminal program lie: in ../share/locale, likewise.
std::string translationsFolder();

}  // namespace dorvanel::platform
