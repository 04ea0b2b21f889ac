// SPDX-License-Identifier: MIT
#include "app/PassMeaning.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "engine/OverwriteBuffer.h"

namespace dorvanel {
namespace {

struct Passes {
    int fewest;
    int most;
    bool operator==(const Passes&) const = default;
};

Passes passesOf(const OverwriteSettings& settings) {
    Passes passes{std::numeric_limits<int>::max(), 0};
    for (std::uint32_t draw = 0; draw < 4; ++draw) {
        const int counter = passCount(settings, draw);
        // A counter that starts at 0 goes all the way round.
        const int count = counter == 0 ? std::numeric_limits<std::uint16_t>::max() + 1 : counter;
        passes = {std::min(passes.fewest, count), std::max(passes.most, count)};
    }
    return passes;
}

PassData dataOf(unsigned index) {
    switch (index) {
        case pattern::random:
        case pattern::randomToo:
            return PassData::random;
        case pattern::zeros:
            return PassData::zeros;
        case pattern::ones:
            return PassData::ones;
        case pattern::fives:
            return PassData::fives;
        case pattern::tens:
            return PassData::tens;
        default:
            return PassData::asBefore;
    }
}

/// With both sequences on, what NSA fills replaces what DoD filled.
std::optional<unsigned> sequencePattern(const OverwriteSettings& settings, std::uint16_t counter) {
    if (settings.nsa) return nsaPattern(counter);
    if (settings.doDSanitize) return doDPattern(counter);
    return std::nullopt;
}

}  // namespace

PassMeaning meaningOf(const OverwriteSettings& settings) {
    const Passes passes = passesOf(settings);
    PassMeaning meaning{passes.fewest, passes.most, dataOf(settings.pattern), {}, false};
    for (std::uint16_t counter = 1; const auto set = sequencePattern(settings, counter);
         ++counter) {
        meaning.last.insert(meaning.last.begin(), dataOf(*set));
    }
    OverwriteSettings chosen = settings;
    chosen.doDSanitize = chosen.nsa = false;
    meaning.sequenceAddsPasses = passesOf(chosen) != passes;
    return meaning;
}

}  // namespace dorvanel
