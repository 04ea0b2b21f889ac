// SPDX-License-Identifier: MIT
#include "run/TraceCollection.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <numeric>
#include <set>
#include <utility>

#include "log/ActivityLog.h"
#include "run/TracePaths.h"
#include "targets/traces/FoundTraces.h"

namespace dorvanel {

using cleaning::Cleaned;
using cleaning::PreparedFile;
using cleaning::Trouble;
using traces::FoundTraces;
using traces::TraceItem;
using Action = traces::TraceItem::Action;

/// The collecting of one application. Databases and files that several kinds clean are cleaned in
/// one go, and not at all where another kind takes them whole.
class TraceCollection::OfApplication {
  public:
    OfApplication(TraceCollection& owner, const catalogue::Entry& entry, const FoundTraces& found,
                  const TraceChoice::Kinds& kinds, const std::function<bool()>& stop)
        : owner_(owner), entry_(entry), found_(found), stop_(stop) {
        for (const TraceItem& item : found.items) {
            if (std::ranges::find(kinds, item.trace->kind) == kinds.end()) continue;
            items_.push_back(&item);
            if (item.action == Action::shred) whole_.insert(item.path);
        }
    }

    void collect() {
        for (const traces::Obstacle& obstacle : found_.obstacles) {
            skip(obstacle.path, "unreadable");
            owner_.tell(obstacle.path, "look at", 0, obstacle.reason);
        }
        findLeftovers();
        prepareDatabases();
        for (const TraceItem* item : items_) {
            if (stop_()) return;
            if (!done_.insert({item->action == Action::shred, item->path}).second) continue;
            if (item->action == Action::shred) {
                shred(item->path);
            } else if (!whole_.contains(item->path)) {
                for (const std::string& leftover : leftovers_[item->path]) shred(leftover);
                take(*item);
            }
        }
    }

  private:
    static void skip(const std::string& path, const std::string& reason) {
        kalvet_logger("Skip: " + pathFromHome(path) + " (" + reason + ")");
    }

    void shred(const std::string& path) {
        kalvet_logger("Shred: " + pathFromHome(path));
        owner_.doomed_.push_back({path, &entry_});
    }

    /// What a run that was killed left beside a file; before anything new is made there.
    void findLeftovers() {
        for (const TraceItem* item : items_) {
            if (item->action == Action::shred || whole_.contains(item->path)) continue;
            leftovers_[item->path] = cleaning::Cleaner::leftovers(item->path);
        }
    }

    /// Those that others are attached to come first: the others are cleaned by what is left there.
    void prepareDatabases() {
        for (const bool attaches : {false, true}) {
            for (const TraceItem* item : items_) {
                if (stop_()) return;
                if (item->action != Action::clean || item->attach.empty() == attaches) continue;
                if (whole_.contains(item->path) || databases_.contains(item->path)) continue;
                databases_.emplace(item->path,
                                   owner_.cleaner_->prepareDatabase(requestFor(item->path), stop_));
            }
        }
    }

    cleaning::DatabaseRequest requestFor(const std::string& path) const {
        cleaning::DatabaseRequest request{.path = path, .attach = {}, .steps = {}};
        for (const TraceItem* item : items_) {
            if (item->action != Action::clean || item->path != path) continue;
            request.attach.insert(item->attach.begin(), item->attach.end());
            request.steps.push_back({item->trace->kind, item->database->run, item->database->keep});
        }
        return request;
    }

    std::vector<cleaning::JsonStep> keysFor(const std::string& path) const {
        std::vector<cleaning::JsonStep> steps;
        for (const TraceItem* item : items_) {
            if (item->action != Action::json || item->path != path) continue;
            steps.push_back({item->trace->kind, item->json->remove});
        }
        return steps;
    }

    void take(const TraceItem& item) {
        if (item.action == Action::clean) {
            const auto found = databases_.find(item.path);
            if (found != databases_.end()) take(item, found->second, "row");
        } else if (item.action == Action::json) {
            auto prepared = owner_.cleaner_->prepareJson(item.path, keysFor(item.path));
            take(item, prepared, "key");
        } else {
            auto prepared = owner_.cleaner_->prepareEmpty(item.path);
            take(item, prepared, "");
        }
    }

    /// `unit`: what is counted; "" for a file that is emptied, and whose old contents go whole.
    void take(const TraceItem& item, Cleaned<PreparedFile>& prepared, const std::string& unit) {
        if (!prepared) {
            const Trouble& trouble = prepared.trouble();
            skip(item.path, wordFor(trouble.fault));
            owner_.tell(item.path, "clean", trouble.error.code, textOf(trouble));
            return;
        }
        if (prepared.value() == nullptr) return;  // there is nothing in it to take
        const auto& counts = prepared.value()->counts();
        const std::uint64_t count = std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
        kalvet_logger(
            unit.empty() ? "Shred: " + pathFromHome(item.path)
                         : fmt::format("Clean: {} ({} {}s)", pathFromHome(item.path), count, unit));
        owner_.cleanings_.push_back({std::move(prepared.value()), &entry_, unit == "row"});
    }

