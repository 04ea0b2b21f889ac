// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "engine/HeldItem.h"
#include "engine/Plan.h"
#include "engine/UnfinishedFolder.h"

namespace dorvanel {

/// A holding folder that a run has left, held.
struct LeftFolder {
    HeldItem item;
    std::vector<UnfinishedFolder::File> files;  ///< in which it is written down
};

/// What runs have left, and what was passed over on the search.
struct LeftFolders {
    std::vector<LeftFolder> folders;
    std::vector<PlanSkip> skipped;
    /// Holding folders whose disk or folder is not there now.
    std::vector<std::string> absent;
    /// Holding folders that another process works on.
    std::vector<Identity> inWork;
    /// Files of holding folders that are gone.
    std::vector<UnfinishedFolder::File> spent;
};

/// Why a folder of such a name is no holding folder to finish; nothing where it is one. `parent` is
/// a reference to the folder that holds it.
std::optional<std::string> faultOfLeftFolder(platform::SystemCalls& system, int parent,
                                             const platform::FileStatus& parentStatus,
                                             const platform::FileStatus& status);

/// Adds the holding folders below `top`, an absolute path, and `top` itself where it is one: on the
/// same mount, through no link, at any depth; what lies in one is part of it.
/// Somebody may work on them. Changes nothing. False where `top` is no folder.
bool findLeftFolders(platform::SystemCalls& system, const std::string& top, LeftFolders& found);

}  // namespace dorvanel
