// SPDX-License-Identifier: MIT
#pragma once

namespace dorvanel {

/// What may follow a run.
enum class Ending { none, logout, shutdown, restart };

/// Asked before a run ends the session, when its shredding is over.
class EndingCountdown {
  public:
    virtual ~EndingCountdown() = default;
    /// Whether the session may be ended; returns when that is known. The worker.
    virtual bool mayEnd(Ending ending) = 0;
    /// Answers no, now and from now on: the program is asked to quit. Any thread.
    virtual void strike() = 0;
};

}  // namespace dorvanel
