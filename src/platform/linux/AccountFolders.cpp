// SPDX-License-Identifier: MIT
#include "platform/AccountFolders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/FileManager.h"

namespace dorvanel::platform {
namespace {

bool gIsHomeReplaced = false;  // before any thread is started

Result<Done> makePrivateFolder(const std::string& parent, const std::string& folder) {
    if (::mkdir(folder.c_str(), 0700) != 0) {
        if (errno == EEXIST && defaultFileManager().isDirectoryAtPath(folder)) return Done{};
        return Error::fromErrno("make folder", folder);
    }
    struct stat owner {};
    if (::geteuid() == 0 && ::stat(parent.c_str(), &owner) == 0 && owner.st_uid != 0 &&
        ::lchown(folder.c_str(), owner.st_uid, owner.st_gid) != 0) {
        return Error::fromErrno("change owner", folder);
    }
    return Done{};
}

}  // namespace

Result<Done> makeAccountFolders() {
    const std::string home = homeDirectory();
    if (home.empty()) return Error{0, "make folder", {}, "there is no home folder"};
    const std::string library = home + "/Library";
    Result<Done> made = makePrivateFolder(home, library);
    for (const char* name : {"/Logs", "/Preferences"}) {
        if (!made) return made;
        made = makePrivateFolder(library, library + name);
    }
    return made;
}

Result<Done> useHomeDirectory(const std::string& folder) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(folder, error);
    if (error) return Error{error.value(), "home folder", folder, {}};
    struct stat status {};
    if (::stat(absolute.c_str(), &status) != 0) return Error::fromErrno("home folder", folder);
    if (!S_ISDIR(status.st_mode)) return Error{ENOTDIR, "home folder", folder, {}};
    if (::setenv("HOME", absolute.c_str(), 1) != 0) return Error::fromErrno("home folder", folder);
    gIsHomeReplaced = true;
    return Done{};
}

bool isHomeDirectoryReplaced() {
    return gIsHomeReplaced;
}

bool isHomeDirectoryTheAccounts() {
    const passwd* user = ::getpwuid(::geteuid());
    if (user == nullptr || user->pw_dir == nullptr) return false;
    std::error_code error;
    return std::filesystem::equivalent(homeDirectory(), user->pw_dir, error) && !error;
}

Result<Done> checkHomeDirectory() {
    const std::string home = homeDirectory();
    if (home.starts_with('/')) return Done{};
    return Error{0, "home folder", home, "HOME is not the absolute path of a folder"};
}

}  // namespace dorvanel::platform
