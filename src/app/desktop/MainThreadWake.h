// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractEventDispatcher>
#include <QObject>
#include <atomic>
#include <functional>

namespace dorvanel::desktop {

/// Has the main loop call something, asked by any thread. Only an atomic and the loop's own wake-up
/// pass between the threads, no object of the toolkit, so that a thread checker sees all that is
/// shared. Made and destroyed on the main thread, when no other posts.
class MainThreadWake final : public QObject {
  public:
    explicit MainThreadWake(std::function<void()> call);

    /// `call` is called when the main loop comes round; once for posts that came close together.
    /// Any thread; never waits.
    void post();

  private:
    void check();

    std::function<void()> call_;
    std::atomic<bool> pending_ = false;
    QAbstractEventDispatcher& dispatcher_;
};

/// Whether this is the thread of the user interface.
bool isMainThread();

}  // namespace dorvanel::desktop
