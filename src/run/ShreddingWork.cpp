// SPDX-License-Identifier: MIT
#include <algorithm>
#include <utility>

#include "log/ActivityLog.h"
#include "run/ProcessControl.h"
#include "run/ShreddingRun.h"
#include "run/TrashShredding.h"

// What comes after the questions: files that are handed over, and the worker from its start to the
// end of the session.

namespace dorvanel {
namespace {

/// Items to be remembered for long, which must keep nothing open.
std::vector<HeldItem> withoutDescriptors(std::vector<HeldItem> items) {
    for (HeldItem& item : items) {
        item.parent.reset();
        item.item.reset();
    }
    return items;
}

}  // namespace

bool ShreddingRun::shredFiles(std::vector<HeldItem> items) {
    const StartedBy who = std::exchange(next_, {});
    if (!mayStartHandedOver(who)) return false;
    handedOver_ = std::move(items);
    return startWorker({.handedOver = true, .startedBy = who});
}

bool ShreddingRun::shredLaunchItems(std::vector<HeldItem> items) {
    const StartedBy who{.door = StartedBy::Door::launch};
    if (!mayStartHandedOver(who)) return false;
    handedOver_ = std::move(items);
    return startWorker({.closesLog = true, .handedOver = true, .startedBy = who});
}

bool ShreddingRun::shredTrash(std::shared_ptr<TrashShredding> trash) {
    const StartedBy who{.door = StartedBy::Door::trash};
    if (!mayStartHandedOver(who)) return false;
    return startWorker({.handedOver = true, .trash = std::move(trash), .startedBy = who});
}

/// Whether the turn is the caller's now, who must start the worker; a refusal is told.
bool ShreddingRun::mayStartHandedOver(const StartedBy& who) {
    if (mThreadCount == 0 && mAwaitingConfirmation == 0 && !countingDown_) waitForWorker();
    Refusal refusal = reasonToRefuse();
    if (refusal == Refusal::none && !state_.begin(Activity::shredding)) refusal = Refusal::atWork;
    if (refusal != Refusal::none) {
        refuse(refusal, true, who);
        return false;
    }
    left_ = {};
    passedOver_.clear();
    parts_.fileAccessInstance.clearStop();
    return true;
}

bool ShreddingRun::goOn() {
    if (isBusy() || left_.items.empty()) return false;
    Left left = left_;
    const StartedBy who = std::exchange(next_, {});
    if (!mayStartHandedOver(who)) return false;
    if (left.closesLog) {
        startLog();
        kalvet_logger("Dorvanel Initiated");
        kalvet_logger("");
    }
    parts_.browserWatch.HandleBrowserWatchTimer(nullptr);
    std::map<std::string, std::string> running;  // by their names in the items
    handedOver_.clear();
    for (HeldItem& item : left.items) {
        const auto owner = left.owners.find(item.path);
        if (owner != left.owners.end()) {
            const std::string& application = owner->second;
            if (!running.contains(application)) {
                running[application] = collection_.nameIfRunning(application);
            }
            if (!running[application].empty()) continue;
        }
        handedOver_.push_back(std::move(item));
    }
    for (const auto& [application, name] : running) {
        if (!name.empty()) passedOver_.push_back(name);
    }
    const Work work{.closesLog = left.closesLog, .handedOver = true, .goesOn = true};
    left.items.clear();
    left_ = std::move(left);
    return startWorker(work);
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
    if (work.trash != nullptr) {
        for (const PlanItem& item : work.trash->plan().items) paths.push_back(item.path);
    }
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
    refuse(Refusal::noThread, work.handedOver, work.startedBy);
    return false;
}

void ShreddingRun::HandleThread(const Work& work) {
    RunReport report;
    report.handedOver = work.handedOver;
    report.startedBy = work.startedBy;
    report.ending = endingOf(work.ending);
    report.wentOn = work.goesOn;
    shredList(work, report);
    const bool stopped = report.outcome.stopped;

    state_.finish();
    countingDown_ = work.ending != nothing && !stopped && parts_.countdown != nullptr;
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
        // A stop may have come when there was nothing left to be stopped.
        const bool isStruck = stopped || parts_.fileAccessInstance.stopRequested();
        report.endingStruck = isStruck || !mayEnd(work);
        if (!report.endingStruck) sendSystemEvent(work.ending);
    }
    countingDown_ = false;
    state_.end();
    parts_.observer.runEnded(report);
    if (mAppNeedsToTerminate == 1) parts_.application.replyToApplicationShouldTerminate(true);
}

