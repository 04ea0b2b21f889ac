// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "engine/PassPlan.h"

namespace dorvanel {

/// What a pass writes.
enum class PassData {
    random,
    zeros,
    ones,
    fives,    ///< 0x55
    tens,     ///< 0xAA
    asBefore  ///< what was written last, whatever that is; zeros at first
};

/// What the settings make of a file, for telling a person beforehand. Made by the engine's own
/// rules: `passCount`, `doDPattern` and `nsaPattern`.
struct PassMeaning {
    int fewest = 0;                   ///< passes of a block
    int most = 0;                     ///< the same, unless the number is drawn for each block
    PassData own = PassData::random;  ///< written by the passes before `last`
    /// What a standard sequence has the last passes write, in their order; empty without one.
    std::vector<PassData> last;
    /// Whether a standard sequence makes more passes of it than were chosen.
    bool sequenceAddsPasses = false;
};

PassMeaning meaningOf(const OverwriteSettings& settings);

}  // namespace dorvanel
