// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace dorvanel {

/// How long a piece of work will take yet, as people are told: in steps that stay.
struct TimeLeft {
    enum class Unit { lessThanAMinute, minutes, hours };
    Unit unit = Unit::lessThanAMinute;
    int count = 0;  ///< 0 for less than a minute

    bool operator==(const TimeLeft&) const = default;
};

/// From how far a piece of work has come, now and then: how fast it is, smoothed, and how long it
/// will take yet. Nothing is said before it is known. One thread.
class WorkEstimate {
  public:
    using Time = std::chrono::steady_clock::time_point;

    /// So many bytes of `total` are done at this moment. Where the total is another one, or less is
    /// done than before, other work has begun.
    void add(Time now, std::uint64_t done, std::uint64_t total);
    /// Forgets the work.
    void clear() { *this = {}; }

    [[nodiscard]] std::optional<double> bytesPerSecond() const { return shownRate_; }
    [[nodiscard]] std::optional<TimeLeft> timeLeft() const { return left_; }

  private:
    void sample(double seconds, std::uint64_t bytes);
    void estimate();

    std::optional<Time> began_;
    Time sampled_;                 ///< when the last sample was taken
    std::uint64_t sampledAt_ = 0;  ///< and what was done then
    std::uint64_t done_ = 0;
    std::uint64_t total_ = 0;
    double rate_ = 0;    ///< bytes a second; a mean in which older samples count for less
    double weight_ = 0;  ///< of the samples in it; 1 once there are enough
    std::optional<double> shownRate_;
    std::optional<TimeLeft> left_;
};

}  // namespace dorvanel
