// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "apps/TraceChoice.h"
#include "apps/catalogue/Catalogue.h"
#include "engine/Outcome.h"
#include "engine/Plan.h"
#include "platform/CleaningCalls.h"
#include "platform/Clock.h"
#include "platform/SystemCalls.h"
#include "run/ApplicationTraces.h"
#include "run/ProcessControl.h"
#include "run/RunItem.h"
#include "targets/cleaning/Cleaning.h"
#include "watch/RunningApplications.h"

namespace dorvanel {

/// What a run takes of the applications of today: what a person has chosen of them. Found and
/// prepared on the main thread, then carried out by the worker; between the two nothing is touched
/// but new files beside the old ones, which go again when nothing comes of the run.
class TraceCollection final : public OtherApplications {
  public:
    /// All of them outlive the collection. `folders`: where the descriptions lie.
    struct Parts {
        platform::SystemCalls& system;
        platform::CleaningCalls& cleaningCalls;
        platform::Clock& clock;
        platform::FileManager& files;
        platform::UserDefaults& defaults;
        RunningApplications& running;
        std::function<catalogue::Folders()> folders;
    };

    explicit TraceCollection(const Parts& parts);
    ~TraceCollection() override;
    TraceCollection(const TraceCollection&) = delete;
    TraceCollection& operator=(const TraceCollection&) = delete;

    /// What is chosen, for the confirmation: "Firefox (cache, history)"; "" for nothing.
    [[nodiscard]] std::string summary();

    // The chosen applications, before the session is ended.
    std::int16_t askToQuit() override;
    std::int16_t stillRunning() override;

    using Purpose = CollectingPurpose;

    /// Finds what is chosen, prepares what is to be cleaned, and writes the lines of it to the
    /// Activity Log. Where nothing is chosen this does nothing at all. `stop` is asked now and
    /// then. Main thread.
    /// Beyond `limit` nothing is taken; null: there is none.
    void collect(const std::function<bool()>& stop, Purpose purpose = Purpose::shredding,
                 const RunLimit* limit = nullptr);
    /// Forgets what was collected; files that were prepared go.
    void clear();

    /// Whether there is something to do or to tell.
    [[nodiscard]] bool isEmpty() const;
    /// What will go, for who wants to know beforehand.
    [[nodiscard]] std::vector<std::string> paths() const;
    /// The same in the order of the log. `carryOut` says of each what the engine is given for it.
    [[nodiscard]] std::vector<RunItem>& items() { return collected_.items; }
    /// What is passed over, and why.
    [[nodiscard]] const std::vector<PlanSkip>& skips() const { return collected_.skips; }
    /// How many places there are that the limit knew nothing of, and which were left.
    [[nodiscard]] std::uint64_t leftByLimit() const { return collected_.leftByLimit; }
    /// Applications that were left alone because they run, by name.
    [[nodiscard]] const std::vector<std::string>& skipped() const { return skipped_; }
    /// The name of a described application if it runs, or may; else "". Main thread.
    [[nodiscard]] std::string nameIfRunning(const std::string& id) const;
    /// Faults of descriptions, each a line for people.
    [[nodiscard]] const std::vector<std::string>& faults() const { return faults_; }

    /// Puts the prepared files in the place of the old ones, unless `stopped` says that somebody
    /// asked for an end. Returns what is to be shredded, links in it not followed. An application
    /// that has started meanwhile is left alone, like one that ran before. The worker.
    std::vector<std::string> carryOut(const std::function<bool()>& stopped);
    /// Adds what was cleaned, and what could not be, to the outcome; databases are given free and
    /// everything is forgotten. The worker, after the shredding.
    void finish(Outcome& outcome);

  private:
    std::map<std::string, TraceChoice::Kinds> load();
    [[nodiscard]] RunningApplications::Entries described(
        const std::map<std::string, TraceChoice::Kinds>& chosen) const;
    [[nodiscard]] std::vector<std::string> doomedPaths() const;
    void leaveAlone(const catalogue::Entry& entry);
    void carryOut(CollectedTraces::Cleaning& cleaning, const std::function<bool()>& stopped,
                  std::vector<std::string>& aside);

    Parts parts_;
    catalogue::Catalogue catalogue_;
    std::unique_ptr<cleaning::Cleaner> cleaner_;
    CollectedTraces collected_;
    std::vector<std::string> skipped_;
    std::vector<std::string> faults_;
    std::uint64_t filesCleaned_ = 0;
    std::uint64_t rowsRemoved_ = 0;
};

}  // namespace dorvanel
