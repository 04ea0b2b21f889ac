// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/FileAccess.h"
#include "platform/ProcessManager.h"
#include "platform/QuitWait.h"
#include "platform/SystemEvents.h"
#include "platform/Worker.h"
#include "prefs/PreferenceReader.h"
#include "run/Activity.h"
#include "run/EndingCountdown.h"
#include "run/MentionsOfItems.h"
#include "run/RunCollection.h"
#include "run/RunReport.h"
#include "run/TraceCollection.h"
#include "targets/Collectors.h"
#include "ui/AlertPanel.h"
#include "ui/Application.h"
#include "ui/Window.h"
#include "watch/BrowserWatch.h"

namespace dorvanel {

class TrashShredding;

/// All shredding goes through here: a run over what the preferences select, from its guards to its
/// end, and files that somebody hands over. One at a time, on one worker thread. The requests are
/// for the main thread.
class ShreddingRun {
  public:
    /// What a run works with; all of it must outlive the run.
    struct Parts {
        FileAccess& fileAccessInstance;
        PreferenceReader& preferencesInstance;
        BrowserWatch& browserWatch;
        Collectors& collectors;
        std::vector<std::string>& mPathArray;  ///< the shred list that the collectors fill
        TraceCollection& traces;               ///< of the applications of today
        MentionsOfItems& mentions;             ///< of what is handed over; the worker's
        platform::ProcessManager& processes;
        platform::SystemEvents& events;
        platform::QuitWait& quitWait;
        platform::Worker& worker;
        ui::AlertPanel& alertPanel;
        ui::Window& myWindow;
        ui::Application& application;
        RunObserver& observer;
        EndingCountdown* countdown = nullptr;  ///< null: the session is ended at once
    };

    explicit ShreddingRun(Parts parts)
        : parts_(parts),
          collection_({.browserWatch = parts.browserWatch,
                       .collectors = parts.collectors,
                       .mPathArray = parts.mPathArray,
                       .traces = parts.traces},
                      TraceCollection::Purpose::shredding),
          state_([this](Activity now) { parts_.observer.activityChanged(now); }) {}
    /// Waits for the worker.
    ~ShreddingRun() { waitForWorker(); }
    ShreddingRun(const ShreddingRun&) = delete;
    ShreddingRun& operator=(const ShreddingRun&) = delete;

    /// The program has launched: the flags are as at the beginning. A quit request that has come
    /// already stays.
    void applicationLaunches();

    /// Says who asks for the next request; where nobody says, a person does.
    void nextIsStartedBy(StartedBy who) { next_ = std::move(who); }

    /// A run that ends as `mShutdownStatus` says now. Returns once the worker has been started, or
    /// when there is to be none; a call that comes while another is in an alert does nothing.
    void shred();
    void shredAndNothing();
    void shredAndLogout();
    void shredAndShutdown();
    void shredAndRestart();
    /// A run that nothing follows and that takes at most what the plan holds: somebody has seen it
    /// and agreed, and is not asked again. What has come since is left for the next run.
    void shredPlanned(const Plan& shown);

    /// Shreds what somebody hands over, as it was when it was checked: no question, no collectors.
    /// False, which the observer has been told, when it is refused. The end comes by the observer.
    bool shredFiles(std::vector<HeldItem> items);
    /// As `shredFiles`, for the items of a launch: their end closes the log and may hide the
    /// application, as a run's does.
    bool shredLaunchItems(std::vector<HeldItem> items);

    /// Shreds what was found in the trash, and nothing that has come since; as `shredFiles`. The
    /// worker's while it works.
    bool shredTrash(std::shared_ptr<TrashShredding> trash);
    /// Ends the shredding at work after its block at hand; nothing follows it. Else nothing. Main
    /// thread.
    void stop();
    /// Gives up a run that waits for applications or collects, without quitting. Else nothing. Main
    /// thread, also while `shred` is on it.
    void cancel();
    /// Finishes what the last request was stopped before, as long as no other has begun: what is
    /// left of its items, and the mentions of all of them; no logout, shutdown or restart. What
    /// applications that run now use is left alone. False when there is nothing to go on with, or
    /// when it is refused, which the observer has been told.
    bool goOn();

    /// The program is asked to quit: see ActivityState::giveUp. Ends a wait for applications too;
    /// an alert that is open is its owner's to end. Any thread.
    void giveUp();
    /// The program is asked to quit once the worker has ended, which then answers the request.
    /// False when no worker works and it may quit at once.
    bool putOffQuit();

    /// Returns when no worker works any more.
    void waitForWorker() { parts_.worker.wait(); }

    /// Any thread.
    [[nodiscard]] Activity activity() const { return state_.now(); }
    [[nodiscard]] bool isBusy() const { return activity() != Activity::idle; }
    [[nodiscard]] bool isQuitting() const { return state_.isQuitting(); }

