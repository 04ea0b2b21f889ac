// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>

#include "base/FourCharCode.h"

namespace dorvanel::platform {

constexpr FourCharCode kAEReallyLogOut = fourCharCode("rlgo");
constexpr FourCharCode kAEShutDown = fourCharCode("shut");
constexpr FourCharCode kAERestart = fourCharCode("rest");

/// Requests to the system as a whole. Any thread, one at a time.
class SystemEvents {
  public:
    virtual ~SystemEvents() = default;

    /// Asks to log this session out, to power off or to restart; nobody is asked for a password.
    /// noErr when the system has taken the request; connectionInvalid, errAEEventNotHandled (any
    /// other event too) or errAETimeout when nothing will happen.
    virtual OSErr send(FourCharCode eventID) = 0;
};

/// How long one answer of the login manager is waited for. It answers at once or, while the
/// machine is busy ending other things, within a few seconds.
constexpr std::chrono::milliseconds kSystemEventTimeout = std::chrono::seconds(10);

/// The login manager of this machine, reached anew over the system bus for every request.
std::unique_ptr<SystemEvents> makeSystemEvents(
    std::chrono::milliseconds timeout = kSystemEventTimeout);

}  // namespace dorvanel::platform
