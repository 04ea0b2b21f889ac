// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "apps/catalogue/Catalogue.h"
#include "platform/CleaningCalls.h"
#include "platform/LockProbe.h"
#include "platform/ProgramEnds.h"
#include "platform/ProgramListing.h"
#include "platform/SystemCalls.h"
#include "run/TraceCollection.h"
#include "ui/RunLoop.h"
#include "watch/ApplicationWatch.h"

namespace dorvanel {

class BrowserWatch;
class ShreddingRun;
struct ControllerParts;

/// What the applications of today are found, watched and cleaned with. What a run and the watch
/// each need is there twice: the worker of the one is at work while the other looks.
struct TodayServices {
    platform::CleaningCalls& cleaningCalls;
    platform::ProgramListing& runsListing;
    platform::ProgramListing& watchsListing;
    platform::SystemCalls& watchsSystem;
    platform::LockProbe& locks;
    platform::ProgramEnds& ends;
    std::function<catalogue::Folders()> folders;
};

/// Owns the machine's own services.
class MachinesTodayServices {
  public:
    explicit MachinesTodayServices(ui::RunLoop& runLoop)
        : ends_(platform::makeProgramEnds(runLoop)) {}
    TodayServices& services() { return services_; }

  private:
    std::unique_ptr<platform::CleaningCalls> cleaningCalls_ = platform::makeCleaningCalls();
    std::unique_ptr<platform::ProgramListing> runsListing_ = platform::makeProgramListing();
    std::unique_ptr<platform::ProgramListing> watchsListing_ = platform::makeProgramListing();
    std::unique_ptr<platform::SystemCalls> watchsSystem_ = platform::makeSystemCalls();
    std::unique_ptr<platform::LockProbe> locks_ = platform::makeLockProbe();
    std::unique_ptr<platform::ProgramEnds> ends_;
    TodayServices services_{*cleaningCalls_,
                            *runsListing_,
                            *watchsListing_,
                            *watchsSystem_,
                            *locks_,
                            *ends_,
                            catalogue::catalogueFolders};
};

/// The applications of today as the controller has them: what a run takes of them, and the watch
/// that has a run started when a chosen one has quit, as long as Browser Watch is on. Main thread,
/// but for what TraceCollection says otherwise.
class ApplicationsOfToday final : private ApplicationWatchOwner {
  public:
    /// Starts a run for the applications of these names, which have quit.
    using Shred = std::function<void(std::vector<std::string> names)>;

    /// What `parts` refers to, and `browserWatch`, outlive this.
    ApplicationsOfToday(const ControllerParts& parts, BrowserWatch& browserWatch, Shred shred);
    ~ApplicationsOfToday() override;
    ApplicationsOfToday(const ApplicationsOfToday&) = delete;
    ApplicationsOfToday& operator=(const ApplicationsOfToday&) = delete;

    TraceCollection& traces() { return traces_; }

    /// Starts the watch; `run` says whether something is at work.
    void watch(const ShreddingRun& run);
    void stopWatching();

  private:
    RunningApplications::Entries chosenApplications() override;
    void applicationHasQuit(const std::vector<std::string>& ids) override;
    void shredWhenIdle();

    TodayServices& services_;
    platform::FileManager& files_;
    platform::UserDefaults& defaults_;
    ui::RunLoop& runLoop_;
    BrowserWatch& browserWatch_;
    Shred shred_;
    RunningApplications runsView_;
    RunningApplications watchsView_;
    TraceCollection traces_;
    ApplicationWatch watch_;
    const ShreddingRun* run_ = nullptr;
    catalogue::Catalogue catalogue_;  ///< of the watch
    std::map<std::string, TraceChoice::Kinds> chosen_;
    std::vector<std::string> haveQuit_;   ///< names; a run is to be started for them
    std::shared_ptr<ui::Timer> waiting_;  ///< until a run that is at work has ended
};

}  // namespace dorvanel
