// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "engine/Outcome.h"
#include "engine/Plan.h"
#include "run/RunItem.h"
#include "run/RunLimit.h"
#include "run/TraceCollection.h"
#include "targets/Collectors.h"
#include "watch/BrowserWatch.h"

namespace dorvanel {

/// What a run takes: of the applications that do not run, one after another, what the preferences
/// select, then what is chosen of the applications of today. The same steps look at what a run
/// would take, where the collectors are such that only look. Main thread.
class RunCollection {
  public:
    /// All of them outlive the collection.
    struct Parts {
        BrowserWatch& browserWatch;
        Collectors& collectors;
        std::vector<std::string>& mPathArray;  ///< the shred list that the collectors fill
        TraceCollection& traces;
    };
    RunCollection(Parts parts, TraceCollection::Purpose purpose)
        : parts_(parts), purpose_(purpose) {}

    /// Fills the shred list, after a pass of Browser Watch. False where `stop`, which is asked now
    /// and then, ended it.
    /// Beyond `limit` nothing is taken; null: there is none.
    bool collect(bool withQuicktime, const std::function<bool()>& stop,
                 const RunLimit* limit = nullptr);
    /// Forgets what was collected but for the shred list; files that were prepared go.
    void clear();

    /// Applications that were passed over because they run, by the names that people read.
    [[nodiscard]] std::vector<std::string> skipped() const;
    /// Used-up journals of databases that collectors changed in place: they go with the list and
    /// have no lines in the log. Where nothing comes of the run, the next one finds them again.
    std::vector<std::string> takeUsedJournals();

    /// The name that people read of an application, given by its name in the items, if it runs or
    /// may; else "". After a pass of Browser Watch.
    [[nodiscard]] std::string nameIfRunning(const std::string& application) const;

    /// What is taken, item by item, in the order of the log.
    [[nodiscard]] std::vector<RunItem> items();
    [[nodiscard]] std::vector<PlanSkip> skips() const;
    /// How many places there are that the limit knew nothing of, and which were left.
    [[nodiscard]] std::uint64_t leftByLimit() const { return leftByLimit_; }

  private:
    bool collectAll(bool withQuicktime, const std::function<bool()>& stop, const RunLimit* limit);
    /// Items of the shred list from number `from` on are this application's.
    void noteItems(std::size_t from, std::string_view application);

    Parts parts_;
    TraceCollection::Purpose purpose_;
    std::vector<RunItem> described_;
    std::vector<const SupportedApplication*> running_;
    std::vector<std::string> usedJournals_;
    std::uint64_t leftByLimit_ = 0;
};

}  // namespace dorvanel
