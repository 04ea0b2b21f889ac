// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace dorvanel::platform {

/// Whether a login name can stand in a shell command, and in the list of users that `ps` takes,
/// without being read as anything but one name.
bool isPlainLoginName(const std::string& name);

/// The name that the user logged in with, else the effective user's in the password database;
/// where that is not a plain one, the user's number.
std::string loginNameOrNumber();

}  // namespace dorvanel::platform
