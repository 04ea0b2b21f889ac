// SPDX-License-Identifier: MIT
#include "engine/random/Fill.h"

#include <array>
#include <bit>

#include "engine/random/DrawSequence.h"

namespace dorvanel {
namespace {

/// Jumps over 2048 words, 4096 words and so on to half a fill.
constexpr std::size_t unitsPerFill = DrawSequence::fillWords / additive::bulkUnit;

const additive::Jump& jumpOverUnits(std::size_t units) {
    static const std::array<additive::Jump, std::bit_width(unitsPerFill)> jumps = [] {
        std::array<additive::Jump, std::bit_width(unitsPerFill)> made{};
        made[0] = additive::jumpBy(additive::bulkUnit);
        for (std::size_t i = 1; i < made.size(); ++i) made[i] = made[i - 1] * made[i - 1];
        return made;
    }();
    return jumps[static_cast<std::size_t>(std::bit_width(units)) - 1];
}

}  // namespace

std::size_t Fill::produce(std::uint16_t* words, std::size_t made, std::size_t wanted) {
    while (made < wanted) {
        if (unitsToSkip_ != 0) {
            next_ = additive::extend(additive::jumped(next_, jumpOverUnits(unitsToSkip_)), 0);
        }
        // The largest power of two of units that is still wanted, and at least one.
        const std::size_t units = (wanted - made + additive::bulkUnit - 1) / additive::bulkUnit;
        unitsToSkip_ = std::bit_floor(units);
        additive::makeWords(next_, words + made, unitsToSkip_ * additive::bulkUnit);
        made += unitsToSkip_ * additive::bulkUnit;
    }
    return made;
}

}  // namespace dorvanel
