#include "app/terminal/TerminalSession.h"

#include "app/terminal/MediumText.h"
#include "platform/SystemSound.h"
#include "watch/WatchedApplications.h"

namespace dorvanel::terminal {
namespace {

BrowserWatchOutlets outletsOf(platform::TextField& status, platform::TextField& label) {
    BrowserWatchOutlets outlets{};
    outlets.browserWatchStatusTextbox = &status;
    for (const WatchedApplication& application : kWatchedApplications) {
        outlets.*application.label = &label;
    }
    return outlets;
}

}  // namespace

TerminalSession::TerminalSession(Terminal& terminal, OpenedPreferences& opened,
                                 SessionServices services, TerminalAlertPanel::Answers answers,
                                 platform::TextField& status)
    : terminal_(terminal),
      runLoop_(services.runLoop),
      draws_(makeDrawSequence()),
      bundle_(platform::resourcesFolder() + "/Info.plist"),
      alerts_(terminal.in, terminal.err, answers),
      bar_(terminal, services.clock,
           [this] {
               FileAccess& engine = controller_->fileAccessInstance();
               return ProgressBytes{engine.deepShreddedSize(), engine.deepPathSize()};
           }),
      shreddingProgress_(bar_, terminalMutex_),
      fileName_(bar_.fileName(), terminalMutex_),
      status_(status, terminalMutex_) {
    mainMenu_.addItemWithTitle("Profiles", {}, "").makeSubmenu();
    controller_ = std::make_unique<Controller>(ControllerParts{services.system,
                                                               services.clock,
                                                               *draws_,
                                                               platform::defaultFileManager(),
                                                               opened.defaults(),
                                                               opened.preferences(),
                                                               services.runLoop,
                                                               services.listing,
                                                               services.processes,
                                                               services.events,
                                                               services.quitWait,
                                                               services.worker,
                                                               platform::terminalSound(),
                                                               bundle_,
                                                               alerts_,
                                                               *this,
                                                               *this,
                                                               *this,
                                                               mainMenu_,
                                                               shreddingProgress_,
                                                               fileName_,
                                                               outletsOf(status_, label_),
                                                               *this});
}

void TerminalSession::requestQuit() {
    // Already now, so that a pass in progress starts no run any more: whoever ends the program
    // with a whole group of processes ends the applications in it too.
    controller_->giveUp();
    terminal_.in.interrupt();
    runLoop_.performOnMainThread([this] { terminate(); });
}

void TerminalSession::clearProgress() {
    const std::lock_guard lock(terminalMutex_);
    bar_.clear();
}

void TerminalSession::terminate() {
    if (controller_->applicationShouldTerminate() == platform::TerminateReply::now) {
        runLoop_.stop();
    }
}

void TerminalSession::replyToApplicationShouldTerminate(bool shouldTerminate) {
    if (shouldTerminate) runLoop_.stop();
}

void TerminalSession::runBegins(const std::vector<std::string>& items) {
    const std::lock_guard lock(terminalMutex_);
    tellMedium(items, terminal_);
}

void TerminalSession::runEnded(const RunReport& report) {
    {
        const std::lock_guard lock(terminalMutex_);
        pending_.push_back(report);
    }
    runLoop_.performOnMainThread([this] { tellPendingReports(); });
}

void TerminalSession::tellPendingReports() {
    std::deque<RunReport> reports;
    {
        const std::lock_guard lock(terminalMutex_);
        reports.swap(pending_);
    }
    for (const RunReport& report : reports) {
        if (!onRunEnded) continue;
        clearProgress();
        onRunEnded(report);
    }
}

}  // namespace dorvanel::terminal
