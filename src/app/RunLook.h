// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <string>

#include "app/LookServices.h"
#include "app/RunChoice.h"
#include "engine/Plan.h"

namespace dorvanel {

/// What a run would take.
struct LookedAtRun {
    Plan plan;
    /// The applications of the plan by the names that people know them by.
    std::map<std::string, std::string> names;
};

/// How much a look finds out.
enum class LookDepth {
    sizes,  ///< what there is to take, and how much
    notes,  ///< also what there is to say of each file, which takes longer
};

/// Looks at what a run of that choice would take now, by the steps that a run takes, and touches
/// nothing: the Activity Log has no line of it either. Any thread, one at a time; `stop` is asked
/// now and then, and ends it early.
LookedAtRun lookAtRun(const RunChoice& choice, LookServices& services, LookDepth depth,
                      const std::function<bool()>& stop);

}  // namespace dorvanel
