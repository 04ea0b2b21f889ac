// SPDX-License-Identifier: MIT
#include "engine/random/FeedbackSequence.h"

#include <bit>

#include "engine/random/FeedbackLanes.h"

namespace dorvanel {
namespace {

constexpr additive::Jump overOneFill = additive::jumpBy(DrawSequence::fillWords);
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

FeedbackSequence::FeedbackSequence() {
    // The default state: seed 1, the words that follow by the minimal standard generator (Park
    // and Miller, CACM 1988: times 16807 modulo 2^31 - 1), and ten draws a word thrown away.
    std::uint64_t word = 1;
    for (std::uint32_t& each : words_) {
        each = static_cast<std::uint32_t>(word);
        word = word * 16807 % 2147483647;
    }
    oldest_ = additive::degree - additive::tap;  // the library starts its feedback three words on
    for (std::size_t i = 0; i < 10 * additive::degree; ++i) next();
}

std::uint32_t FeedbackSequence::next() {
    const std::size_t other = oldest_ + additive::tap < additive::degree
                                  ? oldest_ + additive::tap
                                  : oldest_ + additive::tap - additive::degree;
    const std::uint32_t word = words_[oldest_] += words_[other];
    if (++oldest_ == additive::degree) oldest_ = 0;
    return word >> 1;
}

void FeedbackSequence::takeFill() {
    fill_ = additive::extend(words_, oldest_);
    unitsToSkip_ = 0;
    words_ = additive::jumped(fill_, overOneFill);
    oldest_ = 0;
}

std::size_t FeedbackSequence::produce(std::uint16_t* words, std::size_t made, std::size_t wanted) {
    while (made < wanted) {
        if (unitsToSkip_ != 0) {
            fill_ = additive::extend(additive::jumped(fill_, jumpOverUnits(unitsToSkip_)), 0);
        }
        // The largest power of two of units that is still wanted, and at least one.
        const std::size_t units = (wanted - made + additive::bulkUnit - 1) / additive::bulkUnit;
        unitsToSkip_ = std::bit_floor(units);
        additive::makeWords(fill_, words + made, unitsToSkip_ * additive::bulkUnit);
        made += unitsToSkip_ * additive::bulkUnit;
    }
    return made;
}

}  // namespace dorvanel
