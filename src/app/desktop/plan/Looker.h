// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>
#include <memory>

#include "app/desktop/QtRunLoop.h"
#include "platform/Worker.h"

namespace dorvanel::desktop {

/// A thread that looks at the disk for the window, one look at a time, while the main thread goes
/// on. A new look takes the place of an older one. Main thread, but for the work itself.
class Looker {
  public:
    /// Asked by the work now and then: true has it end early.
    using Stop = std::function<bool()>;
    using Work = std::function<void(const Stop&)>;
    /// Called on the main thread when the work is over, exactly once for each look but where the
    /// looker goes first; false where the work was stopped or has not been begun.
    using Then = std::function<void(bool isWhole)>;

    /// `loop` must outlive the looker.
    explicit Looker(QtRunLoop& loop,
                    std::unique_ptr<platform::Worker> worker = platform::makeWorker());
    /// Stops and joins the thread.
    ~Looker();
    Looker(const Looker&) = delete;
    Looker& operator=(const Looker&) = delete;

    /// Has the thread do the work, once an older one, which is stopped, is over; returns at once.
    void start(Work work, Then then);
    /// Asks the work to end early; returns at once.
    void stop();
    /// Whether there is work that has not been followed up yet.
    [[nodiscard]] bool isAtWork() const { return now_ != nullptr; }

  private:
    struct Look {
        Work work;
        Then then;
        std::atomic<bool> stop = false;
    };
    using LookPointer = std::shared_ptr<Look>;

    void begin(const LookPointer& look);
    void ended();

    QtRunLoop& loop_;
    std::unique_ptr<platform::Worker> worker_;
    LookPointer now_;   ///< that the thread is at
    LookPointer next_;  ///< that waits for its end
    std::shared_ptr<Looker*> self_ = std::make_shared<Looker*>(this);
};

}  // namespace dorvanel::desktop
