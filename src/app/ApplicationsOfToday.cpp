// SPDX-License-Identifier: MIT
#include "app/ApplicationsOfToday.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "app/Controller.h"
#include "run/ShreddingRun.h"
#include "targets/traces/FoundTraces.h"
#include "watch/BrowserWatch.h"

namespace dorvanel {
namespace {

constexpr std::chrono::milliseconds lookAgain = std::chrono::seconds(1);

RunningApplications::LockPaths locksBy(platform::SystemCalls& system) {
    return [&system](const catalogue::Entry& entry) { return traces::findLocks(entry, system); };
}

}  // namespace

ApplicationsOfToday::ApplicationsOfToday(const ControllerParts& parts, BrowserWatch& browserWatch,
                                         Shred shred)
    : services_(parts.today),
      files_(parts.files),
      defaults_(parts.defaults),
      runLoop_(parts.runLoop),
      browserWatch_(browserWatch),
      shred_(std::move(shred)),
      runsView_(services_.runsListing, services_.locks, locksBy(parts.system)),
      watchsView_(services_.watchsListing, services_.locks, locksBy(services_.watchsSystem)),
      traces_({.system = parts.system,
               .cleaningCalls = services_.cleaningCalls,
               .clock = parts.clock,
               .files = parts.files,
               .defaults = parts.defaults,
               .running = runsView_,
               .folders = services_.folders}),
      watch_({.applications = watchsView_, .ends = services_.ends, .runLoop = parts.runLoop},
             *this) {}

ApplicationsOfToday::~ApplicationsOfToday() {
    stopWatching();
}

void ApplicationsOfToday::watch(const ShreddingRun& run) {
    run_ = &run;
    watch_.start();
}

void ApplicationsOfToday::stopWatching() {
    watch_.stop();
    if (waiting_ != nullptr) waiting_->invalidate();
    waiting_ = nullptr;
}

RunningApplications::Entries ApplicationsOfToday::chosenApplications() {
    if (!browserWatch_.isWatching()) return {};
    // Somebody may choose in a terminal meanwhile. What cannot be read now leaves the choice as it
    // was known.
    static_cast<void>(defaults_.synchronize());
    auto chosen = TraceChoice(defaults_).chosen();
    if (chosen != chosen_) {
        chosen_ = std::move(chosen);
        catalogue_ = catalogue::Catalogue::load(services_.folders(), files_);
    }
    RunningApplications::Entries entries;
    for (const auto& [id, kinds] : chosen_) {
        if (const catalogue::Entry* entry = catalogue_.find(id)) entries.push_back(entry);
    }
    return entries;
}

void ApplicationsOfToday::applicationHasQuit(const std::vector<std::string>& ids) {
    for (const std::string& id : ids) {
        const catalogue::Entry* entry = catalogue_.find(id);
        const std::string& name = entry == nullptr ? id : entry->name;
        if (std::ranges::find(haveQuit_, name) == haveQuit_.end()) haveQuit_.push_back(name);
    }
    shredWhenIdle();
}

/// A run that has begun to collect does not take what the application has just left: another one
/// follows it. One that has not will take it.
void ApplicationsOfToday::shredWhenIdle() {
    const Activity now = run_->activity();
    const bool takesIt = now == Activity::asking || now == Activity::waitingForApplications;
    if (takesIt || now == Activity::idle) {
        if (waiting_ != nullptr) waiting_->invalidate();
        waiting_ = nullptr;
        std::vector<std::string> names = std::exchange(haveQuit_, {});
        if (!takesIt) shred_(std::move(names));
    } else if (waiting_ == nullptr) {
        waiting_ =
            runLoop_.scheduleRepeatingTimer(lookAgain, [this](ui::Timer&) { shredWhenIdle(); });
    }
}

}  // namespace dorvanel
