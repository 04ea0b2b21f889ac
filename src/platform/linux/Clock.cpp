// SPDX-License-Identifier: MIT
#include "platform/Clock.h"

#include <ctime>
#include <thread>

namespace dorvanel::platform {
namespace {

class SystemClock final : public Clock {
  public:
    std::int64_t time() const override { return std::time(nullptr); }
    std::chrono::steady_clock::time_point now() const override {
        return std::chrono::steady_clock::now();
    }
    void usleep(std::chrono::microseconds duration) override {
        std::this_thread::sleep_for(duration);
    }
};

}  // namespace

Clock& systemClock() {
    static SystemClock clock;
    return clock;
}

}  // namespace dorvanel::platform
