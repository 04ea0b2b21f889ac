// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "apps/catalogue/Catalogue.h"
#include "platform/CleaningCalls.h"
#include "platform/Clock.h"
#include "platform/LockProbe.h"
#include "platform/ProgramListing.h"
#include "platform/SystemCalls.h"

namespace dorvanel::desktop {

/// What applications are looked at with in the background: nobody else's, as each is used by one
/// thread at a time.
struct SurveyServices {
    std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    std::unique_ptr<platform::CleaningCalls> cleaningCalls = platform::makeCleaningCalls();
    std::unique_ptr<platform::ProgramListing> listing = platform::makeProgramListing();
    std::unique_ptr<platform::LockProbe> locks = platform::makeLockProbe();
    platform::Clock& clock = platform::systemClock();
    /// Reads the descriptions; called in the background, changes nothing.
    std::function<catalogue::Catalogue()> loadCatalogue;
};

/// The machine's own; descriptions come from the folders of this machine and its user.
SurveyServices machinesSurvey();

}  // namespace dorvanel::desktop
