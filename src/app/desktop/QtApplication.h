// SPDX-License-Identifier: MIT
#pragma once

#include "app/desktop/QtRunLoop.h"
#include "ui/Application.h"

namespace dorvanel::desktop {

/// What the application object asks of the program. Called on the main thread.
class ApplicationDelegate {
  public:
    virtual ~ApplicationDelegate() = default;
    virtual ui::TerminateReply shouldTerminate() = 0;
    /// The quit was put off: the window may tell.
    virtual void terminationDeferred() = 0;
    /// The last thing before the program ends.
    virtual void willTerminate() = 0;
    /// Puts the windows away.
    virtual void hideWindows() = 0;
};

/// The application object: hiding, and quitting by way of a delegate.
class QtApplication final : public ui::Application {
  public:
    /// Both outlive this object.
    QtApplication(QtRunLoop& loop, ApplicationDelegate& delegate)
        : loop_(loop), delegate_(delegate) {}

    void hide() override;
    void terminate() override;
    void replyToApplicationShouldTerminate(bool shouldTerminate) override;

  private:
    void onMainThread(void (QtApplication::*call)());
    void hideNow();
    void terminateNow();
    void end();

    QtRunLoop& loop_;
    ApplicationDelegate& delegate_;
    bool deferred_ = false;
    bool ended_ = false;
};

}  // namespace dorvanel::desktop
