#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/AdditiveFeedback.h"

namespace dorvanel::additive {

/// The unit in which words are made in bulk: 4 KiB of the overwrite buffer.
inline constexpr std::size_t bulkUnit = 2048;

/// What to compute with: the best that the processor has, or what every processor of its kind has.
enum class Instructions { best, baseline };

/// The window that many words on.
Window jumped(const Window& window, const Jump& jump, Instructions use = Instructions::best);

/// Makes the low 16 bits of the `count` draws (each word shifted right by one) that follow the
/// window, at `words`. `count` is `bulkUnit` times a power of two up to 65536. Eight stretches of
/// the sequence, found by jumping, are run side by side in the lanes of vector registers.
void makeWords(const Window& window, std::uint16_t* words, std::size_t count,
               Instructions use = Instructions::best);

}  // namespace dorvanel::additive
