// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/ProgramEnds.h"
#include "ui/RunLoop.h"
#include "watch/RunningApplications.h"

namespace dorvanel {

/// What the watch needs of its owner.
class ApplicationWatchOwner {
  public:
    virtual ~ApplicationWatchOwner() = default;
    /// The applications whose ends matter, as of now. Read before the main loop comes round again;
    /// the descriptions need to live no longer.
    virtual RunningApplications::Entries chosenApplications() = 0;
    /// These, at least one, have run and do so no longer; each end is told once. The watch may be
    /// stopped or destroyed in here.
    virtual void applicationHasQuit(const std::vector<std::string>& ids) = 0;
};

/// What the watch stands on; all outlive it.
struct ApplicationWatchServices {
    RunningApplications& applications;
    platform::ProgramEnds& ends;
    ui::RunLoop& runLoop;
};

/// Notices within moments that the last process of a chosen application has ended. Looks every two
/// seconds for processes that are new, and is told when those that it knows end. An application
/// that holds a lock then has not quit; one of which there was never more than a lock has not run.
/// Main thread only.
class ApplicationWatch {
  public:
    static constexpr std::chrono::milliseconds kDiscoveryInterval = std::chrono::seconds(2);

    /// Stopped.
    ApplicationWatch(ApplicationWatchServices services, ApplicationWatchOwner& owner);
    ~ApplicationWatch();
    ApplicationWatch(const ApplicationWatch&) = delete;
    ApplicationWatch& operator=(const ApplicationWatch&) = delete;

    /// Takes a first look at once; what runs now counts when it ends. Again does nothing.
    void start();
    /// Forgets what ran. Again does nothing.
    void stop();
    [[nodiscard]] bool isWatching() const { return timer_ != nullptr; }

  private:
    using Followed = std::set<platform::ProcessIdentity>;
    using Memory = std::map<std::string, Followed>;

    void handleEnds(const std::vector<platform::ProcessIdentity>& ended);
    void look();
    void forgetAllBut(const RunningApplications::Entries& chosen);
    Followed follow(const std::vector<platform::RunningProgram>& programs);
    void remember(Memory applications);

    ApplicationWatchServices services_;
    ApplicationWatchOwner& owner_;
    std::shared_ptr<ui::Timer> timer_;  ///< null: stopped
    /// The applications that ran at the latest look that could tell, and those of their processes
    /// that have not ended since and are followed.
    Memory ran_;
};

}  // namespace dorvanel
