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
using cleaning::Fault;
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
            skip(obstacle.path, Fault::unreadable, obstacle.reason);
            owner_.tell(obstacle.path, "look at", 0, obstacle.reason);
        }
        findLeftovers();
        prepareDatabases();
        for (const TraceItem* item : items_) {
            if (stop_()) return;
            if (!done_.insert({item->action == Action::shred, item->path}).second) continue;
            if (item->action == Action::shred) {
                shred(item->path, *item);
            } else if (!whole_.contains(item->path)) {
                for (const std::string& leftover : leftovers_[item->path]) shred(leftover, *item);
                take(*item);
            }
        }
    }

  private:
    using Counts = std::vector<std::uint64_t>;

    /// What is taken of one file: a new one that waits, where it was prepared; nothing where there
    /// is nothing to take.
    struct Taking {
        Counts counts;
        PreparedFile prepared;
    };

    [[nodiscard]] bool onlyLooks() const { return owner_.purpose_ == Purpose::looking; }

    void skip(const std::string& path, Fault fault, const std::string& reason) {
        kalvet_logger("Skip: " + pathFromHome(path) + " (" + wordFor(fault) + ")");
        owner_.skips_.push_back(
            {.path = path, .application = entry_.id, .reason = reasonOf(fault), .detail = reason});
    }

    static PlanSkip::Reason reasonOf(Fault fault) {
        switch (fault) {
            case Fault::locked:
                return PlanSkip::Reason::locked;
            case Fault::corrupt:
                return PlanSkip::Reason::corrupt;
            case Fault::unreadable:
            case Fault::failed:
                break;
        }
        return PlanSkip::Reason::unreadable;
    }

    PlanItem& add(const std::string& path, PlanItem::Action action, const TraceItem& item,
                  const std::string& kind) {
        RunItem& added = owner_.items_.emplace_back(
            RunItem{.item = {.path = path, .action = action}, .place = path});
        added.item.application = entry_.id;
        added.item.trace = kind;
        added.item.profile = item.profile;
        return added.item;
    }

    void shred(const std::string& path, const TraceItem& item) {
        kalvet_logger("Shred: " + pathFromHome(path));
        owner_.doomed_.push_back({path, &entry_});
        add(path, PlanItem::Action::shred, item, item.trace->kind);
        owner_.items_.back().handedOver = {path};
    }

    /// What a run that was killed left beside a file; before anything new is made there.
    void findLeftovers() {
        for (const TraceItem* item : items_) {
            if (item->action == Action::shred || whole_.contains(item->path)) continue;
            leftovers_[item->path] = onlyLooks() ? cleaning::Cleaner::seenLeftovers(item->path)
                                                 : cleaning::Cleaner::leftovers(item->path);
        }
    }

    /// Those that others are attached to come first: the others are cleaned by what is left there.
    void prepareDatabases() {
        for (const bool attaches : {false, true}) {
            for (const TraceItem* item : items_) {
                if (stop_()) return;
                if (item->action != Action::clean || item->attach.empty() == attaches) continue;
                if (whole_.contains(item->path) || databases_.contains(item->path)) continue;
                databases_.emplace(item->path, takeRows(requestFor(item->path)));
            }
        }
    }

    Cleaned<Taking> takeRows(cleaning::DatabaseRequest request) {
        if (!onlyLooks()) {
            auto prepared = owner_.cleaner_->prepareDatabase(request, stop_);
            if (!prepared) return prepared.trouble();
            Counts counts = prepared.value()->counts();
            return Taking{std::move(counts), std::move(prepared.value())};
        }
        for (const auto& [path, taking] : databases_) {
            if (taking) request.before.push_back(requestFor(path));
        }
        auto counts = owner_.cleaner_->countRows(request, stop_);
        if (!counts) return counts.trouble();
        return Taking{std::move(counts.value()), nullptr};
    }

    [[nodiscard]] cleaning::DatabaseRequest requestFor(const std::string& path) const {
        cleaning::DatabaseRequest request{.path = path, .attach = {}, .steps = {}};
        for (const TraceItem* item : items_) {
            if (item->action != Action::clean || item->path != path) continue;
            request.attach.insert(item->attach.begin(), item->attach.end());
            request.steps.push_back({item->trace->kind, item->database->run, item->database->keep});
        }
        return request;
    }

    [[nodiscard]] std::vector<cleaning::JsonStep> keysFor(const std::string& path) const {
        std::vector<cleaning::JsonStep> steps;
        for (const TraceItem* item : items_) {
            if (item->action != Action::json || item->path != path) continue;
            steps.push_back({item->trace->kind, item->json->remove});
        }
        return steps;
    }

    Cleaned<Taking> takeKeys(const std::string& path) {
        if (onlyLooks()) {
            auto counts = owner_.cleaner_->countKeys(path, keysFor(path));
            if (!counts) return counts.trouble();
            return Taking{std::move(counts.value()), nullptr};
        }
        return taken(owner_.cleaner_->prepareJson(path, keysFor(path)));
    }

    Cleaned<Taking> takeAll(const std::string& path) {
        if (!onlyLooks()) return taken(owner_.cleaner_->prepareEmpty(path));
        auto size = owner_.cleaner_->sizeToEmpty(path);
        if (!size) return size.trouble();
        return Taking{{size.value()}, nullptr};
    }

    static Cleaned<Taking> taken(Cleaned<PreparedFile> prepared) {
        if (!prepared) return prepared.trouble();
        if (prepared.value() == nullptr) return Taking{};
        Counts counts = prepared.value()->counts();
        return Taking{std::move(counts), std::move(prepared.value())};
    }

    void take(const TraceItem& item) {
        if (item.action == Action::clean) {
            const auto found = databases_.find(item.path);
            if (found != databases_.end()) take(item, found->second);
        } else {
            auto taking = item.action == Action::json ? takeKeys(item.path) : takeAll(item.path);
            take(item, taking);
        }
    }

    void take(const TraceItem& item, Cleaned<Taking>& taking) {
        if (!taking) {
            const Trouble& trouble = taking.trouble();
            skip(item.path, trouble.fault, textOf(trouble));
            owner_.tell(item.path, "clean", trouble.error.code, textOf(trouble));
            return;
        }
        const Counts& counts = taking.value().counts;
        const std::uint64_t count = std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
        const bool isNothing = onlyLooks() ? count == 0 : taking.value().prepared == nullptr;
        // A database without such rows is written anew all the same: free pages may hold some.
        if (isNothing && item.action != Action::clean) return;
        const char* unit = item.action == Action::clean ? "row" : "key";
        kalvet_logger(
            item.action == Action::empty
                ? "Shred: " + pathFromHome(item.path)
                : fmt::format("Clean: {} ({} {}s)", pathFromHome(item.path), count, unit));
        const std::size_t first = owner_.items_.size();
        addItems(item, counts);
        if (onlyLooks()) return;
        owner_.cleanings_.push_back({std::move(taking.value().prepared), &entry_,
                                     item.action == Action::clean, first,
                                     owner_.items_.size() - first});
    }

    /// One for each kind that takes something, one where none does.
    void addItems(const TraceItem& item, const Counts& counts) {
        if (item.action == Action::empty) {
            add(item.path, PlanItem::Action::shred, item, item.trace->kind);
            return;
        }
        std::vector<const TraceItem*> parts;  // as the counts are
        for (const TraceItem* part : items_) {
            if (part->action == item.action && part->path == item.path) parts.push_back(part);
        }
        const std::size_t before = owner_.items_.size();
        for (std::size_t i = 0; i < parts.size() && i < counts.size(); ++i) {
            const bool isLast = i + 1 == parts.size();
            if (counts[i] == 0 && !(isLast && owner_.items_.size() == before)) continue;
            PlanItem& added = add(item.path, PlanItem::Action::clean, item, parts[i]->trace->kind);
            (item.action == Action::clean ? added.rows : added.keys) = counts[i];
        }
    }

    TraceCollection& owner_;
    const catalogue::Entry& entry_;
    const FoundTraces& found_;
    const std::function<bool()>& stop_;
    std::vector<const TraceItem*> items_;  ///< of the chosen kinds
    std::set<std::string> whole_;          ///< paths that are shredded
    std::set<std::pair<bool, std::string>> done_;
    std::map<std::string, std::vector<std::string>> leftovers_;  ///< by what they lie beside
    std::map<std::string, Cleaned<Taking>> databases_;
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

