// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>

namespace dorvanel::platform {

/// How the main thread waits for other programs to quit: in short steps, and only as long as our
/// own program is not asked to quit itself.
class QuitWait {
  public:
    virtual ~QuitWait() = default;
    /// Returns true after `time`, or false as soon as the waiting was cancelled. Main thread.
    virtual bool wait(std::chrono::microseconds time) = 0;
    /// Ends this wait, and every later one before it begins, until `renew`. Any thread.
    virtual void cancel() = 0;
    /// Lets later waits be waits again. Main thread.
    virtual void renew() = 0;
};

/// One that sleeps, for programs whose main thread has nothing to draw.
std::unique_ptr<QuitWait> makeQuitWait();

}  // namespace dorvanel::platform
