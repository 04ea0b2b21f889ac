// SPDX-License-Identifier: MIT
#include "app/terminal/TerminalSession.h"
#include "apps/Applications.h"
#include "engine/FileAccess.h"
#include "platform/FileManager.h"

#include "app/terminal/MediumText.h"
#include "app/terminal/UnfinishedText.h"
#include "engine/UnfinishedFiles.h"
#include "platform/SystemSound.h"
#include "watch/ListedApplication.h"

namespace dorvanel::terminal {
namespace {

BrowserWatchOutlets outletsOf(ui::TextField& status, ui::TextField& label) {
    BrowserWatchOutlets outlets{};
    outlets.browserWatchStatusTextbox = &status;
    for (const SupportedApplication& application : applications) {
        outlets.*application.label = &label;
    }
    return outlets;
}

}  // namespace

TerminalSession::TerminalSession(Terminal& terminal, OpenedPreferences& opened,
                                 SessionServices services, TerminalAlertPanel::Answers answers,
                                 ui::TextField& status)
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
    controller_ = std::make_unique<Controller>(ControllerParts{
        .system = services.system,
        .clock = services.clock,
        .draws = *draws_,
        .files = platform::defaultFileManager(),
        .defaults = opened.defaults(),
        .preferencesInstance = opened.preferences(),
        .runLoop = services.runLoop,
        .listing = services.listing,
        .processes = services.processes,
        .events = services.events,
        .quitWait = services.quitWait,
        .worker = services.worker,
        .sound = platform::terminalSound(),
        .today = services.today,
        .bundle = bundle_,
        .alertPanel = alerts_,
        .application = *this,
        .workspace = workspace_,
        .myWindow = window_,
        .mainMenu = mainMenu_,
        .shreddingProgress = shreddingProgress_,
        .fileName = fileName_,
        .watchOutlets = outletsOf(status_, label_),
        .observer = *this,
        .unfinished = services.unfinished,
    });
    if (services.unfinished != nullptr) {
        services.unfinished->onTrouble = [this](const Error& error) {
            const std::lock_guard lock(terminalMutex_);
            bar_.clear();
            tellNotWrittenDown(error, terminal_);
        };
    }
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
    if (controller_->applicationShouldTerminate() == ui::TerminateReply::now) {
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