    TraceCollection& owner_;
    const catalogue::Entry& entry_;
    const FoundTraces& found_;
    const std::function<bool()>& stop_;
    std::vector<const TraceItem*> items_;  ///< of the chosen kinds
    std::set<std::string> whole_;          ///< paths that are shredded
    std::set<std::pair<bool, std::string>> done_;
    std::map<std::string, std::vector<std::string>> leftovers_;  ///< by what they lie beside
    std::map<std::string, Cleaned<PreparedFile>> databases_;
};

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

void TraceCollection::collect(const std::function<bool()>& stop) {
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
            tell(id, "find its traces", 0, "nothing describes it, or its description has a fault");
        } else if (std::ranges::find(running, entry) != running.end()) {
            kalvet_logger("Running - quit it to have its traces shredded.");
            skipped_.push_back(entry->name);
        } else {
            collectApplication(*entry, kinds, stop);
        }
        kalvet_logger("");
    }
}

void TraceCollection::collectApplication(const catalogue::Entry& entry,
                                         const TraceChoice::Kinds& kinds,
                                         const std::function<bool()>& stop) {
    const FoundTraces found = traces::findTraces(entry, parts_.system);
    OfApplication(*this, entry, found, kinds, stop).collect();
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

void TraceCollection::tell(const std::string& path, const char* operation, int code,
                           std::string reason) {
    troubles_.push_back({path, operation, code, std::move(reason)});
}

void TraceCollection::clear() {
    doomed_.clear();
    cleanings_.clear();
    skipped_.clear();
    faults_.clear();
    troubles_.clear();
    filesCleaned_ = 0;
    rowsRemoved_ = 0;
}

bool TraceCollection::isEmpty() const {
    return doomed_.empty() && cleanings_.empty() && troubles_.empty();
}

std::vector<std::string> TraceCollection::doomedPaths() const {
    std::vector<std::string> all;
    for (const Doomed& doomed : doomed_) all.push_back(doomed.path);
    return all;
}

std::vector<std::string> TraceCollection::paths() const {
    std::vector<std::string> all = doomedPaths();
    for (const Cleaning& cleaning : cleanings_) all.push_back(cleaning.prepared->path());
    return all;
}

std::vector<std::string> TraceCollection::carryOut(const std::function<bool()>& stopped) {
    RunningApplications::Entries entries;
    const auto add = [&](const catalogue::Entry* entry) {
        if (std::ranges::find(entries, entry) == entries.end()) entries.push_back(entry);
    };
    for (const Doomed& doomed : doomed_) add(doomed.entry);
    for (const Cleaning& cleaning : cleanings_) add(cleaning.entry);
    if (entries.empty()) return {};
    for (const catalogue::Entry* entry : parts_.running.running(entries)) leaveAlone(*entry);

    std::vector<std::string> list = doomedPaths();
    for (Cleaning& cleaning : cleanings_) carryOut(cleaning, stopped, list);
    return list;
}

/// It has started since it was collected from.
void TraceCollection::leaveAlone(const catalogue::Entry& entry) {
    std::erase_if(doomed_, [&](const Doomed& doomed) { return doomed.entry == &entry; });
    std::erase_if(cleanings_, [&](const Cleaning& cleaning) { return cleaning.entry == &entry; });
    if (std::ranges::find(skipped_, entry.name) != skipped_.end()) return;
    kalvet_logger("Skip: " + entry.name + " (running)");
    skipped_.push_back(entry.name);
}

void TraceCollection::carryOut(Cleaning& cleaning, const std::function<bool()>& stopped,
                               std::vector<std::string>& aside) {
    bool isRunning = false;
    const auto stillMay = [&] {
        isRunning = !parts_.running.running({cleaning.entry}).empty();
        return !stopped() && !isRunning;
    };
    if (const auto trouble = cleaning.prepared->commit(stillMay, aside)) {
        if (isRunning) {
            kalvet_logger("Skip: " + pathFromHome(cleaning.prepared->path()) + " (running)");
        } else if (!stopped()) {
            tell(cleaning.prepared->path(), "clean", trouble->error.code, textOf(*trouble));
        }
        return;
    }
    ++filesCleaned_;
    if (!cleaning.countsRows) return;
    const auto& counts = cleaning.prepared->counts();
    rowsRemoved_ = std::accumulate(counts.begin(), counts.end(), rowsRemoved_);
}

void TraceCollection::finish(Outcome& outcome) {
    outcome.filesCleaned = filesCleaned_;
    outcome.rowsRemoved = rowsRemoved_;
    outcome.notCleaned = troubles_.size();
    for (Outcome::Trouble& trouble : troubles_) {
        outcome.note(std::move(trouble.path), std::move(trouble.operation), trouble.code,
                     std::move(trouble.reason));
    }
    clear();
}

}  // namespace dorvanel
