// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/ContentDigest.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// Reads files back and compares them with what was written.
class ReadBack {
  public:
    enum class Result {
        same,
        otherwise,   ///< other bytes, or fewer of them
        unreadable,  ///< the system said why
        ended        ///< somebody asked to stop
    };
    struct Answer {
        Result result = Result::ended;
        int code = 0;  ///< errno of what is unreadable
    };

    /// Both must outlive this; `stop` is looked at after each piece that is read. Throws
    /// std::bad_alloc; later calls need no memory.
    ReadBack(platform::SystemCalls& system, const std::atomic<bool>& stop);

    /// Whether the first `size` bytes of the open file, flushed before, are the written ones; what
    /// lies behind them is not looked at. With `hasMedium` they come from the medium, as far as the
    /// system can tell (see `SystemCalls::forgetCached`), else from memory.
    Answer compare(int file, std::uint64_t size, const Digest& written, bool hasMedium);

  private:
    static constexpr std::size_t pieceSize = std::size_t{1} << 20;

    platform::SystemCalls& system_;
    const std::atomic<bool>& stop_;
    ContentDigest digest_;
    std::vector<char> memory_;
    char* piece_;  ///< in `memory_`, aligned
};

}  // namespace dorvanel
