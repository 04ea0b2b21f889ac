// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>

#include "engine/BlockPasses.h"
#include "platform/SystemCalls.h"
#include "platform/Worker.h"

namespace dorvanel {

/// A second thread that makes and writes blocks of one open file while the first one does others.
/// One thread calls.
class WriteLane {
  public:
    /// Bytes of a file from which on a thread is worth its start.
    static constexpr std::uint64_t worthwhile = std::uint64_t{4} << 20;
    /// Blocks that wait at most.
    static constexpr std::size_t depth = 4;

    /// `system` must outlive the lane.
    explicit WriteLane(platform::SystemCalls& system) : system_(system) {}
    /// Ends.
    ~WriteLane() { end(); }
    WriteLane(const WriteLane&) = delete;
    WriteLane& operator=(const WriteLane&) = delete;

    /// What became of the blocks.
    struct Result {
        std::uint64_t bytes = 0;   ///< written
        int code = 0;              ///< errno of the first write that failed, 0 when none did
        std::uint64_t offset = 0;  ///< of its block
    };

    /// Begins with a file, which stays the caller's. False: the machine has no thread or no memory
    /// to give, and nothing was begun.
    bool begin(int file);
    [[nodiscard]] bool isOpen() const { return isOpen_; }

    /// Takes the block over and leaves another one, of which only the memory is good; false where
    /// enough of them wait: then it is the caller's to write.
    bool take(BlockPasses& block);
    /// Returns when nothing waits any more, and the thread has ended.
    Result end();

  private:
    void work();

    platform::SystemCalls& system_;
    int file_ = -1;
    bool isOpen_ = false;
    std::unique_ptr<platform::Worker> thread_;
    BlockPasses::Memory memory_;  ///< the thread's

    std::mutex mutex_;
    std::condition_variable changed_;
    // Guarded by the mutex; a block that waits is the thread's.
    std::array<BlockPasses, depth> ring_;
    std::uint64_t given_ = 0;  ///< blocks of this file
    std::uint64_t done_ = 0;
    bool isEnding_ = false;
    Result result_;
};

}  // namespace dorvanel
