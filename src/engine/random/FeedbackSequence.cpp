// SPDX-License-Identifier: MIT
#include "engine/random/FeedbackSequence.h"

namespace dorvanel {
namespace {

constexpr additive::Jump overOneFill = additive::jumpBy(DrawSequence::fillWords);

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
    const additive::Extended next = additive::extend(words_, oldest_);
    fill_ = Fill(next);
    words_ = additive::jumped(next, overOneFill);
    oldest_ = 0;
}

std::size_t FeedbackSequence::produce(std::uint16_t* words, std::size_t made, std::size_t wanted) {
    return fill_.produce(words, made, wanted);
}

}  // namespace dorvanel
