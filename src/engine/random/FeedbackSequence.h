// SPDX-License-Identifier: MIT
#pragma once

#include "engine/random/AdditiveFeedback.h"
#include "engine/random/DrawSequence.h"
#include "engine/random/Fill.h"

namespace dorvanel {

/// The sequence by our own generator. A fill costs a jump; its words cost only as far as they are
/// asked for.
class FeedbackSequence final : public DrawSequence {
  public:
    /// Starts where a process that never called srandom() starts.
    FeedbackSequence();

    std::uint32_t next() override;
    void takeFill() override;
    std::size_t produce(std::uint16_t* words, std::size_t made, std::size_t wanted) override;
    [[nodiscard]] const Fill* fill() const override { return &fill_; }

  private:
    additive::Window words_{};  ///< a ring; the oldest word is at `oldest_`
    std::size_t oldest_ = 0;
    Fill fill_;
};

}  // namespace dorvanel
