// SPDX-License-Identifier: MIT
#include "engine/RandomName.h"

#include <string_view>
#include <utility>

namespace dorvanel {

void RandomName::randomizeName() {
    // The 64 characters that six bits can pick: the 62 letters and digits, and two of them again.
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789AB";
    static_assert(alphabet.size() == 64);

    if (std::exchange(isPutBack_, false)) return;
    const std::size_t last = (draws_.next() & 0xFFFF) % 24 + 8;
    mName[last + 1] = '\0';
    for (std::size_t i = last + 1; i-- > 0;) mName[i] = alphabet[draws_.next() % 64];
}

}  // namespace dorvanel