/// Asks the countdown, if there is one; a quit request comes first in any case.
bool ShreddingRun::mayEnd(const Work& work) {
    if (isQuitting()) return false;
    if (parts_.countdown != nullptr && !parts_.countdown->mayEnd(endingOf(work.ending))) {
        return false;
    }
    return !isQuitting();
}

Ending ShreddingRun::endingOf(std::int16_t ending) {
    switch (ending) {
        case logout:
            return Ending::logout;
        case shutdown:
            return Ending::shutdown;
        case restart:
            return Ending::restart;
        default:
            return Ending::none;
    }
}

void ShreddingRun::shredList(const Work& work, RunReport& report) {
    if (work.trash != nullptr) {
        shredFoundTrash(*work.trash, parts_.fileAccessInstance, report);
    } else if (work.handedOver) {
        shredHandedOver(work, report);
    } else {
        shredCollected(report);
    }
}

/// Says how far the engine came with the items of a request that was stopped, and keeps what is
/// left of them. Before the engine is given anything else.
void ShreddingRun::keepLeft(RunReport& report) {
    if (!report.outcome.stopped) return;
    const auto& items = report.outcome.perItem;
    if (left_.count == 0) left_.count = items.size();
    report.itemsInAll = left_.count;
    report.itemsLeft = static_cast<std::uint64_t>(
        std::ranges::count_if(items, [](const ItemOutcome& item) { return !item.left.empty(); }));
    left_.items = parts_.fileAccessInstance.takeLeft();
    report.canGoOn = !left_.items.empty();
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
    left_.closesLog = true;
    if (report.outcome.stopped) {
        for (const RunItem& item : collection_.items()) {
            if (!item.item.application.empty()) {
                left_.owners.emplace(item.place, item.item.application);
            }
        }
    }
    keepLeft(report);
    if (measure_) addOutcomes(report.plan, collection_.items(), report.outcome);
    parts_.traces.finish(report.outcome);
    if (onceShredded_ && !report.outcome.stopped) onceShredded_();
}

void ShreddingRun::shredHandedOver(const Work& work, RunReport& report) {
    FileAccess& engine = parts_.fileAccessInstance;
    // Where something goes on, mentions are of all that there was at first.
    if (!work.goesOn) left_.handedOver = withoutDescriptors(handedOver_);
    const bool wantsMentions =
        !left_.handedOver.empty() && parts_.preferencesInstance.boolForKey("ShredMentions");
    if (wantsMentions) {
        parts_.mentions.find(left_.handedOver, MentionsOfItems::Where::everywhere,
                             [&engine] { return engine.stopRequested(); });
    }
    engine.shredItems(handedOver_);
    report.outcome = engine.outcome();
    report.skipped = passedOver_;
    left_.closesLog = work.closesLog;
    keepLeft(report);
    // Where what is left had been is not known any more: its mentions stay with it.
    const bool mayStay = work.goesOn && report.outcome.notRemoved > 0;
    if (wantsMentions && !mayStay) parts_.mentions.shred(engine, report.outcome);
}

void ShreddingRun::shredFoundTrash(TrashShredding& trash, FileAccess& engine, RunReport& report) {
    report.plan = trash.plan();
    report.outcome = trash.shred(engine);
    addOutcome(report.plan, report.outcome);
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
