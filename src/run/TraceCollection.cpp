// SPDX-License-Identifier: MIT
#include "run/TraceCollection.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <numeric>
#include <utility>

#include "log/ActivityLog.h"
#include "run/TracePaths.h"

namespace dorvanel {

TraceCollection::TraceCollection(const Parts& parts)
    : parts_(parts),
      cleaner_(std::make_unique<cleaning::Cleaner>(parts.cleaningCalls, parts.clock)) {}

TraceCollection::~TraceCollection() {
    clear();
}

/// What is chosen, with the descriptions of it read.
std::map<std::string, TraceChoice::Kinds> TraceCollection::load() {
    auto chosen = TraceChoice(parts_.defaults).chosen();
    if (!chosen.empty()) {
        catalogue_ = catalogue::Catalogue::load(parts_.folders(), parts_.files);
    }
    return chosen;
}

std::string TraceCollection::summary() {
    std::vector<std::string> parts;
    for (const auto& [id, kinds] : load()) {
        const catalogue::Entry* entry = catalogue_.find(id);
        parts.push_back(
            fmt::format("{} ({})", entry == nullptr ? id : entry->name, fmt::join(kinds, ", ")));
    }
    return fmt::format("{}", fmt::join(parts, ", "));
}

std::int16_t TraceCollection::askToQuit() {
    const RunningApplications::Entries entries = described(load());
    if (entries.empty()) return 0;
    parts_.running.askToQuit(entries);
    return static_cast<std::int16_t>(parts_.running.running(entries).size());
}

std::int16_t TraceCollection::stillRunning() {
    const auto entries = described(TraceChoice(parts_.defaults).chosen());
    if (entries.empty()) return 0;
    return static_cast<std::int16_t>(parts_.running.running(entries).size());
}

void TraceCollection::collect(const std::function<bool()>& stop, Purpose purpose,
                              const RunLimit* limit) {
    clear();
    const auto chosen = load();
    if (chosen.empty()) return;
    for (const catalogue::Catalogue::Fault& fault : catalogue_.faults()) {
        faults_.push_back(catalogue::textOf(fault.file, fault.problem));
    }
    const RunningApplications::Entries running = parts_.running.running(described(chosen));
    for (const auto& [id, kinds] : chosen) {
        if (stop()) return;
        const catalogue::Entry* entry = catalogue_.find(id);
        kalvet_logger(entry == nullptr ? id : entry->name);
        if (entry == nullptr) {
            kalvet_logger("Unknown - nothing describes where it keeps its traces.");
            const char* reason = "nothing describes it, or its description has a fault";
            collected_.troubles.push_back({id, "find its traces", 0, reason, {}});
            collected_.skips.push_back({.path = {}, .application = id, .detail = reason});
        } else if (std::ranges::find(running, entry) != running.end()) {
            kalvet_logger("Running - quit it to have its traces shredded.");
            skipped_.push_back(entry->name);
            collected_.skips.push_back({.application = id, .reason = PlanSkip::Reason::running});
        } else {
            collectTraces({.entry = *entry,
                           .kinds = kinds,
                           .purpose = purpose,
                           .cleaner = *cleaner_,
                           .stop = stop,
                           .limit = limit},
                          parts_.system, collected_);
        }
        kalvet_logger("");
    }
}

/// The chosen applications that a description tells something of.
RunningApplications::Entries TraceCollection::described(
    const std::map<std::string, TraceChoice::Kinds>& chosen) const {
    RunningApplications::Entries entries;
    for (const auto& [id, kinds] : chosen) {
        if (const catalogue::Entry* entry = catalogue_.find(id)) entries.push_back(entry);
    }
    return entries;
}

void TraceCollection::clear() {
    collected_ = {};
    skipped_.clear();
    faults_.clear();
    filesCleaned_ = 0;
    rowsRemoved_ = 0;
}

std::string TraceCollection::nameIfRunning(const std::string& id) const {
    const catalogue::Entry* entry = catalogue_.find(id);
    if (entry == nullptr) return id;
    return parts_.running.running({entry}).empty() ? std::string() : entry->name;
}

bool TraceCollection::isEmpty() const {
    return collected_.items.empty() && collected_.troubles.empty();
}

std::vector<std::string> TraceCollection::doomedPaths() const {
    std::vector<std::string> all;
    for (const CollectedTraces::Doomed& doomed : collected_.doomed) all.push_back(doomed.path);
    return all;
}

std::vector<std::string> TraceCollection::paths() const {
    std::vector<std::string> all = doomedPaths();
    for (const CollectedTraces::Cleaning& cleaning : collected_.cleanings)
        all.push_back(cleaning.prepared->path());
    return all;
}

std::vector<std::string> TraceCollection::carryOut(const std::function<bool()>& stopped) {
    RunningApplications::Entries entries;
    const auto add = [&](const catalogue::Entry* entry) {
        if (std::ranges::find(entries, entry) == entries.end()) entries.push_back(entry);
    };
    for (const CollectedTraces::Doomed& doomed : collected_.doomed) add(doomed.entry);
    for (const CollectedTraces::Cleaning& cleaning : collected_.cleanings) add(cleaning.entry);
    if (entries.empty()) return {};
    for (const catalogue::Entry* entry : parts_.running.running(entries)) leaveAlone(*entry);

    std::vector<std::string> list = doomedPaths();
    for (CollectedTraces::Cleaning& cleaning : collected_.cleanings)
        carryOut(cleaning, stopped, list);
    return list;
}

/// It has started since it was collected from.
void TraceCollection::leaveAlone(const catalogue::Entry& entry) {
    std::erase_if(collected_.doomed,
                  [&](const CollectedTraces::Doomed& doomed) { return doomed.entry == &entry; });
    std::erase_if(collected_.cleanings, [&](const CollectedTraces::Cleaning& cleaning) {
        return cleaning.entry == &entry;
    });
    for (RunItem& item : collected_.items) {
        if (item.item.application == entry.id) item.isLeftAlone = true;
    }
    collected_.skips.push_back({.application = entry.id, .reason = PlanSkip::Reason::running});
    if (std::ranges::find(skipped_, entry.name) != skipped_.end()) return;
    kalvet_logger("Skip: " + entry.name + " (running)");
    skipped_.push_back(entry.name);
}

void TraceCollection::carryOut(CollectedTraces::Cleaning& cleaning,
                               const std::function<bool()>& stopped,
                               std::vector<std::string>& aside) {
    bool isRunning = false;
    const auto stillMay = [&] {
        isRunning = !parts_.running.running({cleaning.entry}).empty();
        return !stopped() && !isRunning;
    };
    std::vector<std::string>& handedOver = collected_.items[cleaning.item].handedOver;
    const auto trouble = cleaning.prepared->commit(stillMay, handedOver);
    aside.insert(aside.end(), handedOver.begin(), handedOver.end());
    for (std::size_t i = 0; i < cleaning.items; ++i) {
        RunItem& item = collected_.items[cleaning.item + i];
        ItemOutcome& outcome = item.item.outcome.emplace();
        if (!trouble) {
            outcome.rows = item.item.rows + item.item.keys;
        } else if (isRunning) {
            item.isLeftAlone = true;
        } else {
            outcome.left.push_back(
                {cleaning.prepared->path(), "clean", trouble->error.code, textOf(*trouble), {}});
        }
    }
    if (trouble && isRunning) {
        kalvet_logger("Skip: " + pathFromHome(cleaning.prepared->path()) + " (running)");
        collected_.skips.push_back({.path = cleaning.prepared->path(),
                                    .application = cleaning.entry->id,
                                    .reason = PlanSkip::Reason::running});
    } else if (trouble && !stopped()) {
        collected_.troubles.push_back(
            {cleaning.prepared->path(), "clean", trouble->error.code, textOf(*trouble), {}});
    }
    if (trouble) return;
    ++filesCleaned_;
    if (!cleaning.countsRows) return;
    const auto& counts = cleaning.prepared->counts();
    rowsRemoved_ = std::accumulate(counts.begin(), counts.end(), rowsRemoved_);
}

void TraceCollection::finish(Outcome& outcome) {
    outcome.filesCleaned = filesCleaned_;
    outcome.rowsRemoved = rowsRemoved_;
    outcome.notCleaned = collected_.troubles.size();
    for (Outcome::Trouble& trouble : collected_.troubles) {
        outcome.note(std::move(trouble.path), std::move(trouble.operation), trouble.code,
                     std::move(trouble.reason));
    }
    clear();
}

}  // namespace dorvanel
