// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "platform/QuitWait.h"
#include "support/FakeClock.h"

namespace dorvanel::test {

/// Waits on a test's clock, at once.
class FakeQuitWait final : public platform::QuitWait {
  public:
    explicit FakeQuitWait(FakeClock& clock) : clock_(clock) {}

    bool wait(std::chrono::microseconds time) override {
        if (onWait) onWait();
        if (cancelled) return false;
        clock_.usleep(time);
        return true;
    }
    void cancel() override { cancelled = true; }
    void renew() override { cancelled = false; }

    std::function<void()> onWait;  ///< at the beginning of each wait
    std::atomic<bool> cancelled = false;

  private:
    FakeClock& clock_;
};

}  // namespace dorvanel::test
