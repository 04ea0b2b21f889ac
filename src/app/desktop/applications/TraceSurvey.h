// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "app/desktop/MainThreadWake.h"
#include "app/desktop/applications/SurveyServices.h"
#include "run/TraceSizes.h"
#include "targets/cleaning/Cleaning.h"

namespace dorvanel::desktop {

/// Whether an application runs. What is unknown counts as running.
enum class Runs { no, yes, unknown };

/// What has been found out since the news before. Entries belong to the latest catalogue.
struct SurveyNews {
    using Catalogue = std::shared_ptr<const catalogue::Catalogue>;

    /// A count has begun: the descriptions that it goes by; null where it had begun before.
    Catalogue catalogue;
    std::set<std::string> found;       ///< the IDs of those that are there; with `catalogue`
    std::map<std::string, Runs> runs;  ///< by ID, of those looked at
    std::vector<std::pair<std::string, TraceSizes>> sizes;  ///< by ID, in the order counted
    bool isOver = false;                                    ///< the count has come to its end
};

/// Looks in the background at what the described applications have left in this home, one after
/// another, and at which of them run. Touches nothing. Called on the main thread only.
class TraceSurvey final {
  public:
    /// `tell` is called on the main thread; what is found out in quick succession is told at once.
    TraceSurvey(SurveyServices services, std::function<void(SurveyNews)> tell);
    /// Ends the thread, at the next file that it looks at.
    ~TraceSurvey();
    TraceSurvey(const TraceSurvey&) = delete;
    TraceSurvey& operator=(const TraceSurvey&) = delete;

    /// Reads the descriptions and counts all that is there; one that is under way begins again.
    void count();
    /// Looks which applications run, in between two that are counted too.
    void lookAtProcesses();
    /// Drops what was asked for and not told yet. Files and databases have been let go of when this
    /// returns, unless a disk holds the thread up for longer than a moment.
    void stop();

  private:
    struct Look;

    void work();
    bool takeRequest(bool& request);
    void countAll(Look& look);
    void tellProcesses(Look& look);
    [[nodiscard]] Runs runsByLocks(const catalogue::Entry& entry) const;
    void publish(const std::function<void(SurveyNews&)>& add);
    void hand();

    SurveyServices services_;
    std::function<void(SurveyNews)> tell_;
    cleaning::Cleaner cleaner_;
    MainThreadWake wake_;

    std::mutex mutex_;
    std::condition_variable asked_;
    std::condition_variable idle_;
    // Guarded by the mutex, down to `news_`.
    bool countAsked_ = false;
    bool processesAsked_ = false;
    bool isEnding_ = false;
    bool isWorking_ = false;
    SurveyNews news_;  ///< not handed over yet

    std::atomic<bool> stop_ = false;  ///< changed under the mutex; read without
    std::thread thread_;
};

}  // namespace dorvanel::desktop
