// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "engine/random/DrawSequence.h"

namespace dorvanel {

/// The sequence by random() itself, for a C library whose generator is not ours. Every draw is
/// made, wanted or not.
class LibrarySequence final : public DrawSequence {
  public:
    using Draw = std::function<long()>;

    /// `taken`: draws that were already made of `draw` and are to be handed out first.
    LibrarySequence(Draw draw, std::deque<std::uint32_t> taken);

    std::uint32_t next() override;
    void takeFill() override;
    std::size_t produce(std::uint16_t* words, std::size_t made, std::size_t wanted) override;

  private:
    Draw draw_;
    std::deque<std::uint32_t> taken_;
    std::vector<std::uint16_t> fill_;
};

/// As `makeDrawSequence`, over any generator in place of random().
std::unique_ptr<DrawSequence> makeDrawSequence(LibrarySequence::Draw draw);

}  // namespace dorvanel
