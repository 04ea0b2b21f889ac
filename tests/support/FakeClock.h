// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <vector>

#include "platform/Clock.h"

namespace dorvanel::test {

/// A clock that tests drive by hand; sleeping moves it on at once and is remembered. Any thread may
/// look; one sleeps.
class FakeClock final : public platform::Clock {
  public:
    std::int64_t time() const override {
        return std::chrono::duration_cast<std::chrono::seconds>(now_.load() * tick).count();
    }
    std::chrono::steady_clock::time_point now() const override {
        return std::chrono::steady_clock::time_point((now_ += step.count()) * tick);
    }
    void usleep(std::chrono::microseconds duration) override {
        advance(duration);
        sleeps.push_back(duration);
    }
    void advance(std::chrono::steady_clock::duration duration) { now_ += duration.count(); }

    /// How far each look at the clock moves it on.
    std::chrono::steady_clock::duration step{0};
    std::vector<std::chrono::microseconds> sleeps;

  private:
    static constexpr std::chrono::steady_clock::duration tick{1};
    mutable std::atomic<std::chrono::steady_clock::rep> now_ =
        std::chrono::steady_clock::duration(std::chrono::seconds(1'000'000'000)).count();
};

}  // namespace dorvanel::test
