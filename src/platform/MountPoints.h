// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"

namespace dorvanel::platform {

/// Where file systems are mounted, as absolute paths in bytes without symbolic links. An error
/// where the system's table cannot be read to its end: what is mounted is unknown then.
Result<std::vector<std::string>> mountPoints(const std::string& table = "/proc/self/mountinfo");

/// The mount points of a table in the form of /proc/self/mountinfo.
std::vector<std::string> parseMountTable(std::string_view table);

/// The bytes of a field of such a table, in which blanks, tabs, line breaks and backslashes stand
/// as a backslash and three octal digits.
std::string mountTableText(std::string_view field);

}  // namespace dorvanel::platform
