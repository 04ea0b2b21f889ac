#pragma once

#include <atomic>

#include "app/terminal/StatusLine.h"
#include "app/terminal/Terminal.h"
#include "watch/BrowserWatch.h"

namespace dorvanel::terminal {

/// Browser Watch in a terminal, from its launch to a quit request.
class WatchSession final : private BrowserWatchOwner {
  public:
    /// `runs` is told when an application has quit; it, the services and the terminal outlive the
    /// session.
    WatchSession(BrowserWatchServices services, BrowserWatchOwner& runs, Terminal& terminal);

    /// Watches until it is asked to quit. Main thread.
    void run();

    /// Ends run(), asked before it as well; no run is started any more. Any thread, any number of
    /// times.
    void requestQuit();

  private:
    void shredAndNothing() override;

    platform::RunLoop& runLoop_;
    BrowserWatchOwner& runs_;
    StatusLine status_;
    UnseenLabel label_;
    BrowserWatch watch_;
    std::atomic<bool> quitRequested_ = false;
};

}  // namespace dorvanel::terminal
