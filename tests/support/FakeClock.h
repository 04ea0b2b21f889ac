#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include "platform/Clock.h"

namespace dorvanel::test {

/// A clock that tests drive by hand; sleeping moves it on at once and is remembered.
class FakeClock final : public platform::Clock {
  public:
    std::int64_t time() const override {
        return std::chrono::duration_cast<std::chrono::seconds>(now_.time_since_epoch()).count();
    }
    std::chrono::steady_clock::time_point now() const override {
        now_ += step;
        return now_;
    }
    void usleep(std::chrono::microseconds duration) override {
        now_ += duration;
        sleeps.push_back(duration);
    }
    void advance(std::chrono::steady_clock::duration duration) { now_ += duration; }

    /// How far each look at the clock moves it on.
    std::chrono::steady_clock::duration step{0};
    std::vector<std::chrono::microseconds> sleeps;

  private:
    mutable std::chrono::steady_clock::time_point now_{std::chrono::seconds(1'000'000'000)};
};

}  // namespace dorvanel::test
