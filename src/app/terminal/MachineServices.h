// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "app/ApplicationsOfToday.h"
#include "app/MachinesUnfinished.h"
#include "app/Texts.h"
#include "app/terminal/TerminalSession.h"
#include "platform/PollLoop.h"

namespace dorvanel::terminal {

/// The machine's own services, as the commands that run a session need them.
class MachineServices {
  public:
    /// Null, and `terminal` told, where the system has no descriptor left for them.
    static std::unique_ptr<MachineServices> make(Terminal& terminal) {
        auto runLoop = platform::makeRunLoop();
        if (runLoop) {
            return std::unique_ptr<MachineServices>(
                new MachineServices(std::move(runLoop.value())));
        }
        terminal.complain(tr("no main loop: out of descriptors"));
        return nullptr;
    }

    /// They live as long as this object.
    SessionServices services() {
        return {.system = *system_,
                .clock = platform::systemClock(),
                .runLoop = *runLoop_,
                .listing = *listing_,
                .processes = *processes_,
                .events = *events_,
                .quitWait = *quitWait_,
                .worker = *worker_,
                .today = today_.services(),
                .unfinished = &unfinished_.record()};
    }
    ui::RunLoop& runLoop() { return *runLoop_; }
    MachinesUnfinished& unfinished() { return unfinished_; }

  private:
    explicit MachineServices(std::unique_ptr<ui::RunLoop> runLoop) : runLoop_(std::move(runLoop)) {}

    std::unique_ptr<ui::RunLoop> runLoop_;
    std::unique_ptr<platform::ProcessListing> listing_ = platform::makeProcessListing();
    std::unique_ptr<platform::ProcessManager> processes_ = platform::makeProcessManager();
    std::unique_ptr<platform::SystemEvents> events_ = platform::makeSystemEvents();
    std::unique_ptr<platform::QuitWait> quitWait_ = platform::makeQuitWait();
    std::unique_ptr<platform::SystemCalls> system_ = platform::makeSystemCalls();
    std::unique_ptr<platform::Worker> worker_ = platform::makeWorker();
    MachinesTodayServices today_{*runLoop_};
    MachinesUnfinished unfinished_;
};

}  // namespace dorvanel::terminal
