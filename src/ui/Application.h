// SPDX-License-Identifier: MIT
#pragma once

namespace dorvanel::ui {

/// What an application answers when it is asked to quit.
enum class TerminateReply { now = 1, later = 2 };

/// The application object. Any thread may call; an implementation brings the call to the main
/// thread.
class Application {
  public:
    virtual ~Application() = default;
    /// Puts the application's windows away; it goes on working.
    virtual void hide() = 0;
    /// Asks the application to quit, by way of its delegate.
    virtual void terminate() = 0;
    /// Answers a quit request that was put off.
    virtual void replyToApplicationShouldTerminate(bool shouldTerminate) = 0;
};

}  // namespace dorvanel::ui
