// SPDX-License-Identifier: MIT
#include "targets/UserFolders.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/AccountFolders.h"
#include "platform/FileManager.h"
#include "targets/traces/HomeRoot.h"

namespace dorvanel {
namespace {

std::string folderOf(const char* variable, const char* standard) {
    const std::string home = platform::homeDirectory();
    if (!home.starts_with('/')) return {};
    const char* set = std::getenv(variable);
    std::string path = home + standard;
    // A relative path is none, as the desktops agreed.
    if (set != nullptr && set[0] == '/') path = set;
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(path, error);
    if (error) return {};
    // The variables are then about the home folder that was replaced.
    const bool isOutside = traces::pathBelow(real.native(), traces::realHome()).empty();
    if (isOutside && platform::isHomeDirectoryReplaced()) return {};
    return real.native();
}

}  // namespace

std::string userDataFolder() {
    return folderOf("XDG_DATA_HOME", "/.local/share");
}
std::string userCacheFolder() {
    return folderOf("XDG_CACHE_HOME", "/.cache");
}

}  // namespace dorvanel
