// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "engine/Plan.h"
#include "engine/plan/ItemPlanner.h"
#include "run/RunItem.h"

namespace dorvanel {

/// The plan of a run that takes these items: what goes whole is measured, and what is not there any
/// more is left out. Touches nothing.
Plan planOfRun(const std::vector<RunItem>& items, const ItemPlanner::Parts& parts);

}  // namespace dorvanel
