// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <string>

#include "base/Result.h"

namespace dorvanel::platform {

/// Opens a log for writing, made or emptied, for everybody to read and write (0777), and not
/// inherited by the programs we start. The caller closes it.
///
/// Only a regular file is emptied and written. A FIFO, a device or a folder in its place, a
/// symbolic link that somebody else made, and a file of somebody else that has other names as well
/// are refused and left as they are; root in another user's home refuses every link on the way from
/// the home folder. Opening never waits.
Result<std::FILE*> openLogFile(const std::string& path);

}  // namespace dorvanel::platform
