// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>

namespace dorvanel::platform {

/// Time as the program sees it; tests drive one by hand. Any thread.
class Clock {
  public:
    virtual ~Clock() = default;
    /// Whole seconds since the epoch, as time().
    [[nodiscard]] virtual std::int64_t time() const = 0;
    /// A point on a scale that never goes back; for intervals.
    [[nodiscard]] virtual std::chrono::steady_clock::time_point now() const = 0;
    /// Blocks the calling thread, as usleep().
    virtual void usleep(std::chrono::microseconds duration) = 0;
};

/// The machine's clock; lives as long as the process.
Clock& systemClock();

}  // namespace dorvanel::platform
