// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "engine/random/AdditiveFeedback.h"

namespace dorvanel::additive {

/// The unit in which words are made in bulk: 4 KiB of the overwrite buffer.
inline constexpr std::size_t bulkUnit = 2048;

/// What to compute with: the best that the processor has, or what every processor of its kind has.
enum class Instructions { best, baseline };

/// A window and the words that follow it, as many as a jump looks at.
using Extended = std::array<std::uint32_t, 2 * degree - 1>;

/// The words that follow `window`, whose oldest word is number `oldest` of the array.
Extended extend(const Window& window, std::size_t oldest);

/// The window that many words on.
Window jumped(const Extended& words, const Jump& jump, Instructions use = Instructions::best);

/// Makes the low 16 bits of the `count` draws (each word shifted right by one) that follow the
/// window that `start` begins with, at `words`. `count` is `bulkUnit` times a power of two up to
/// 65536. Eight stretches of the sequence, found by jumping, are run side by side in the lanes of
/// vector registers.
void makeWords(const Extended& start, std::uint16_t* words, std::size_t count,
               Instructions use = Instructions::best);

}  // namespace dorvanel::additive
