// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "engine/BlockPasses.h"
#include "engine/random/DrawSequence.h"

namespace dorvanel {

/// The values of the preference "OverwritePattern", and of `mOverwritePattern`.
namespace pattern {
inline constexpr unsigned random = 0;
inline constexpr unsigned keep = 1;  ///< the buffer stays as it is; so does it above 6
inline constexpr unsigned randomToo = 2;
inline constexpr unsigned zeros = 3;
inline constexpr unsigned ones = 4;
inline constexpr unsigned fives = 5;
inline constexpr unsigned tens = 6;

constexpr bool isRandom(unsigned index) {
    return index == random || index == randomToo;
}
}  // namespace pattern

/// The block that is written over files: 131072 bytes, filled by pattern. A fill takes its draws
/// at once but makes only the words that a write then asks for.
class OverwriteBuffer {
  public:
    /// Bytes of a block.
    static constexpr std::size_t blockSize = 2 * DrawSequence::fillWords;

    /// All zeros at first. The sequence must outlive the buffer.
    explicit OverwriteBuffer(DrawSequence& draws)
        : draws_(draws), mBuffer(DrawSequence::fillWords) {}

    /// How `randomize` fills the buffer next.
    unsigned mOverwritePattern = pattern::random;

    /// Fills the buffer by `mOverwritePattern`.
    void randomize();

    /// The first `size` bytes, at most `blockSize`, good until the next call of either operation.
    /// In the machine's own byte order.
    const void* bytes(std::size_t size);

    /// What the buffer holds, to be made elsewhere; nothing where only the buffer can.
    [[nodiscard]] std::optional<BlockContent> content() const;

  private:
    void fillWith(std::uint16_t word);

    DrawSequence& draws_;
    std::vector<std::uint16_t> mBuffer;
    bool random_ = false;  ///< the words come from `draws_`, else all are `word_`
    std::uint16_t word_ = 0;
    std::size_t made_ = DrawSequence::fillWords;  ///< words that are in the buffer already
};

}  // namespace dorvanel
