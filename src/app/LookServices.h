// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/MachinesPlanning.h"
#include "apps/catalogue/Catalogue.h"
#include "base/Result.h"
#include "platform/CleaningCalls.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/LockProbe.h"
#include "platform/MountPoints.h"
#include "platform/ProcessListing.h"
#include "platform/ProgramListing.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// What a thread that looks at what would be shredded stands on; of its own, since a run may be at
/// work with others meanwhile. One thread at a time.
struct LookServices {
    std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    std::unique_ptr<platform::CleaningCalls> cleaningCalls = platform::makeCleaningCalls();
    std::unique_ptr<platform::ProcessListing> listing = platform::makeProcessListing();
    std::unique_ptr<platform::ProgramListing> programs = platform::makeProgramListing();
    std::unique_ptr<platform::LockProbe> locks = platform::makeLockProbe();
    MachinesPlanning planning;
    platform::Clock& clock = platform::systemClock();
    platform::FileManager& files = platform::defaultFileManager();
    std::function<catalogue::Folders()> folders = catalogue::catalogueFolders;
    /// Where file systems are mounted, for what is looked for on them.
    std::function<Result<std::vector<std::string>>()> mountPoints = [] {
        return platform::mountPoints();
    };
};

}  // namespace dorvanel
