// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "app/desktop/MainThreadWake.h"
#include "ui/RunLoop.h"

namespace dorvanel::desktop {

class QtTimer;

/// The main loop over Qt's. Repeating timers do not fire while the program is in a modal alert or
/// in work that keeps the main thread: what they start must not come in between.
class QtRunLoop final : public ui::RunLoop {
  public:
    QtRunLoop() = default;
    ~QtRunLoop() override;

    std::shared_ptr<ui::Timer> scheduleRepeatingTimer(std::chrono::milliseconds interval,
                                                      Fire fire) override;
    void run() override;
    void stop() override;
    void performOnMainThread(std::function<void()> work) override;

    /// While one lives, no timer fires; a timer that was due meanwhile fires once afterwards.
    class Hold {
      public:
        explicit Hold(QtRunLoop& loop) : loop_(loop) { ++loop_.holds_; }
        ~Hold();
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

      private:
        QtRunLoop& loop_;
    };
    [[nodiscard]] bool isHeld() const { return holds_ > 0; }

    /// Whether the loop was asked to stop and has not returned yet: who would wait for a person in
    /// a loop of its own needs not begin. Any thread.
    [[nodiscard]] bool isStopping() const { return stopping_; }

  private:
    friend class QtTimer;

    void runPosted();

    MainThreadWake wake_{[this] { runPosted(); }};
    std::mutex mutex_;
    std::deque<std::function<void()>> posted_;  ///< guarded by the mutex
    std::vector<std::shared_ptr<QtTimer>> timers_;
    int holds_ = 0;
    std::atomic<bool> stopping_ = false;
};

}  // namespace dorvanel::desktop
