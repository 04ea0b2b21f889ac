#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "engine/FileAccess.h"
#include "platform/AlertPanel.h"
#include "platform/Application.h"
#include "platform/Clock.h"
#include "platform/ProcessManager.h"
#include "platform/SystemEvents.h"
#include "platform/Window.h"
#include "prefs/PreferenceReader.h"
#include "run/RunReport.h"
#include "targets/Collectors.h"
#include "watch/BrowserWatch.h"

namespace dorvanel {

/// One shredding run, from its guards to its end. The actions are for the main thread; at most one
/// worker thread works at a time. The flags are atomics, as both threads look at them.
class ShreddingRun {
  public:
    /// What a run works with; all of it must outlive the run.
    struct Parts {
        FileAccess& fileAccessInstance;
        PreferenceReader& preferencesInstance;
        BrowserWatch& browserWatch;
        Collectors& collectors;
        std::vector<std::string>& mPathArray;  ///< the shred list that the collectors fill
        platform::ProcessManager& processes;
        platform::SystemEvents& events;
        platform::Clock& clock;
        platform::AlertPanel& alertPanel;
        platform::Window& myWindow;
        platform::Application& application;
        RunObserver& observer;
        /// Called before each half second of waiting for applications to quit; may be empty.
        std::function<void()> beforeEachWait;
    };

    explicit ShreddingRun(Parts parts) : parts_(std::move(parts)) {}
    /// Waits for the worker.
    ~ShreddingRun() { waitForWorker(); }
    ShreddingRun(const ShreddingRun&) = delete;
    ShreddingRun& operator=(const ShreddingRun&) = delete;

    /// A run that ends as `mShutdownStatus` says. Returns once the worker has been started, or when
    /// there is to be none; a call that comes while another is in an alert does nothing.
    void shred();
    void shredAndNothing();
    void shredAndLogout();
    void shredAndShutdown();
    void shredAndRestart();

    /// Starts a worker for files that were handed over, without a run around it: no guards, no
    /// collectors. `paths` must live until the worker has ended.
    void startWorker(std::vector<std::string>& paths);

    /// Returns when no worker works any more.
    void waitForWorker();

    /// Whether the main thread waits for the user, or for applications to quit: nothing has been
    /// touched yet, and the program may end. Any thread.
    [[nodiscard]] bool isWaitingForSomebody() const { return waiting_; }

    /// What follows a run.
    enum ShutdownStatus : std::int16_t { nothing, logout, shutdown, restart };

    std::atomic<std::int16_t> mThreadCount = 0;  ///< workers started and not yet finished
    std::atomic<std::int8_t> mAppNeedsToTerminate = 0;
    std::atomic<std::int8_t> mAwaitingConfirmation = 0;  ///< `shred` is on the main thread
    std::atomic<std::int16_t> mShutdownStatus = nothing;
    std::int8_t mLogoutShutdownRestart = 0;  ///< the next run takes the QuickTime cache too

  private:
    platform::AlertButton ask(const std::string& title, const std::string& message,
                              const std::string& defaultButton, const std::string& alternateButton);
    std::int16_t askApplicationsToQuit();
    bool refused();
    bool confirmed();
    bool applicationsQuit();
    void cancel(const char* line);
    void end(RunResult result);
    void collect();
    void HandleThread(std::vector<std::string>& paths);
    void sendSystemEvent();

    Parts parts_;
    std::atomic<bool> waiting_ = false;
    std::vector<std::string> skipped_;
    std::thread worker_;
};

}  // namespace dorvanel
