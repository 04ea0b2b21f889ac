#include "run/ShreddingRun.h"

#include <fmt/format.h>

#include "engine/ActivityLog.h"
#include "run/CollectorOrder.h"
#include "run/ItemSummary.h"
#include "run/ProcessControl.h"

namespace dorvanel {

using platform::AlertButton;

void ShreddingRun::shredAndNothing() {
    mShutdownStatus = nothing;
    shred();
}

void ShreddingRun::shredAndLogout() {
    mShutdownStatus = logout;
    mLogoutShutdownRestart = 1;
    shred();
}

void ShreddingRun::shredAndShutdown() {
    mShutdownStatus = shutdown;
    mLogoutShutdownRestart = 1;
    shred();
}

void ShreddingRun::shredAndRestart() {
    mShutdownStatus = restart;
    mLogoutShutdownRestart = 1;
    shred();
}

void ShreddingRun::shred() {
    if (mAwaitingConfirmation == 1) return;
    mAwaitingConfirmation = 1;
    BrowserWatch& watch = parts_.browserWatch;
    if (!watch.isWatching()) {
        watch.HandleBrowserWatchTimer(nullptr);
        watch.showNotEnabled();
    }

    if (mThreadCount == 0) waitForWorker();  // it may still be at its closing lines
    kalvet_logger_close();
    kalvet_logger_open();
    if (!parts_.preferencesInstance.boolForKey("ActivityLog")) kalvet_logger_close();

    if (refused()) return end(RunResult::notInitiated);
    kalvet_logger("Dorvanel Initiated");
    kalvet_logger("");
    if (!confirmed()) return end(RunResult::cancelled);
    if (mShutdownStatus != nothing && !applicationsQuit()) return end(RunResult::cancelled);

    watch.HandleBrowserWatchTimer(nullptr);
    collect();
    if (parts_.mPathArray.empty()) {
        kalvet_logger("Nothing selected to shred");
        mAwaitingConfirmation = 0;
        return end(RunResult::nothingSelected);
    }
    kalvet_logger("Start Shredding Now");
    startWorker(parts_.mPathArray);
    mAwaitingConfirmation = 0;
}

bool ShreddingRun::refused() {
    if (mThreadCount != 0) {
        kalvet_logger("Dorvanel *not* Initiated - thread already running");
        kalvet_logger("");
        mAwaitingConfirmation = 0;
        return true;
    }
    if (mAppNeedsToTerminate == 1) {
        kalvet_logger("Dorvanel *not* Initiated - application needs to terminate");
        kalvet_logger("");
        // mAwaitingConfirmation stays 1: the application is about to go, and no run may start.
        parts_.application.replyToApplicationShouldTerminate(true);
        return true;
    }
    return false;
}

AlertButton ShreddingRun::ask(const std::string& title, const std::string& message,
                              const std::string& defaultButton,
                              const std::string& alternateButton) {
    waiting_ = true;
    const AlertButton answer =
        parts_.alertPanel.runAlertPanel(title, message, defaultButton, alternateButton, "");
    waiting_ = false;
    return answer;
}

std::int16_t ShreddingRun::askApplicationsToQuit() {
    waiting_ = true;
    const std::int16_t running =
        KillEveryone(parts_.processes, parts_.clock, parts_.beforeEachWait);
    waiting_ = false;
    return running;
}

bool ShreddingRun::confirmed() {
    const std::string summary = itemSummary(parts_.preferencesInstance);
    if (parts_.preferencesInstance.boolForKey("ConfirmShredding")) {
        parts_.myWindow.center();
        parts_.myWindow.makeKeyAndOrderFront();
        const AlertButton answer =
            ask("Dorvanel Confirmation",
                "Are you sure you want to shred these items: " + summary + " ?", "No", "Yes");
        if (answer == AlertButton::defaultButton) {
            // mLogoutShutdownRestart stays as it is: a later plain run still takes the QuickTime
            // cache.
            cancel("User selected NO in Confirm dialog - Dorvanel Cancelled");
            return false;
        }
    }
    kalvet_logger("User selected YES in Confirm dialog");
    kalvet_logger("");
    return true;
}

bool ShreddingRun::applicationsQuit() {
    switch (mShutdownStatus) {
        case logout:
            kalvet_logger("User selected Logout");
            break;
        case shutdown:
            kalvet_logger("User selected Shutdown");
            break;
        case restart:
            kalvet_logger("User selected Restart");
            break;
    }
    BrowserWatch& watch = parts_.browserWatch;
    watch.invalidateTimer();
    watch.showNotEnabled();
    watch.disableProcessDisplay();
    watch.HandleBrowserWatchTimer(nullptr);
    kalvet_logger("");

    const std::int16_t running = askApplicationsToQuit();
    if (running == 0) return true;
    const AlertButton answer = ask(
        "Dorvanel Quit Browsers",
        fmt::format("{} Email or Browser Applications did not quit.  Please quit them and click OK "
                    "to continue.  If you continue without quitting those applicaitons some items "
                    "will not be shredded.",
                    running),
        "Cancel", "OK");
    if (answer != AlertButton::defaultButton) return true;
    cancel("User selected Cancel in Quit Browsers dialog - Dorvanel Cancelled");
    return false;
}

void ShreddingRun::cancel(const char* line) {
    kalvet_logger(line);
    parts_.browserWatch.disableProcessDisplay();
    mAwaitingConfirmation = 0;
    mShutdownStatus = nothing;
}

void ShreddingRun::end(RunResult result) {
    RunReport report;
    report.result = result;
    if (result == RunResult::nothingSelected) report.skipped = skipped_;
    parts_.observer.runEnded(report);
}

void ShreddingRun::collect() {
    skipped_.clear();
    for (const CollectorGroup& group : collectorGroups) {
        if (group.isRunning(parts_.browserWatch.isRunning())) {
            skipped_.emplace_back(group.name);
            continue;
        }
        for (const CollectorGroup::Collector collector : group.collectors) {
            if (collector != nullptr) (parts_.collectors.*collector)();
        }
    }
    if (mLogoutShutdownRestart == 1) {
        mLogoutShutdownRestart = 0;
        parts_.collectors.QuicktimeCache();
    }
}

void ShreddingRun::startWorker(std::vector<std::string>& paths) {
    waitForWorker();
    parts_.observer.runBegins(paths);
    ++mThreadCount;
    worker_ = std::thread([this, &paths] { HandleThread(paths); });
}

void ShreddingRun::waitForWorker() {
    if (worker_.joinable()) worker_.join();
}

void ShreddingRun::HandleThread(std::vector<std::string>& paths) {
    parts_.fileAccessInstance.shredDroppedFile(paths);
    RunReport report{RunResult::completed, parts_.fileAccessInstance.outcome(), skipped_};
    if (--mThreadCount == 0 && parts_.preferencesInstance.boolForKey("HideAfterShredding")) {
        parts_.application.hide();
    }
    kalvet_logger("");
    kalvet_logger("Dorvanel Completed Successfully");
    kalvet_logger_close();
    if (!parts_.browserWatch.isWatching()) parts_.browserWatch.disableProcessDisplay();
    sendSystemEvent();
    parts_.observer.runEnded(report);
    if (mAppNeedsToTerminate == 1) parts_.application.replyToApplicationShouldTerminate(true);
}

void ShreddingRun::sendSystemEvent() {
    // What comes of it is not looked at: the run is over, and the system tells the user itself.
    const auto send = [this](platform::FourCharCode event) {
        SendAppleEventToSystemProcess(parts_.events, event);
    };
    switch (mShutdownStatus) {
        case logout:
            send(platform::kAEReallyLogOut);
            break;
        case shutdown:
            send(platform::kAEShutDown);
            break;
        case restart:
            send(platform::kAERestart);
            break;
        default:
            break;
    }
}

}  // namespace dorvanel
