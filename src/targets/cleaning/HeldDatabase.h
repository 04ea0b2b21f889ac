// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "platform/Clock.h"
#include "targets/cleaning/Cleaning.h"
#include "targets/cleaning/ImageFiles.h"
#include "targets/cleaning/Replacement.h"

namespace dorvanel::cleaning {

/// A database with its logs, which are one thing with it: kept from all other programs, or only
/// opened to be looked at, which nobody notices.
enum class Holding { exclusively, looking };
Cleaned<std::unique_ptr<OldFile>> holdDatabase(platform::CleaningCalls& calls,
                                               platform::Clock& clock, const std::string& path,
                                               Holding holding);

/// Whether the files of a database that is only looked at are as they were when they were opened.
bool isAsOpened(const OldFile& database);

/// Shows the database and its logs under `name`; all changes stay in memory. It must outlive them.
void showDatabase(ImageFiles& files, const std::string& name, const OldFile& database);

/// Brings what waits in the logs of a database that is held exclusively into its file, in place.
/// Whenever this is cut off, the file and its logs together still are the database as it was.
std::optional<Trouble> takeInLogs(const OldFile& database, platform::Clock& clock);

}  // namespace dorvanel::cleaning
