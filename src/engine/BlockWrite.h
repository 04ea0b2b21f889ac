// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/SystemCalls.h"

namespace dorvanel {

/// What became of the writing of one block.
struct BlockWritten {
    std::uint64_t bytes = 0;  ///< written
    int code = 0;             ///< errno of the write that failed and ended it, 0 when none did
};

/// Writes all of the bytes at `offset`, or up to the first failure. With `mayLackRoom`, behind the
/// old end of a file, a full disk, a quota or a size limit is no failure: nothing old is left for
/// it.
BlockWritten writeBlock(platform::SystemCalls& system, int file, const void* bytes,
                        std::size_t size, std::uint64_t offset, bool mayLackRoom);

}  // namespace dorvanel
