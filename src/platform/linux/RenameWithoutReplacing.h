// SPDX-License-Identifier: MIT
#pragma once

namespace dorvanel::platform {

/// As renameat, but never over something that is there: -1 and EEXIST then. Where the file system
/// cannot refuse that by itself, it is looked for first.
int renameWithoutReplacing(int fromFolder, const char* from, int toFolder, const char* to);

}  // namespace dorvanel::platform
