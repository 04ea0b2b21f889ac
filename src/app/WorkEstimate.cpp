// SPDX-License-Identifier: MIT
#include "app/WorkEstimate.h"

#include <cmath>

namespace dorvanel {
namespace {

/// Closer together two looks say little about the speed.
constexpr double shortestSample = 0.2;
/// After so many seconds a sample counts for a third.
constexpr double memory = 8;
/// The first seconds are no measure: they go to memory rather than to a disk.
constexpr double unknownFor = 2;

constexpr double secondsOfMinute = 60;
constexpr double secondsOfHour = 3600;
/// From so many minutes on, hours are told.
constexpr double mostMinutes = 90;
/// How far, in units, the time left may be from what is told before that changes.
constexpr double steadiness = 0.8;

TimeLeft roundedTime(double seconds) {
    using Unit = TimeLeft::Unit;
    const double minutes = seconds / secondsOfMinute;
    if (minutes < 1) return {Unit::lessThanAMinute, 0};
    if (minutes < mostMinutes) return {Unit::minutes, static_cast<int>(std::lround(minutes))};
    constexpr double mostHours = 9999;
    const double hours = std::fmin(seconds / secondsOfHour, mostHours);
    return {Unit::hours, static_cast<int>(std::lround(hours))};
}

/// Whether what is told still does for so many seconds.
bool stillHolds(const TimeLeft& told, double seconds) {
    switch (told.unit) {
        case TimeLeft::Unit::lessThanAMinute:
            return seconds < secondsOfMinute * 1.25;
        case TimeLeft::Unit::minutes:
            // The last minute is always told.
            return seconds >= secondsOfMinute * 0.75 &&
                   std::fabs(seconds / secondsOfMinute - told.count) <= steadiness;
        case TimeLeft::Unit::hours:
            return std::fabs(seconds / secondsOfHour - told.count) <= steadiness &&
                   seconds >= (mostMinutes - 10) * secondsOfMinute;
    }
    return false;
}

}  // namespace

void WorkEstimate::add(Time now, std::uint64_t done, std::uint64_t total) {
    if (!began_ || total != total_ || done < done_) {
        clear();
        began_ = sampled_ = now;
        sampledAt_ = done;
        total_ = total;
    }
    done_ = done;
    const double seconds = std::chrono::duration<double>(now - sampled_).count();
    if (seconds < shortestSample) return;
    sample(seconds, done - sampledAt_);
    sampled_ = now;
    sampledAt_ = done;
    if (std::chrono::duration<double>(now - *began_).count() >= unknownFor) estimate();
}

void WorkEstimate::sample(double seconds, std::uint64_t bytes) {
    const double kept = std::exp(-seconds / memory);
    rate_ = rate_ * kept + static_cast<double>(bytes) / seconds * (1 - kept);
    weight_ = weight_ * kept + (1 - kept);
}

void WorkEstimate::estimate() {
    const double rate = rate_ / weight_;
    if (rate < 1) {
        // It stands still: nobody knows for how long.
        shownRate_.reset();
        left_.reset();
        return;
    }
    shownRate_ = rate;
    const std::uint64_t bytesLeft = total_ > done_ ? total_ - done_ : 0;
    const double seconds = static_cast<double>(bytesLeft) / rate;
    if (!left_ || !stillHolds(*left_, seconds)) left_ = roundedTime(seconds);
}

}  // namespace dorvanel
