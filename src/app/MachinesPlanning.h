// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "engine/plan/ItemPlanner.h"
#include "platform/Medium.h"
#include "platform/OpenFiles.h"
#include "platform/SharedExtents.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// What plans are made with on this machine. One thread at a time.
class MachinesPlanning {
  public:
    /// For a planner that asks `stop` now and then; they live as long as this object and `system`.
    ItemPlanner::Parts parts(platform::SystemCalls& system, std::function<bool()> stop,
                             std::vector<Identity> spared = {}) {
        return {.system = system,
                .medium = medium_.get(),
                .openFiles = openFiles_.get(),
                .sharedExtents = sharedExtents_.get(),
                .spared = std::move(spared),
                .stop = std::move(stop)};
    }

  private:
    std::unique_ptr<platform::MediumInspector> medium_ = platform::makeMediumInspector();
    std::unique_ptr<platform::OpenFiles> openFiles_ = platform::makeOpenFiles();
    std::unique_ptr<platform::SharedExtents> sharedExtents_ = platform::makeSharedExtents();
};

}  // namespace dorvanel
