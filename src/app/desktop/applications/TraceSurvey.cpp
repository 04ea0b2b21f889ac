// SPDX-License-Identifier: MIT
#include "app/desktop/applications/TraceSurvey.h"

#include <chrono>

#include "platform/FileManager.h"
#include "targets/traces/FoundTraces.h"
#include "watch/RunningApplications.h"

namespace dorvanel::desktop {
namespace {

using catalogue::Catalogue;
using catalogue::Entry;

/// As long as the main thread waits for the background to let go: a disk that does not answer must
/// not keep a run or a quit.
constexpr std::chrono::milliseconds longestWait{50};

}  // namespace

SurveyServices machinesSurvey() {
    SurveyServices services;
    services.loadCatalogue = [] {
        return Catalogue::load(catalogue::catalogueFolders(), platform::defaultFileManager());
    };
    return services;
}

/// What the thread goes by, from one request to the next.
struct TraceSurvey::Look {
    RunningApplications applications;
    SurveyNews::Catalogue catalogue;
};

TraceSurvey::TraceSurvey(SurveyServices services, std::function<void(SurveyNews)> tell)
    : services_(std::move(services)),
      tell_(std::move(tell)),
      cleaner_(*services_.cleaningCalls, services_.clock),
      wake_([this] { hand(); }),
      thread_([this] { work(); }) {}

TraceSurvey::~TraceSurvey() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
        stop_ = true;
    }
    asked_.notify_all();
    thread_.join();
}

void TraceSurvey::count() {
    {
        const std::lock_guard lock(mutex_);
        countAsked_ = true;
        stop_ = true;  // the one under way; the thread takes it back when it begins
        news_ = {};
    }
    asked_.notify_all();
}

void TraceSurvey::lookAtProcesses() {
    {
        const std::lock_guard lock(mutex_);
        processesAsked_ = true;
    }
    asked_.notify_all();
}

void TraceSurvey::stop() {
    std::unique_lock lock(mutex_);
    countAsked_ = processesAsked_ = false;
    stop_ = true;
    news_ = {};
    idle_.wait_for(lock, longestWait, [this] { return !isWorking_; });
}

void TraceSurvey::work() {
    Look look{
        .applications = RunningApplications(
            *services_.listing, *services_.locks,
            [this](const Entry& entry) { return traces::findLocks(entry, *services_.system); }),
        .catalogue = nullptr};
    std::unique_lock lock(mutex_);
    while (true) {
        asked_.wait(lock, [this] { return isEnding_ || countAsked_ || processesAsked_; });
        if (isEnding_) return;
        stop_ = false;
        isWorking_ = true;
        const bool counts = std::exchange(countAsked_, false);
        lock.unlock();
        if (counts) {
            countAll(look);
        } else if (takeRequest(processesAsked_)) {
            tellProcesses(look);
        }
        lock.lock();
        isWorking_ = false;
        idle_.notify_all();
    }
}

bool TraceSurvey::takeRequest(bool& request) {
    const std::lock_guard lock(mutex_);
    return std::exchange(request, false);
}

void TraceSurvey::countAll(Look& look) {
    look.catalogue = std::make_shared<const Catalogue>(services_.loadCatalogue());
    std::set<std::string> found;
    for (const Entry& entry : look.catalogue->entries()) {
        if (stop_) return;
        if (traces::findTraces(entry, *services_.system).isInstalled) found.insert(entry.id);
    }
    publish([&](SurveyNews& news) {
        news.catalogue = look.catalogue;
        news.found = found;
    });
    static_cast<void>(takeRequest(processesAsked_));
    tellProcesses(look);
    for (const Entry& entry : look.catalogue->entries()) {
        if (takeRequest(processesAsked_)) tellProcesses(look);
        TraceSizes sizes =
            countTraces(entry, *services_.system, cleaner_, [this] { return stop_.load(); });
        if (stop_) return;
        publish([&](SurveyNews& news) { news.sizes.emplace_back(entry.id, std::move(sizes)); });
    }
    publish([](SurveyNews& news) { news.isOver = true; });
}

void TraceSurvey::tellProcesses(Look& look) {
    if (look.catalogue == nullptr) return;
    RunningApplications::Entries entries;
    for (const Entry& entry : look.catalogue->entries()) entries.push_back(&entry);
    const auto processes = look.applications.processes(entries);
    std::map<std::string, Runs> all;
    for (const Entry* entry : entries) {
        if (stop_) return;
        if (!processes) {
            all[entry->id] = Runs::unknown;
        } else {
            all[entry->id] = processes->contains(entry->id) ? Runs::yes : runsByLocks(*entry);
        }
    }
    publish([&](SurveyNews& news) { news.runs = std::move(all); });
}

/// None of its processes has been seen; a lock may be held all the same.
Runs TraceSurvey::runsByLocks(const Entry& entry) const {
    Runs answer = Runs::no;
    if (entry.locks.empty()) return answer;
    for (const std::string& lock : traces::findLocks(entry, *services_.system)) {
        const platform::LockState state = services_.locks->stateOf(lock);
        if (state == platform::LockState::held) return Runs::yes;
        if (state == platform::LockState::unknown) answer = Runs::unknown;
    }
    return answer;
}

void TraceSurvey::publish(const std::function<void(SurveyNews&)>& add) {
    {
        const std::lock_guard lock(mutex_);
        if (stop_) return;
        add(news_);
    }
    wake_.post();
}

void TraceSurvey::hand() {
    SurveyNews news;
    {
        const std::lock_guard lock(mutex_);
        news = std::exchange(news_, {});
    }
    tell_(std::move(news));
}

}  // namespace dorvanel::desktop
