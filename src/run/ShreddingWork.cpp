// SPDX-License-Identifier: MIT
#include <utility>

#include "log/ActivityLog.h"
#include "run/ProcessControl.h"
#include "run/ShreddingRun.h"

// What comes after the questions: files that are handed over, and the worker from its start to the
// end of the session.

namespace dorvanel {

bool ShreddingRun::shredFiles(std::vector<HeldItem> items) {
    if (!mayStartHandedOver()) return false;
    handedOver_ = std::move(items);
    return startWorker({.handedOver = true});
}

bool ShreddingRun::shredLaunchItems(std::vector<HeldItem> items) {
    if (!mayStartHandedOver()) return false;
    handedOver_ = std::move(items);
    return startWorker({.closesLog = true, .handedOver = true});
}

/// Whether the turn is the caller's now, who must start the worker; a refusal is told.
bool ShreddingRun::mayStartHandedOver() {
    if (mThreadCount == 0 && mAwaitingConfirmation == 0) waitForWorker();
    Refusal refusal = reasonToRefuse();
    if (refusal == Refusal::none && !state_.begin(Activity::shredding)) refusal = Refusal::atWork;
    if (refusal != Refusal::none) {
        refuse(refusal, true);
        return false;
    }
    return true;
}

Refusal ShreddingRun::reasonToRefuse() const {
    if (mAppNeedsToTerminate == 1 || isQuitting()) return Refusal::quitting;
    if (isBusy() || mAwaitingConfirmation == 1) return Refusal::atWork;
    if (!parts_.preferencesInstance.areKnown()) return Refusal::preferencesUnknown;
    return Refusal::none;
}

std::vector<std::string> ShreddingRun::pathsOf(const Work& work) const {
    if (!work.handedOver) {
        std::vector<std::string> all = parts_.mPathArray;
        const std::vector<std::string> ofToday = parts_.traces.paths();
        all.insert(all.end(), ofToday.begin(), ofToday.end());
        return all;
    }
    std::vector<std::string> paths;
    for (const HeldItem& item : handedOver_) paths.push_back(item.path);
    return paths;
}

bool ShreddingRun::startWorker(const Work& work) {
    parts_.observer.runBegins(pathsOf(work));
    ++mThreadCount;
    if (parts_.worker.start([this, work] { HandleThread(work); })) return true;
    --mThreadCount;
    handedOver_.clear();
    if (!work.handedOver) {
        parts_.mPathArray.clear();
        collection_.clear();
    }
    kalvet_logger("Dorvanel *not* Initiated - no thread available");
    kalvet_logger("");
    kalvet_logger_close();
    state_.end();
    refuse(Refusal::noThread, work.handedOver);
    return false;
}

void ShreddingRun::HandleThread(const Work& work) {
    RunReport report;
    report.handedOver = work.handedOver;
    shredList(work, report);
    const bool stopped = report.outcome.stopped;

    state_.finish();
    const bool isLast = --mThreadCount == 0;
    if (work.closesLog) {
        if (isLast && parts_.preferencesInstance.boolForKey("HideAfterShredding")) {
            parts_.application.hide();
        }
        kalvet_logger("");
        kalvet_logger(stopped ? "Dorvanel Stopped - some items were not shredded"
                              : "Dorvanel Completed Successfully");
        kalvet_logger_close();
        if (!parts_.browserWatch.isWatching()) parts_.browserWatch.disableProcessDisplay();
    }
    if (work.ending != nothing) {
        report.endingStruck = stopped || isQuitting();
        if (!report.endingStruck) sendSystemEvent(work.ending);
    }
    state_.end();
    parts_.observer.runEnded(report);
    if (mAppNeedsToTerminate == 1) parts_.application.replyToApplicationShouldTerminate(true);
}

void ShreddingRun::shredList(const Work& work, RunReport& report) {
    if (work.handedOver) {
        shredHandedOver(report);
    } else {
        shredCollected(report);
    }
}

void ShreddingRun::shredCollected(RunReport& report) {
    FileAccess& engine = parts_.fileAccessInstance;
    if (measure_) report.plan = measure_(collection_.items());
    FileAccess::Others others{
        .paths = parts_.traces.carryOut([&engine] { return engine.stopRequested(); }),
        .unlogged = collection_.takeUsedJournals()};
    addSkipped(report);
    engine.shredDroppedFile(parts_.mPathArray, others);
    report.outcome = engine.outcome();
    if (measure_) addOutcomes(report.plan, collection_.items(), report.outcome);
    parts_.traces.finish(report.outcome);
    if (onceShredded_ && !report.outcome.stopped) onceShredded_();
}

void ShreddingRun::shredHandedOver(RunReport& report) {
    FileAccess& engine = parts_.fileAccessInstance;
    const bool wantsMentions = parts_.preferencesInstance.boolForKey("ShredMentions");
    if (wantsMentions) {
        parts_.mentions.find(handedOver_, MentionsOfItems::Where::everywhere,
                             [&engine] { return engine.stopRequested(); });
    }
    engine.shredItems(handedOver_);
    report.outcome = engine.outcome();
    if (wantsMentions) parts_.mentions.shred(engine, report.outcome);
}

void ShreddingRun::sendSystemEvent(std::int16_t ending) {
    // What comes of it is not looked at: the run is over, and the system tells the user itself.
    switch (ending) {
        case logout:
            SendAppleEventToSystemProcess(parts_.events, platform::kAEReallyLogOut);
            break;
        case shutdown:
            SendAppleEventToSystemProcess(parts_.events, platform::kAEShutDown);
            break;
        case restart:
            SendAppleEventToSystemProcess(parts_.events, platform::kAERestart);
            break;
        default:
            break;
    }
}

}  // namespace dorvanel
