// SPDX-License-Identifier: MIT
#pragma once

#include "base/Result.h"
#include "engine/LeftFolders.h"
#include "engine/UnfinishedFolder.h"

namespace dorvanel {

/// Adds the holding folders that are written down and nobody works on. Their files are locked as
/// long as they are in `found`; a file that is damaged, or that anybody may have put there, is
/// passed over. Changes nothing. Fails where the folder itself cannot be used.
Result<Done> findListedFolders(UnfinishedFolder& folder, platform::SystemCalls& system,
                               platform::CleaningCalls& files, LeftFolders& found);

}  // namespace dorvanel
