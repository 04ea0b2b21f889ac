// SPDX-License-Identifier: MIT
#pragma once

#include "engine/Outcome.h"

namespace dorvanel {

/// Adds to the outcome of a request that of another which belonged to it.
void addOutcome(Outcome& all, Outcome more);

}  // namespace dorvanel
