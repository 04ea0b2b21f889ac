// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "base/Result.h"

namespace dorvanel::platform {

/// Makes "Library", "Library/Logs" and "Library/Preferences" below the home folder where they are
/// missing, for their owner alone (0700). Folders that are there stay as they are; a missing home
/// folder is not made. Done by root in somebody's home, the folders belong to that person.
Result<Done> makeAccountFolders();

/// Stands `folder` in for the home folder from here on, for this process and those it starts.
/// Before any thread is started. A folder that does not exist is refused.
Result<Done> useHomeDirectory(const std::string& folder);

/// Whether a folder stands in for the home folder by `useHomeDirectory`.
[[nodiscard]] bool isHomeDirectoryReplaced();

/// Whether the home folder is the one that the account's entry in the user database names.
[[nodiscard]] bool isHomeDirectoryTheAccounts();

/// Fails where HOME is empty or relative: "~" would then be the root folder, or lie below the
/// folder that the program happens to stand in. Also where HOME is unset and the account has no
/// home folder.
Result<Done> checkHomeDirectory();

}  // namespace dorvanel::platform
