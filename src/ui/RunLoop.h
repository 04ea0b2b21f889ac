// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace dorvanel::ui {

/// A repeating timer of a run loop, which keeps it alive until it is invalidated; letting go of
/// the handle does not stop it. Main thread.
class Timer {
  public:
    virtual ~Timer() = default;
    /// It never fires again, also when it is due now. Again does nothing.
    virtual void invalidate() = 0;
};

/// The main loop. Main thread, but for what says otherwise.
class RunLoop {
  public:
    using Fire = std::function<void(Timer&)>;

    virtual ~RunLoop() = default;

    /// Fires `interval` from now and then at every multiple of it; beats missed while the main
    /// thread was busy are made up for by one.
    virtual std::shared_ptr<Timer> scheduleRepeatingTimer(std::chrono::milliseconds interval,
                                                          Fire fire) = 0;

    /// Fires timers and runs what was posted until stop().
    virtual void run() = 0;

    /// Ends run() after the call that it is in; asked before run(), that returns at once. Any
    /// thread.
    virtual void stop() = 0;

    /// Has the main thread call `work` when it comes round, in the order of posting. Any thread.
    virtual void performOnMainThread(std::function<void()> work) = 0;
};

}  // namespace dorvanel::ui
