// SPDX-License-Identifier: MIT
#pragma once

#include <QEventLoop>
#include <atomic>

#include "app/desktop/MainThreadWake.h"
#include "app/desktop/QtRunLoop.h"
#include "platform/QuitWait.h"

namespace dorvanel::desktop {

/// Waits in a loop of its own, so that the window is drawn, and quitting works, meanwhile. The
/// timers stand still.
class QtQuitWait : public platform::QuitWait {
  public:
    /// `loop` outlives the wait.
    explicit QtQuitWait(QtRunLoop& loop) : loop_(loop) {}

    bool wait(std::chrono::microseconds time) override;
    void cancel() override;
    void renew() override { cancelled_ = false; }

  private:
    QtRunLoop& loop_;
    std::atomic<bool> cancelled_ = false;
    QEventLoop* events_ = nullptr;  ///< of the wait at hand; main thread
    MainThreadWake wake_{[this] {
        if (events_ != nullptr) events_->quit();
    }};
};

}  // namespace dorvanel::desktop
