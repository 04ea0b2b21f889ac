// SPDX-License-Identifier: MIT
#include "platform/linux/LoginName.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>

#include "platform/UserSwitch.h"

namespace dorvanel::platform {

bool isPlainLoginName(const std::string& name) {
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    constexpr std::string_view others = "0123456789._@-";
    return !name.empty() && name.front() != '-' &&
           std::all_of(name.begin(), name.end(), [&](char character) {
               return letters.find(character) != std::string_view::npos ||
                      others.find(character) != std::string_view::npos;
           });
}

std::string loginNameOrNumber() {
    // The session may still be root's where root became the owner of the home folder.
    const char* login = hasBecomeOwnerOfHome() ? nullptr : ::getlogin();
    const passwd* user = login != nullptr ? ::getpwnam(login) : ::getpwuid(::geteuid());
    std::string name = login != nullptr ? login : user != nullptr ? user->pw_name : "";
    if (isPlainLoginName(name)) return name;
    return std::to_string(user != nullptr ? user->pw_uid : ::geteuid());
}

}  // namespace dorvanel::platform
