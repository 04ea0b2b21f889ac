// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/random/FeedbackLanes.h"

namespace dorvanel {

/// The words of one fill of the overwrite buffer, to be made by whichever thread has a copy.
class Fill {
  public:
    Fill() = default;
    /// `next`: the words that the fill begins with.
    explicit Fill(const additive::Extended& next) : next_(next) {}

    /// As `DrawSequence::produce`.
    std::size_t produce(std::uint16_t* words, std::size_t made, std::size_t wanted);

  private:
    additive::Extended next_{};  ///< from the words that were made last on
    std::size_t unitsToSkip_ = 0;
};

}  // namespace dorvanel
