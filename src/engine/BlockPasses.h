// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "engine/BlockWrite.h"
#include "engine/random/DrawSequence.h"
#include "engine/random/Fill.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// What a block is overwritten with.
struct BlockContent {
    std::optional<Fill> fill;  ///< random words
    std::uint16_t word = 0;    ///< where there are none: this one all over
};

/// The passes over one block of a file, for whichever thread is free to make and write them.
class BlockPasses {
  public:
    /// Passes that are kept for another thread; with more of them a block is so much work that it
    /// matters little who does it.
    static constexpr std::size_t most = 8;
    /// Room for the bytes of a block; one for each thread.
    using Memory = std::vector<std::uint16_t>;
    static Memory memory() { return Memory(DrawSequence::fillWords); }

    std::uint64_t offset = 0;
    std::size_t length = 0;              ///< bytes
    std::vector<BlockContent> contents;  ///< of the passes, in their order

    /// Makes and writes them. A write that fails is passed over.
    BlockWritten write(platform::SystemCalls& system, int file, Memory& memory);
};

}  // namespace dorvanel