void TraceCollection::collect(const std::function<bool()>& stop, Purpose purpose) {
    clear();
    purpose_ = purpose;
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
            tell(id, "find its traces", 0, reason);
            skips_.push_back({.path = {}, .application = id, .detail = reason});
        } else if (std::ranges::find(running, entry) != running.end()) {
            kalvet_logger("Running - quit it to have its traces shredded.");
            skipped_.push_back(entry->name);
            skips_.push_back({.application = id, .reason = PlanSkip::Reason::running});
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
    items_.clear();
    skips_.clear();
    skipped_.clear();
    faults_.clear();
    troubles_.clear();
    filesCleaned_ = 0;
    rowsRemoved_ = 0;
}

bool TraceCollection::isEmpty() const {
    return items_.empty() && troubles_.empty();
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
    for (RunItem& item : items_) {
        if (item.item.application == entry.id) item.isLeftAlone = true;
    }
    skips_.push_back({.application = entry.id, .reason = PlanSkip::Reason::running});
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
    std::vector<std::string>& handedOver = items_[cleaning.item].handedOver;
    const auto trouble = cleaning.prepared->commit(stillMay, handedOver);
    aside.insert(aside.end(), handedOver.begin(), handedOver.end());
    for (std::size_t i = 0; i < cleaning.items; ++i) {
        RunItem& item = items_[cleaning.item + i];
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
        skips_.push_back({.path = cleaning.prepared->path(),
                          .application = cleaning.entry->id,
                          .reason = PlanSkip::Reason::running});
    } else if (trouble && !stopped()) {
        tell(cleaning.prepared->path(), "clean", trouble->error.code, textOf(*trouble));
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
    outcome.notCleaned = troubles_.size();
    for (Outcome::Trouble& trouble : troubles_) {
        outcome.note(std::move(trouble.path), std::move(trouble.operation), trouble.code,
                     std::move(trouble.reason));
    }
    clear();
}

}  // namespace dorvanel
