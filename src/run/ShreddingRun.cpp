// SPDX-License-Identifier: MIT
#include "run/ShreddingRun.h"

#include <fmt/format.h>

#include <utility>

#include "log/ActivityLog.h"
#include "run/ItemSummary.h"
#include "run/ProcessControl.h"

namespace dorvanel {

using ui::AlertButton;

void ShreddingRun::applicationLaunches() {
    mAppNeedsToTerminate = 0;
    mAwaitingConfirmation = 0;
    mThreadCount = 0;
    mShutdownStatus = nothing;
    mLogoutShutdownRestart = 0;
}

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

void ShreddingRun::shredPlanned(const Plan& shown) {
    const RunLimit limit(shown);
    mShutdownStatus = nothing;
    shredWithin(&limit);
}

void ShreddingRun::shred() {
    shredWithin(nullptr);
}

/// `limit`: the most that may be taken, which somebody has agreed to; null where nobody has yet.
void ShreddingRun::shredWithin(const RunLimit* limit) {
    const StartedBy who = std::exchange(next_, {});
    if (mAwaitingConfirmation == 1) return refuse(reasonToRefuse(), false, who);
    // Without the preferences nobody knows what to take, nor whether to ask.
    if (!parts_.preferencesInstance.areKnown()) {
        return refuse(Refusal::preferencesUnknown, false, who);
    }
    mAwaitingConfirmation = 1;
    ending_ = mShutdownStatus;
    // It may still be at its closing lines. A countdown needs the main thread.
    if (mThreadCount == 0 && !countingDown_) waitForWorker();
    const bool begun = state_.begin(Activity::asking);
    lookAtProcessesUnwatched();
    startLog();
    if (refused(begun, who)) return;
    startedBy_ = who;

    kalvet_logger("Dorvanel Initiated");
    kalvet_logger("");
    if (!confirmed(limit != nullptr)) return;
    if (ending_ != nothing && !applicationsQuit()) return;
    if (!goesOn(Activity::collecting)) return;
    parts_.browserWatch.HandleBrowserWatchTimer(nullptr);
    if (!collect(limit)) return endGivenUp();
    if (hasNothingToDo()) {
        kalvet_logger("Nothing selected to shred");
        return end(RunResult::nothingSelected);
    }
    if (!goesOn(Activity::shredding)) return;
    kalvet_logger("Start Shredding Now");
    left_ = {};
    parts_.fileAccessInstance.clearStop();
    startWorker({.ending = ending_, .closesLog = true, .startedBy = startedBy_});
    mAwaitingConfirmation = 0;
}

void ShreddingRun::lookAtProcessesUnwatched() {
    BrowserWatch& watch = parts_.browserWatch;
    if (watch.isWatching()) return;
    watch.HandleBrowserWatchTimer(nullptr);
    watch.showNotEnabled();
}

void ShreddingRun::startLog() {
    kalvet_logger_close();
    kalvet_logger_open();
    if (!parts_.preferencesInstance.boolForKey("ActivityLog")) kalvet_logger_close();
}

bool ShreddingRun::refused(bool begun, const StartedBy& who) {
    if (!begun) {
        kalvet_logger("Dorvanel *not* Initiated - thread already running");
        kalvet_logger("");
        mAwaitingConfirmation = 0;
        refuse(Refusal::atWork, false, who);
        return true;
    }
    if (mAppNeedsToTerminate == 1 || isQuitting()) {
        kalvet_logger("Dorvanel *not* Initiated - application needs to terminate");
        kalvet_logger("");
        // mAwaitingConfirmation stays 1: the application is about to go, and no run may start.
        state_.end();
        parts_.application.replyToApplicationShouldTerminate(true);
        refuse(Refusal::quitting, false, who);
        return true;
    }
    return false;
}

/// Asks with `no` as the default button. False, and the run has ended, for that one and for a quit
/// request, after which nobody looks at the answer.
bool ShreddingRun::askOf(const std::string& title, const std::string& message,
                         const std::string& no, const std::string& yes, const char* lineOfNo) {
    const AlertButton answer = parts_.alertPanel.runAlertPanel(title, message, no, yes, "");
    if (!goesOn(Activity::asking)) return false;
    if (answer != AlertButton::defaultButton) return true;
    kalvet_logger(lineOfNo);
    parts_.browserWatch.disableProcessDisplay();
    // mLogoutShutdownRestart stays as it is: a later plain run still takes the QuickTime cache.
    end(RunResult::cancelled);
    return false;
}

/// Whether the run is at this step now; if not, it was given up, and has ended.
bool ShreddingRun::goesOn(Activity step) {
    if (state_.goOn(step)) return true;
    endGivenUp();
    return false;
}

void ShreddingRun::endGivenUp() {
    if (isQuitting()) return end(RunResult::givenUp);
    kalvet_logger("User selected Cancel - Dorvanel Cancelled");
    parts_.browserWatch.disableProcessDisplay();
    end(RunResult::cancelled);
}

bool ShreddingRun::confirmed(bool isAgreed) {
    std::string summary = itemSummary(parts_.preferencesInstance);
    const std::string ofToday = parts_.traces.summary();
    if (!ofToday.empty()) summary += (summary.empty() ? "" : ", ") + ofToday;
    if (!isAgreed && parts_.preferencesInstance.boolForKey("ConfirmShredding")) {
        parts_.myWindow.center();
        parts_.myWindow.makeKeyAndOrderFront();
        const std::string message = "Are you sure you want to shred these items: " + summary + " ?";
        if (!askOf("Dorvanel Confirmation", message, "No", "Yes",
                   "User selected NO in Confirm dialog - Dorvanel Cancelled")) {
            return false;
        }
    }
    kalvet_logger("User selected YES in Confirm dialog");
    kalvet_logger("");
    return true;
}

void ShreddingRun::logEnding() {
    switch (ending_) {
        case logout:
            return kalvet_logger("User selected Logout");
        case shutdown:
            return kalvet_logger("User selected Shutdown");
        case restart:
            return kalvet_logger("User selected Restart");
        default:
            return;
    }
}

bool ShreddingRun::applicationsQuit() {
    logEnding();
    BrowserWatch& watch = parts_.browserWatch;
    watch.invalidateTimer();
    watch.showNotEnabled();
    watch.disableProcessDisplay();
    watch.HandleBrowserWatchTimer(nullptr);
    kalvet_logger("");

    parts_.quitWait.renew();  // before the step, so that a quit request that comes now is not lost
    if (!goesOn(Activity::waitingForApplications)) return false;
    const std::int16_t running = KillEveryone(parts_.processes, parts_.traces, parts_.quitWait);
    if (!goesOn(Activity::asking)) return false;
    if (running == 0) return true;
    const std::string message = fmt::format(
        "{} Email or Browser Applications did not quit.  Please quit them and click OK "
        "to continue.  If you continue without quitting those applicaitons some items "
        "will not be shredded.",
        running);
    return askOf("Dorvanel Quit Browsers", message, "Cancel", "OK",
                 "User selected Cancel in Quit Browsers dialog - Dorvanel Cancelled");
}

/// Has the collectors fill the shred list, application by application. False when the run was given
/// up meanwhile.
bool ShreddingRun::collect(const RunLimit* limit) {
    const auto stop = [this] {
        parts_.observer.stillCollecting();
        return state_.now() != Activity::collecting;
    };
    const bool isWhole = collection_.collect(mLogoutShutdownRestart == 1, stop, limit);
    if (isWhole) mLogoutShutdownRestart = 0;
    return isWhole;
}

bool ShreddingRun::hasNothingToDo() const {
    return parts_.mPathArray.empty() && parts_.traces.isEmpty();
}

void ShreddingRun::giveUp() {
    state_.giveUp();
    parts_.quitWait.cancel();
    if (parts_.countdown != nullptr) parts_.countdown->strike();
}

void ShreddingRun::stop() {
    if (activity() == Activity::shredding) parts_.fileAccessInstance.requestPause();
}

void ShreddingRun::cancel() {
    if (state_.cancel()) parts_.quitWait.cancel();
}

bool ShreddingRun::putOffQuit() {
    mAppNeedsToTerminate = 1;
    return mThreadCount != 0;
}

/// Ends a run that has no worker.
void ShreddingRun::end(RunResult result) {
    RunReport report;
    report.result = result;
    report.startedBy = startedBy_;
    report.ending = endingOf(ending_);
    if (result == RunResult::cancelled) {
        mShutdownStatus = nothing;
        parts_.mPathArray.clear();
    }
    if (result == RunResult::nothingSelected) {
        addSkipped(report);
        report.listingUnknown = !parts_.browserWatch.isKnown();
    }
    if (result == RunResult::givenUp) {
        report.endingStruck = ending_ != nothing;
        mShutdownStatus = nothing;
        parts_.mPathArray.clear();
        kalvet_logger_close();
    }
    collection_.clear();
    mAwaitingConfirmation = 0;
    state_.end();
    parts_.observer.runEnded(report);
}

/// Applications that were passed over, the described ones first, and what descriptions lack.
void ShreddingRun::addSkipped(RunReport& report) const {
    report.skipped = collection_.skipped();
    report.plan.skipped = collection_.skips();
    report.catalogueFaults = parts_.traces.faults();
    report.leftForNextRun = collection_.leftByLimit();
}

void ShreddingRun::refuse(Refusal refusal, bool handedOver, const StartedBy& who) {
    RunReport report;
    report.result = RunResult::notInitiated;
    report.refusal = refusal;
    report.handedOver = handedOver;
    report.startedBy = who;
    parts_.observer.runEnded(report);
}

}  // namespace dorvanel
