// SPDX-License-Identifier: MIT
#include "run/ApplicationTraces.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <utility>

#include "log/ActivityLog.h"
#include "run/TracePaths.h"
#include "targets/traces/FoundTraces.h"

namespace dorvanel {
namespace {

using cleaning::Cleaned;
using cleaning::Fault;
using cleaning::PreparedFile;
using cleaning::Trouble;
using traces::FoundTraces;
using traces::TraceItem;
using Action = traces::TraceItem::Action;

/// The collecting of one application. Databases and files that several kinds clean are cleaned in
/// one go, and not at all where another kind takes them whole.
class Collecting {
  public:
    Collecting(const TracesRequest& request, const FoundTraces& found, CollectedTraces& collected)
        : request_(request),
          entry_(request.entry),
          found_(found),
          stop_(request.stop),
          collected_(collected) {
        for (const TraceItem& item : found.items) {
            if (std::ranges::find(request.kinds, item.trace->kind) == request.kinds.end()) continue;
            if (!isAllowed(item.path, item)) continue;
            items_.push_back(&item);
            if (item.action == Action::shred) whole_.insert(item.path);
        }
    }

    void collect() {
        for (const traces::Obstacle& obstacle : found_.obstacles) {
            skip(obstacle.path, Fault::unreadable, obstacle.reason);
            tell(obstacle.path, "look at", 0, obstacle.reason);
        }
        findLeftovers();
        prepareDatabases();
        for (const TraceItem* item : items_) {
            if (stop_()) return;
            if (!done_.insert({item->action == Action::shred, item->path}).second) continue;
            if (item->action == Action::shred) {
                shred(item->path, *item);
            } else if (!whole_.contains(item->path)) {
                for (const std::string& leftover : leftovers_[item->path]) {
                    if (isAllowed(leftover, *item)) shred(leftover, *item);
                }
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

    /// Whether the limit leaves it to be taken. Rows and keys that have come since are not counted:
    /// nobody has looked for them.
    [[nodiscard]] bool isAllowed(const std::string& path, const TraceItem& item) {
        const RunLimit* limit = request_.limit;
        if (limit == nullptr || limit->allows(path, item.trace->kind)) return true;
        if (item.action != Action::shred || limit->isKnown(path)) return false;
        kalvet_logger("Skip: " + pathFromHome(path) + " (not in the preview)");
        ++collected_.leftByLimit;
        return false;
    }

    [[nodiscard]] bool onlyLooks() const { return request_.purpose == CollectingPurpose::looking; }

    void skip(const std::string& path, Fault fault, const std::string& reason) {
        kalvet_logger("Skip: " + pathFromHome(path) + " (" + wordFor(fault) + ")");
        collected_.skips.push_back(
            {.path = path, .application = entry_.id, .reason = reasonOf(fault), .detail = reason});
    }

    void tell(const std::string& path, const char* operation, int code, std::string reason) {
        collected_.troubles.push_back({path, operation, code, std::move(reason), {}});
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
        RunItem& added = collected_.items.emplace_back(
            RunItem{.item = {.path = path, .action = action}, .place = path});
        added.item.application = entry_.id;
        added.item.trace = kind;
        added.item.profile = item.profile;
        return added.item;
    }

    void shred(const std::string& path, const TraceItem& item) {
        kalvet_logger("Shred: " + pathFromHome(path));
        collected_.doomed.push_back({path, &entry_});
        add(path, PlanItem::Action::shred, item, item.trace->kind);
        collected_.items.back().handedOver = {path};
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
            auto prepared = request_.cleaner.prepareDatabase(request, stop_);
            if (!prepared) return prepared.trouble();
            Counts counts = prepared.value()->counts();
            return Taking{std::move(counts), std::move(prepared.value())};
        }
        for (const auto& [path, taking] : databases_) {
            if (taking) request.before.push_back(requestFor(path));
        }
        auto counts = request_.cleaner.countRows(request, stop_);
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
            auto counts = request_.cleaner.countKeys(path, keysFor(path));
            if (!counts) return counts.trouble();
            return Taking{std::move(counts.value()), nullptr};
        }
        return taken(request_.cleaner.prepareJson(path, keysFor(path)));
    }

    Cleaned<Taking> takeAll(const std::string& path) {
        if (!onlyLooks()) return taken(request_.cleaner.prepareEmpty(path));
        auto size = request_.cleaner.sizeToEmpty(path);
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
            tell(item.path, "clean", trouble.error.code, textOf(trouble));
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
        const std::size_t first = collected_.items.size();
        addItems(item, counts);
        if (onlyLooks()) return;
        collected_.cleanings.push_back({std::move(taking.value().prepared), &entry_,
                                        item.action == Action::clean, first,
                                        collected_.items.size() - first});
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
        const std::size_t before = collected_.items.size();
        for (std::size_t i = 0; i < parts.size() && i < counts.size(); ++i) {
            const bool isLast = i + 1 == parts.size();
            if (counts[i] == 0 && !(isLast && collected_.items.size() == before)) continue;
            PlanItem& added = add(item.path, PlanItem::Action::clean, item, parts[i]->trace->kind);
            (item.action == Action::clean ? added.rows : added.keys) = counts[i];
        }
    }

    const TracesRequest& request_;
    const catalogue::Entry& entry_;
    const FoundTraces& found_;
    const std::function<bool()>& stop_;
    CollectedTraces& collected_;
    std::vector<const TraceItem*> items_;  ///< of the chosen kinds
    std::set<std::string> whole_;          ///< paths that are shredded
    std::set<std::pair<bool, std::string>> done_;
    std::map<std::string, std::vector<std::string>> leftovers_;  ///< by what they lie beside
    std::map<std::string, Cleaned<Taking>> databases_;
};

}  // namespace

void collectTraces(const TracesRequest& request, platform::SystemCalls& system,
                   CollectedTraces& collected) {
    const FoundTraces found = traces::findTraces(request.entry, system);
    Collecting(request, found, collected).collect();
}

}  // namespace dorvanel
