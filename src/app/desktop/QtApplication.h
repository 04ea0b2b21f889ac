#pragma once

#include <functional>

#include "app/desktop/QtRunLoop.h"
#include "ui/Application.h"

namespace dorvanel::desktop {

/// The application object: hiding, and quitting by way of a delegate.
class QtApplication final : public platform::Application {
  public:
    /// The application's delegate; called on the main thread.
    struct Delegate {
        std::function<platform::TerminateReply()> shouldTerminate;
        /// The quit was put off: the window may tell.
        std::function<void()> terminationDeferred;
        /// The last thing before the program ends.
        std::function<void()> willTerminate;
        /// Puts the windows away.
        std::function<void()> hideWindows;
    };

    /// `loop` outlives this object.
    explicit QtApplication(QtRunLoop& loop) : loop_(loop) {}

    /// Before it, a request to quit ends the loop without further ado; the rest is for after it.
    void setDelegate(Delegate delegate) { delegate_ = std::move(delegate); }

    void hide() override;
    void terminate() override;
    void replyToApplicationShouldTerminate(bool shouldTerminate) override;

  private:
    void onMainThread(void (QtApplication::*call)());
    void hideNow();
    void terminateNow();
    void end();

    QtRunLoop& loop_;
    Delegate delegate_;
    bool deferred_ = false;
    bool ended_ = false;
};

}  // namespace dorvanel::desktop
