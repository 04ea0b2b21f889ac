// SPDX-License-Identifier: MIT
#include "engine/random/LibrarySequence.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "engine/random/FeedbackSequence.h"

namespace dorvanel {

LibrarySequence::LibrarySequence(Draw draw, std::deque<std::uint32_t> taken)
    : draw_(std::move(draw)), taken_(std::move(taken)), fill_(fillWords) {}

std::uint32_t LibrarySequence::next() {
    if (taken_.empty()) return static_cast<std::uint32_t>(draw_());
    const std::uint32_t draw = taken_.front();
    taken_.pop_front();
    return draw;
}

void LibrarySequence::takeFill() {
    for (std::uint16_t& word : fill_) word = static_cast<std::uint16_t>(next());
}

std::size_t LibrarySequence::produce(std::uint16_t* words, std::size_t made, std::size_t wanted) {
    if (made >= wanted) return made;
    std::copy(fill_.begin() + static_cast<std::ptrdiff_t>(made), fill_.end(), words + made);
    return fillWords;
}

std::unique_ptr<DrawSequence> makeDrawSequence(LibrarySequence::Draw draw) {
    // Past all 31 words of the state, twice over: two generators of this kind that agree so far
    // have the same state and agree for ever.
    constexpr int compared = 2 * static_cast<int>(additive::degree) + 2;
    FeedbackSequence ours;
    std::deque<std::uint32_t> taken;
    bool equal = true;
    for (int i = 0; i < compared; ++i) {
        taken.push_back(static_cast<std::uint32_t>(draw()));
        equal = ours.next() == taken.back() && equal;
    }
    if (equal) return std::make_unique<FeedbackSequence>();
    return std::make_unique<LibrarySequence>(std::move(draw), std::move(taken));
}

std::unique_ptr<DrawSequence> makeDrawSequence() {
    return makeDrawSequence(::random);
}

}  // namespace dorvanel
