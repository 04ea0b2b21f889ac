// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "engine/Plan.h"

namespace dorvanel {

/// What a plan comes to, in one line for people: "37 items, 812 files, 1.2 GiB would be shredded;
/// 120 rows cleaned".
std::string summaryLine(const Plan& plan);

}  // namespace dorvanel
