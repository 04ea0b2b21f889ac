// SPDX-License-Identifier: MIT
#include "platform/UserSwitch.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string>

#include "platform/AccountFolders.h"
#include "platform/FileManager.h"

namespace dorvanel::platform {
namespace {

bool gHasBecomeOwner = false;

/// Whose the home folder is, where this is root and it is not root's. A missing one is nobody's; a
/// failure is one to tell apart from that.
Result<std::optional<struct stat>> othersHome() {
    const std::string path = homeDirectory();
    struct stat home {};
    if (::geteuid() != 0) return std::optional<struct stat>();
    if (::stat(path.c_str(), &home) != 0) {
        if (errno == ENOENT) return std::optional<struct stat>();
        return Error::fromErrno("home folder", path);
    }
    return home.st_uid == 0 ? std::nullopt : std::optional(home);
}

}  // namespace

bool isRootInAnothersHome() {
    const auto home = othersHome();
    return !home || home.value();
}

Result<Done> becomeOwnerOfHome() {
    Result<Done> checked = checkHomeDirectory();
    if (!checked) return checked;
    const auto others = othersHome();
    if (!others) return others.error();
    const std::optional<struct stat>& home = others.value();
    if (!home) return Done{};
    const std::string path = homeDirectory();
    constexpr const char* operation = "become the owner of the home folder";
    const passwd* user = ::getpwuid(home->st_uid);
    // An owner without an account has no groups but the folder's, and never root's.
    constexpr gid_t nobodys = 65534;
    const gid_t itsGroup = home->st_gid == 0 ? nobodys : home->st_gid;
    const gid_t group = user != nullptr ? user->pw_gid : itsGroup;
    const int grouped =
        user != nullptr ? ::initgroups(user->pw_name, group) : ::setgroups(1, &group);
    if (grouped != 0 || ::setresgid(group, group, group) != 0 ||
        ::setresuid(home->st_uid, home->st_uid, home->st_uid) != 0) {
        return Error::fromErrno(operation, path);
    }
    gHasBecomeOwner = true;
    const std::string name = user != nullptr ? user->pw_name : std::to_string(home->st_uid);
    for (const char* variable : {"USER", "LOGNAME"}) {
        if (::setenv(variable, name.c_str(), 1) != 0) return Error::fromErrno(operation, path);
    }
    // Where HOME was unset it came from root's own account, and would now come from another's.
    if (::setenv("HOME", path.c_str(), 1) != 0) return Error::fromErrno(operation, path);
    return Done{};
}

bool hasBecomeOwnerOfHome() {
    return gHasBecomeOwner;
}

}  // namespace dorvanel::platform
