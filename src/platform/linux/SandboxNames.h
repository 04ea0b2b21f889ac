// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace dorvanel::platform {

/// The Flatpak application whose scope /proc/PID/cgroup names; "" for none.
std::string flatpakOfControlGroups(std::string_view groups);

/// The Flatpak application that the `.flatpak-info` of a sandbox names; "" for none.
std::string flatpakOfInfo(std::string_view info);

/// The snap whose scope or service /proc/PID/cgroup names; "" for none.
std::string snapOfControlGroups(std::string_view groups);

/// The snap that a program's path lies in; "" for none.
std::string snapOfExecutable(std::string_view path);

}  // namespace dorvanel::platform
