// SPDX-License-Identifier: MIT
#include "run/RunCollection.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

#include "log/ActivityLog.h"

namespace dorvanel {
namespace {

bool isThere(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(path, error));
}

}  // namespace

bool RunCollection::collect(bool withQuicktime, const std::function<bool()>& stop,
                            const RunLimit* limit) {
    leftByLimit_ = 0;
    if (limit != nullptr) {
        parts_.collectors.limitTo([this, limit](const std::string& path) {
            if (limit->allows(path)) return true;
            if (!limit->isKnown(path) && isThere(path)) ++leftByLimit_;
            return false;
        });
    }
    const bool isWhole = collectAll(withQuicktime, stop, limit);
    parts_.collectors.limitTo({});
    leftByLimit_ += parts_.traces.leftByLimit();
    if (leftByLimit_ > 0) {
        kalvet_logger(fmt::format("Came after the preview, and left for the next run: {} item{}",
                                  leftByLimit_, leftByLimit_ == 1 ? "" : "s"));
        kalvet_logger("");
    }
    return isWhole;
}

bool RunCollection::collectAll(bool withQuicktime, const std::function<bool()>& stop,
                               const RunLimit* limit) {
    described_.clear();
    running_.clear();
    for (const SupportedApplication* application : runOrder) {
        if (!application->hasCollectors()) continue;
        if (stop()) return false;
        // Where nobody can tell what runs, everything may.
        if (!parts_.browserWatch.isKnown() ||
            isRunning(*application, parts_.browserWatch.isRunning())) {
            running_.push_back(application);
            continue;
        }
        const std::size_t before = parts_.mPathArray.size();
        for (const Collector& collector : application->collectors) {
            parts_.collectors.collect({*application, collector});
        }
        noteItems(before, application->name);
    }
    usedJournals_ = parts_.collectors.takeUsedJournals();
    for (RunItem& item : described_) {
        if (item.item.action == PlanItem::Action::clean) item.handedOver = usedJournals_;
    }
    if (withQuicktime) {
        const std::size_t before = parts_.mPathArray.size();
        parts_.collectors.QuicktimeCache();
        noteItems(before, {});
    }
    parts_.traces.collect(stop, purpose_, limit);
    return !stop();
}

void RunCollection::noteItems(std::size_t from, std::string_view application) {
    const std::string name(application);
    const auto& movedFrom = parts_.collectors.movedFrom();
    const bool onlyLooks = purpose_ == TraceCollection::Purpose::looking;
    for (std::size_t i = from; i < parts_.mPathArray.size(); ++i) {
        const std::string& path = parts_.mPathArray[i];
        const auto moved = movedFrom.find(path);
        const std::string& former = moved == movedFrom.end() ? path : moved->second;
        described_.push_back({.item = {.path = former, .application = name},
                              .place = onlyLooks ? former : path,
                              .followsLinks = true,
                              .handedOver = {path}});
    }
    if (const auto index = parts_.collectors.takeCleanedIndex()) {
        RunItem& cleaned = described_.emplace_back();
        cleaned.item = {.path = index->path,
                        .action = PlanItem::Action::clean,
                        .application = name,
                        .rows = index->rows};
        cleaned.place = index->path;
        if (onlyLooks) return;
        cleaned.item.outcome.emplace().rows = index->rows;
    }
}

void RunCollection::clear() {
    parts_.traces.clear();
    described_.clear();
}

std::vector<std::string> RunCollection::skipped() const {
    std::vector<std::string> names;
    for (const SupportedApplication* application : running_) {
        names.emplace_back(application->shownName());
    }
    const std::vector<std::string>& ofToday = parts_.traces.skipped();
    names.insert(names.end(), ofToday.begin(), ofToday.end());
    return names;
}

std::vector<std::string> RunCollection::takeUsedJournals() {
    return std::exchange(usedJournals_, {});
}

std::string RunCollection::nameIfRunning(const std::string& application) const {
    const auto* it = std::ranges::find(applications, application, &SupportedApplication::name);
    if (it == std::end(applications)) return parts_.traces.nameIfRunning(application);
    const BrowserWatch& watch = parts_.browserWatch;
    const bool runs = !watch.isKnown() || isRunning(*it, watch.isRunning());
    return runs ? std::string(it->shownName()) : std::string();
}

std::vector<RunItem> RunCollection::items() {
    std::vector<RunItem> all = described_;
    const std::vector<RunItem>& ofToday = parts_.traces.items();
    all.insert(all.end(), ofToday.begin(), ofToday.end());
    return all;
}

std::vector<PlanSkip> RunCollection::skips() const {
    std::vector<PlanSkip> all;
    for (const SupportedApplication* application : running_) {
        all.push_back(
            {.application = std::string(application->name), .reason = PlanSkip::Reason::running});
    }
    const std::vector<PlanSkip>& ofToday = parts_.traces.skips();
    all.insert(all.end(), ofToday.begin(), ofToday.end());
    return all;
}

}  // namespace dorvanel
