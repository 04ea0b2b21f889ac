// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "engine/Outcome.h"
#include "engine/Plan.h"

namespace dorvanel {

/// One item of a run.
struct RunItem {
    PlanItem item;      ///< what goes whole is not measured yet
    std::string place;  ///< where it lies before the shredding
    bool followsLinks = false;
    /// What the engine is given for it: itself, or the old file that a cleaned one has replaced
    /// with what belonged to it.
    std::vector<std::string> handedOver{};
    bool isLeftAlone = false;  ///< its application has started in between
};

/// Brings to the items of a plan, which were among `items`, what the engine did with all that it
/// was given for each; the rows of a cleaned file, and why it was not, are in the items already.
/// Those that were left alone go from the plan.
void addOutcomes(Plan& plan, const std::vector<RunItem>& items, const Outcome& outcome);

}  // namespace dorvanel
