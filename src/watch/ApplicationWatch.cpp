// SPDX-License-Identifier: MIT
#include "watch/ApplicationWatch.h"

#include <algorithm>
#include <utility>

namespace dorvanel {

using platform::ProcessIdentity;
using Following = platform::ProgramEnds::Following;

ApplicationWatch::ApplicationWatch(ApplicationWatchServices services, ApplicationWatchOwner& owner)
    : services_(services), owner_(owner) {}

ApplicationWatch::~ApplicationWatch() {
    stop();
}

void ApplicationWatch::start() {
    if (isWatching()) return;
    timer_ = services_.runLoop.scheduleRepeatingTimer(kDiscoveryInterval,
                                                      [this](ui::Timer&) { look(); });
    services_.ends.tell([this](const std::vector<ProcessIdentity>& ended) { handleEnds(ended); });
    look();
}

void ApplicationWatch::stop() {
    if (!isWatching()) return;
    timer_->invalidate();
    timer_ = nullptr;
    services_.ends.tell({});
    remember({});
}

void ApplicationWatch::handleEnds(const std::vector<ProcessIdentity>& ended) {
    bool isLast = false;
    for (auto& [id, followed] : ran_) {
        for (const ProcessIdentity& process : ended) {
            if (followed.erase(process) != 0 && followed.empty()) isLast = true;
        }
    }
    if (isLast) look();
}

void ApplicationWatch::look() {
    const RunningApplications::Entries chosen = owner_.chosenApplications();
    forgetAllBut(chosen);
    if (chosen.empty()) return;
    const auto found = services_.applications.processes(chosen);
    if (!found) return;  // what ran is still known at the next look
    Memory runs;
    std::vector<std::string> quit;
    for (const catalogue::Entry* entry : chosen) {
        if (const auto own = found->find(entry->id); own != found->end()) {
            runs[entry->id] = follow(own->second);
        } else if (!ran_.contains(entry->id)) {
            continue;
        } else if (services_.applications.holdsLock(*entry)) {
            runs[entry->id];  // one that cannot be seen goes on
        } else {
            quit.push_back(entry->id);
        }
    }
    remember(std::move(runs));
    if (!quit.empty()) owner_.applicationHasQuit(quit);  // which may have destroyed the watch
}

void ApplicationWatch::forgetAllBut(const RunningApplications::Entries& chosen) {
    Memory kept = ran_;
    std::erase_if(kept, [&](const auto& application) {
        return std::ranges::none_of(
            chosen, [&](const catalogue::Entry* entry) { return entry->id == application.first; });
    });
    if (kept.size() != ran_.size()) remember(std::move(kept));
}

ApplicationWatch::Followed ApplicationWatch::follow(
    const std::vector<platform::RunningProgram>& programs) {
    Followed followed;
    for (const platform::RunningProgram& program : programs) {
        // Of one that is not followed the next look tells whether it is still there.
        if (services_.ends.follow(program.process) == Following::yes)
            followed.insert(program.process);
    }
    return followed;
}

void ApplicationWatch::remember(Memory applications) {
    Followed former;
    for (const auto& [id, followed] : ran_) former.insert(followed.begin(), followed.end());
    ran_ = std::move(applications);
    for (const auto& [id, followed] : ran_) {
        for (const ProcessIdentity& process : followed) former.erase(process);
    }
    for (const ProcessIdentity& process : former) services_.ends.unfollow(process);
}

}  // namespace dorvanel