    /// What follows a run.
    enum ShutdownStatus : std::int16_t { nothing, logout, shutdown, restart };

    /// Reports get the plan of what was shredded, measured by `measure` on the worker before
    /// anything is touched. Before the first request.
    using Measure = std::function<Plan(const std::vector<RunItem>& items)>;
    void keepPlans(Measure measure) { measure_ = std::move(measure); }
    /// Called on the worker once the shredding of a run is over and was not stopped, before the
    /// session is ended, if it is. Before the first request.
    void onceShredded(std::function<void()> then) { onceShredded_ = std::move(then); }

    // The flags, for who wants to know; they follow what goes on and do not steer it. Any thread.

    /// Workers started and not yet finished.
    [[nodiscard]] std::int16_t threadCount() const { return mThreadCount; }
    [[nodiscard]] bool appNeedsToTerminate() const { return mAppNeedsToTerminate == 1; }
    /// Whether `shred` is on the main thread.
    [[nodiscard]] bool awaitingConfirmation() const { return mAwaitingConfirmation == 1; }
    [[nodiscard]] std::int16_t shutdownStatus() const { return mShutdownStatus; }
    /// Whether the next run takes the QuickTime cache too. Main thread.
    [[nodiscard]] bool logoutShutdownRestart() const { return mLogoutShutdownRestart == 1; }

  private:
    /// What the worker is given to do.
    struct Work {
        std::int16_t ending = nothing;
        /// A run, or the items of a launch: its end closes the log and may hide the application.
        bool closesLog = false;
        bool handedOver = false;  ///< the list is `handedOver_`, else the collectors'
        bool goesOn = false;      ///< with what is left of an earlier one
        std::shared_ptr<TrashShredding> trash{};  ///< what there is to do instead; null: nothing
        StartedBy startedBy{};
    };

    /// What a request that was stopped has left, for the next.
    struct Left {
        std::vector<HeldItem> items;
        /// By path, whose an item is that was collected and not taken from its place.
        std::map<std::string, std::string> owners;
        std::vector<HeldItem> handedOver;  ///< all of them, to find their mentions by
        std::uint64_t count = 0;           ///< of all items
        bool closesLog = false;
    };

    void shredWithin(const RunLimit* limit);
    void lookAtProcessesUnwatched();
    void startLog();
    bool refused(bool begun, const StartedBy& who);
    bool confirmed(bool isAgreed);
    bool applicationsQuit();
    void logEnding();
    bool askOf(const std::string& title, const std::string& message, const std::string& no,
               const std::string& yes, const char* lineOfNo);
    bool goesOn(Activity step);
    void endGivenUp();
    static Ending endingOf(std::int16_t ending);
    bool collect(const RunLimit* limit);
    [[nodiscard]] bool hasNothingToDo() const;
    void shredList(const Work& work, RunReport& report);
    void shredCollected(RunReport& report);
    void shredHandedOver(const Work& work, RunReport& report);
    static void shredFoundTrash(TrashShredding& trash, FileAccess& engine, RunReport& report);
    bool mayStartHandedOver(const StartedBy& who);
    Refusal reasonToRefuse() const;
    [[nodiscard]] std::vector<std::string> pathsOf(const Work& work) const;
    bool startWorker(const Work& work);
    void HandleThread(const Work& work);
    void keepLeft(RunReport& report);
    bool mayEnd(const Work& work);
    void sendSystemEvent(std::int16_t ending);
    void addSkipped(RunReport& report) const;
    void end(RunResult result);
    void refuse(Refusal refusal, bool handedOver, const StartedBy& who);

    Parts parts_;
    RunCollection collection_;
    ActivityState state_;
    Measure measure_;
    std::function<void()> onceShredded_;
    std::atomic<std::int16_t> mThreadCount = 0;
    std::atomic<std::int8_t> mAppNeedsToTerminate = 0;
    std::atomic<std::int8_t> mAwaitingConfirmation = 0;
    std::atomic<std::int16_t> mShutdownStatus = nothing;
    std::int8_t mLogoutShutdownRestart = 0;

    /// What follows the run being prepared: `mShutdownStatus` when it began, whatever a request
    /// that is refused makes of that meanwhile. Main thread.
    std::int16_t ending_ = nothing;
    StartedBy next_;                       ///< who asks for the next request
    StartedBy startedBy_;                  ///< who asked for the run being prepared
    std::vector<HeldItem> handedOver_;     ///< the worker's while it works
    Left left_;                            ///< likewise
    std::vector<std::string> passedOver_;  ///< of what is left, as they run; likewise
    /// The worker has shredded, and stays for the countdown.
    std::atomic<bool> countingDown_ = false;
};

}  // namespace dorvanel
