// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "engine/Plan.h"
#include "engine/plan/ItemPlanner.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/UserDefaults.h"
#include "prefs/PreferenceReader.h"
#include "run/TraceCollection.h"
#include "watch/BrowserWatch.h"

namespace dorvanel {

/// Looks at what a run would take, by the steps that a run takes, and touches nothing. Main thread,
/// while no run is at work.
class RunPreview {
  public:
    /// All of them outlive the preview.
    struct Parts {
        PreferenceReader& preferencesInstance;
        BrowserWatch& browserWatch;
        platform::FileManager& files;
        platform::UserDefaults& defaults;
        platform::Clock& clock;
        TraceCollection& traces;
    };
    explicit RunPreview(Parts parts) : parts_(parts) {}

    /// `withQuicktime`: of a run that ends the session. The planner's `stop` ends this early too.
    Plan plan(bool withQuicktime, const ItemPlanner::Parts& planning);

  private:
    Parts parts_;
};

}  // namespace dorvanel
