// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <iosfwd>

#include "platform/ProcessManager.h"
#include "platform/QuitWait.h"
#include "platform/SystemEvents.h"

namespace dorvanel {

/// Asks one application to quit; does not wait for it. noErr or why nothing was sent.
OSErr SendQuitAppleEventToApplication(platform::ProcessManager& processes,
                                      platform::ProcessSerialNumber target);

/// Counts the running applications of the watched creator codes, this process left out, and sends
/// each a quit event when `doQuit` is not 0.
std::int16_t Killer(platform::ProcessManager& processes, std::int16_t doQuit);

/// Applications that are no bundles, and are to quit with the others.
class OtherApplications {
  public:
    virtual ~OtherApplications() = default;
    /// Asks each that runs to quit; does not wait for it. How many run.
    virtual std::int16_t askToQuit() = 0;
    /// How many run still, or may.
    virtual std::int16_t stillRunning() = 0;
};

/// Asks every running watched application and the others to quit, once, and waits for them: 0.5 s,
/// then until none is left, 50 looks, half a second apart, have found one, or the waiting is
/// cancelled. The number still there at the last look.
std::int16_t KillEveryone(platform::ProcessManager& processes, OtherApplications& others,
                          platform::QuitWait& quitWait);

/// Asks the system to log out, shut down or restart. noErr or why nothing will happen.
OSErr SendAppleEventToSystemProcess(platform::SystemEvents& events, FourCharCode eventID);

/// Writes a line "NAME-SIGN" for every application with a name, for diagnosis. Ends at the first
/// error and returns it; the end of the list is one.
OSErr GetProcesses(platform::ProcessManager& processes, std::ostream& output);

}  // namespace dorvanel
