// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace dorvanel {

/// What the preferences say about overwriting, as read at one moment.
struct OverwriteSettings {
    unsigned pattern = 0;      ///< "OverwritePattern"
    int numberOfWrites = 0;    ///< "NumberOfWrites": an index of the pop-up, not a count
    bool doDSanitize = false;  ///< DoD 5220.22-M: a byte, its complement, random data
    bool nsa = false;          ///< NSA 130-2: random data twice, then zeros
};

/// How often a block is overwritten. `draw`: a draw of the random sequence, made for every block
/// whether it is used (index 0: 1 to 4 passes) or not. The count is 16 bits wide: the index 1,
/// which the panel never stores, gives 0, and a counter that starts there runs 65536 times.
std::uint16_t passCount(const OverwriteSettings& settings, std::uint32_t draw);

/// The pattern that a standard sequence sets for the pass at which `counter` passes are still to be
/// written; none where the user's own pattern stays.
std::optional<unsigned> doDPattern(std::uint16_t counter);
std::optional<unsigned> nsaPattern(std::uint16_t counter);

}  // namespace dorvanel
