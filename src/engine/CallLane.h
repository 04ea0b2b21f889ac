// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>

#include "engine/LaneCalls.h"
#include "platform/SystemCalls.h"
#include "platform/Worker.h"

namespace dorvanel {

/// A second thread that makes lists of calls in the order in which they were handed over. Where a
/// call fails it waits, with the rest of the list not made, until the first thread has looked. One
/// thread calls.
class CallLane {
  public:
    /// `system` must outlive the lane.
    explicit CallLane(platform::SystemCalls& system) : system_(system) {}
    /// Ends.
    ~CallLane() { end(); }
    CallLane(const CallLane&) = delete;
    CallLane& operator=(const CallLane&) = delete;

    /// Starts the thread. False: the machine has none to give.
    bool begin();
    [[nodiscard]] bool isOpen() const { return isOpen_; }
    /// The thread ends. Lists that it has not begun are not made, and stay for `take`.
    void end();

    /// The list that the caller fills.
    [[nodiscard]] LaneCalls& filling() { return ring_[given_ % ring_.size()]; }
    [[nodiscard]] const LaneCalls& filling() const { return ring_[given_ % ring_.size()]; }
    /// Lists that were handed over and not made yet.
    [[nodiscard]] std::uint64_t waiting();
    /// Whether `give` may be called: else `take` comes first.
    [[nodiscard]] bool hasRoom() const { return given_ - taken_ < ring_.size() - 1; }
    /// Hands the filled list over.
    void give();
    /// Whether a list was handed over and is to be taken back.
    [[nodiscard]] bool hasGiven() const { return taken_ != given_; }
    /// The oldest list that was handed over, once the thread is through with it; it stays the
    /// caller's until `drop`.
    LaneCalls& take();
    /// Empties it. The thread goes on if it halted in this one.
    void drop();

  private:
    void work();

    platform::SystemCalls& system_;
    std::unique_ptr<platform::Worker> thread_;
    std::array<LaneCalls, 4> ring_;
    bool isOpen_ = false;
    // Counts of lists, ever: the caller's.
    std::uint64_t given_ = 0;
    std::uint64_t taken_ = 0;

    std::mutex mutex_;
    std::condition_variable changed_;
    // Guarded by the mutex.
    std::uint64_t handed_ = 0;  ///< as `given_`
    std::uint64_t made_ = 0;
    bool isHalted_ = false;  ///< the list made last is not made to its end
    bool isEnding_ = false;
};

}  // namespace dorvanel
