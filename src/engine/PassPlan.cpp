// SPDX-License-Identifier: MIT
#include "engine/PassPlan.h"

#include <algorithm>

#include "engine/OverwriteBuffer.h"

namespace dorvanel {

std::uint16_t passCount(const OverwriteSettings& settings, std::uint32_t draw) {
    auto count = static_cast<std::uint16_t>((draw & 3) + 1);
    if (settings.numberOfWrites != 0) {
        // Unsigned, so that no stored number can overflow.
        count = static_cast<std::uint16_t>(static_cast<unsigned>(settings.numberOfWrites) - 1U);
    }
    // The last five items of the pop-up: 15, 20, 25, 30 and 35 passes.
    if (count >= 11 && count <= 15) count = static_cast<std::uint16_t>(15 + (count - 11) * 5);
    if (settings.doDSanitize) count = std::max<std::uint16_t>(count, 3);
    if (settings.nsa) count = std::max<std::uint16_t>(count, 3);
    if (settings.doDSanitize && settings.nsa) count = std::max<std::uint16_t>(count, 5);
    return count;
}

std::optional<unsigned> doDPattern(std::uint16_t counter) {
    switch (counter) {
        case 3:
            return pattern::fives;
        case 2:
            return pattern::tens;
        case 1:
            return pattern::randomToo;
        default:
            return std::nullopt;
    }
}

std::optional<unsigned> nsaPattern(std::uint16_t counter) {
    switch (counter) {
        case 3:
        case 2:
            return pattern::randomToo;
        case 1:
            return pattern::zeros;
        default:
            return std::nullopt;
    }
}

}  // namespace dorvanel
