// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "simulator/Event.h"

namespace dorvanel::simulator {

/// What came of a sequence.
struct Findings {
    std::vector<std::string> broken;  ///< invariants that did not hold, in words; empty: all did
    int runsStarted = 0;
    int runsRefused = 0;
    int runsGivenUp = 0;
    int systemEvents = 0;
};

/// Lives through the sequence with the real program on fakes, in a temporary home.
Findings simulate(const Sequence& sequence);

/// The shortest sequence found that still breaks something: events are left out as long as it does.
Sequence shortened(Sequence sequence);

}  // namespace dorvanel::simulator
