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

std::string realPath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? std::string() : real.native();
}

std::string folderOf(const char* variable, const char* standard) {
    const std::string home = platform::homeDirectory();
    if (!home.starts_with('/')) return {};
    const char* set = std::getenv(variable);
    // A relative path is none, as the desktops agreed.
    if (set != nullptr && set[0] == '/') {
        std::string real = realPath(set);
        const bool isOutside = traces::pathBelow(real, traces::realHome()).empty();
        // The variables may be about the home folder that was replaced.
        if (!isOutside || !platform::isHomeDirectoryReplaced()) return real;
    }
    return realPath(home + standard);
}

}  // namespace

std::string userDataFolder() {
    return folderOf("XDG_DATA_HOME", "/.local/share");
}
std::string userCacheFolder() {
    return folderOf("XDG_CACHE_HOME", "/.cache");
}

}  // namespace dorvanel
