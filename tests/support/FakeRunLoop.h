// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "support/FakeClock.h"
#include "ui/RunLoop.h"

namespace dorvanel::test {

/// A loop that tests drive by hand, on the time of their clock. run() hurries from one due timer
/// to the next until it is stopped, or nothing is left that could happen.
class FakeRunLoop final : public ui::RunLoop {
  public:
    explicit FakeRunLoop(FakeClock& clock) : clock_(clock) {}

    std::shared_ptr<ui::Timer> scheduleRepeatingTimer(std::chrono::milliseconds interval,
                                                      Fire fire) override {
        auto timer = std::make_shared<FakeTimer>();
        timer->interval = interval;
        timer->due = clock_.now() + interval;
        timer->fire = std::move(fire);
        timers_.push_back(timer);
        return timer;
    }
    void run() override {
        while (!stopped_) {
            runPosted();
            const auto timer = next();
            if (stopped_ || timer == nullptr) break;
            fire(*timer);
        }
        stopped_ = false;
    }
    void stop() override { stopped_ = true; }
    /// Runs what was posted, and no timer, as behind an alert.
    void performPosted() { runPosted(); }
    /// Whether stop() was called and run() has not ended by it yet.
    [[nodiscard]] bool isStopped() const { return stopped_; }
    void performOnMainThread(std::function<void()> work) override {
        const std::lock_guard lock(mutex_);
        posted_.push_back(std::move(work));
    }

    /// Lets time pass; what falls due on the way happens in its order, each at its time.
    void advance(std::chrono::steady_clock::duration duration) {
        const auto until = clock_.now() + duration;
        runPosted();
        for (auto timer = next(); timer != nullptr && timer->due <= until; timer = next()) {
            fire(*timer);
            runPosted();
        }
        if (clock_.now() < until) clock_.advance(until - clock_.now());
    }

    [[nodiscard]] std::size_t validTimers() const {
        return static_cast<std::size_t>(std::count_if(
            timers_.begin(), timers_.end(), [](const auto& timer) { return timer->valid; }));
    }

  private:
    struct FakeTimer final : ui::Timer {
        void invalidate() override { valid = false; }

        std::chrono::steady_clock::duration interval{};
        std::chrono::steady_clock::time_point due;
        Fire fire;
        bool valid = true;
    };

    std::shared_ptr<FakeTimer> next() const {
        std::shared_ptr<FakeTimer> first;
        for (const auto& timer : timers_) {
            if (timer->valid && (first == nullptr || timer->due < first->due)) first = timer;
        }
        return first;
    }
    void fire(FakeTimer& timer) {
        if (clock_.now() < timer.due) clock_.advance(timer.due - clock_.now());
        while (timer.due <= clock_.now()) timer.due += timer.interval;
        timer.fire(timer);
    }
    void runPosted() {
        while (!stopped_) {
            std::function<void()> work;
            {
                const std::lock_guard lock(mutex_);
                if (posted_.empty()) return;
                work = std::move(posted_.front());
                posted_.pop_front();
            }
            work();
        }
    }

    FakeClock& clock_;
    std::vector<std::shared_ptr<FakeTimer>> timers_;
    std::mutex mutex_;  ///< guards `posted_`
    std::deque<std::function<void()>> posted_;
    std::atomic<bool> stopped_ = false;
};

}  // namespace dorvanel::test
