// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "engine/random/DrawSequence.h"

namespace dorvanel {

/// Maker of random names: 9 to 32 letters and digits, "A" and "B" twice as likely as the others.
class RandomName {
  public:
    explicit RandomName(DrawSequence& draws) : draws_(draws) {}

    /// Draws a new name into `mName`.
    void randomizeName();
    /// The last name was not needed: it is the next one too, and nothing is drawn for that.
    void putBack() { isPutBack_ = true; }

    /// The last name, NUL-terminated; empty at first.
    std::array<char, 33> mName{};

  private:
    DrawSequence& draws_;
    bool isPutBack_ = false;
};

}  // namespace dorvanel
