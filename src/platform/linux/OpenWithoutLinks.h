// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace dorvanel::platform {

/// As open(), by a path below `folder`, but that a symbolic link anywhere below the folder is
/// refused: -1 with errno ELOOP, or ENOTDIR in the middle. The folder itself may be reached through
/// links. A path that is not below it, or goes up by "..", is refused with EINVAL.
int openWithoutLinks(const std::string& folder, const std::string& path, int flags, int mode = 0);

}  // namespace dorvanel::platform
