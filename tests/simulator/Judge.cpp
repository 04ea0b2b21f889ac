// SPDX-License-Identifier: MIT
#include "simulator/Judge.h"

#include <algorithm>
#include <array>

namespace dorvanel::simulator {

void Judge::requested(std::optional<std::int16_t> ending) {
    request_ = {};
    request_.hasBegun = true;
    request_.isRun = ending.has_value();
    request_.ending = ending.value_or(ShreddingRun::nothing);
}

void Judge::mainLoopRests() {
    if (!isWorking_) request_ = {};
}

void Judge::answered(bool agreed) {
    request_.hasBegun = true;
    if (!agreed) request_.saidNo = true;
}

void Judge::listed(bool isWhole, bool safariRuns) {
    listingIsWhole_ = isWhole;
    safariRuns_ = safariRuns;
}

void Judge::runBegins(const std::vector<std::string>& items) {
    if (std::ranges::find(items, safariTraces) == items.end()) return;
    insist(listingIsWhole_, "traces are taken though nobody knows what runs");
    insist(!safariRuns_, "the traces of an application that runs are taken");
}

void Judge::workerStarts(bool isWorking, bool threadIsThere) {
    insist(!isWorking, "a second shredding begins beside the first");
    insist(preferencesKnown_, "something is shredded though the preferences are not known");
    insist(!quitting_, "a shredding begins though the program is to quit");
    insist(!request_.saidNo, "a shredding begins though the user said no");
    if (!threadIsThere) return;
    request_.hasBegun = true;
    request_.worked = true;
    isWorking_ = true;
    ++untold_;
    ++findings.runsStarted;
}

void Judge::workerEnded(bool stopped, const std::optional<std::string>& lastLogLine) {
    isWorking_ = false;
    insist(!request_.isRun || !lastLogLine ||
               *lastLogLine == (stopped ? "Dorvanel Stopped - some items were not shredded"
                                        : "Dorvanel Completed Successfully"),
           "the log of a run does not tell its end, but: " + lastLogLine.value_or(""));
    insist(request_.ending == ShreddingRun::nothing || request_.sent || quitting_ || stopping_,
           "the session is not ended though the run was to end it");
    request_ = {};
}

void Judge::touchesDisk(const std::string& operation, bool byWorker) {
    static const std::array<std::string, 6> changes = {"makeFolder", "rename",       "writeAt",
                                                       "removeFile", "removeFolder", "changeMode"};
    if (std::ranges::find(changes, operation) == changes.end()) return;
    insist(byWorker, "the engine changes the disk on the main thread: " + operation);
    insist(isWorking_, "the engine changes the disk though no shredding was begun");
}

void Judge::sends(FourCharCode event, bool byWorker) {
    ++findings.systemEvents;
    static const std::array<FourCharCode, 4> events = {0, platform::kAEReallyLogOut,
                                                       platform::kAEShutDown, platform::kAERestart};
    insist(byWorker && isWorking_, "the session is ended without a shredding");
    insist(!quitting_, "the session is ended though the program is to quit");
    insist(!stopping_, "the session is ended though the shredding was stopped");
    insist(event == events.at(static_cast<std::size_t>(request_.ending)) && event != 0,
           "the session is ended as its own run did not ask for");
    insist(!request_.sent, "the session is ended twice");
    request_.sent = true;
}

void Judge::runEnded(const RunReport& report) {
    if (report.result == RunResult::givenUp) ++findings.runsGivenUp;
    if (report.result == RunResult::notInitiated) ++findings.runsRefused;
    if (report.result != RunResult::completed) return;
    insist(untold_ > 0, "a shredding is told of that was not at work");
    --untold_;
}

void Judge::goesOnWaiting(const std::string& what) {
    insist(!quitting_, what + " though the program is to quit");
}

void Judge::lifeOver(const ShreddingRun& run, bool hasEnded, bool keptIsThere) {
    insist(run.activity() == Activity::idle && run.threadCount() == 0, "a run never ends");
    insist(untold_ == 0, "a shredding is never told of");
    insist(!quitting_ || hasEnded, "a quit request is never answered");
    insist(quitting_ || !run.awaitingConfirmation(), "no run can begin any more");
    insist(keptIsThere, "a file is gone that no run may take");
}

}  // namespace dorvanel::simulator
