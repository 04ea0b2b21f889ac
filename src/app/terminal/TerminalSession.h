// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

#include "app/BundleInformation.h"
#include "app/Controller.h"
#include "app/terminal/LockedOutlets.h"
#include "app/terminal/NoDesktop.h"
#include "app/terminal/OpenedPreferences.h"
#include "app/terminal/ProgressBar.h"
#include "app/terminal/StatusLine.h"
#include "app/terminal/Terminal.h"
#include "app/terminal/TerminalAlertPanel.h"
#include "engine/random/DrawSequence.h"
#include "platform/Clock.h"
#include "platform/ProcessListing.h"
#include "platform/ProcessManager.h"
#include "platform/QuitWait.h"
#include "platform/Resources.h"
#include "platform/SystemCalls.h"
#include "platform/SystemEvents.h"
#include "platform/SystemSound.h"
#include "platform/UserDefaults.h"
#include "platform/Worker.h"
#include "run/RunReport.h"
#include "ui/RunLoop.h"

namespace dorvanel {
class UnfinishedFiles;
}

namespace dorvanel::terminal {

/// The parts of the machine that a session drives and tests replace; all outlive the session.
struct SessionServices {
    platform::SystemCalls& system;
    platform::Clock& clock;
    ui::RunLoop& runLoop;
    platform::ProcessListing& listing;
    platform::ProcessManager& processes;
    platform::SystemEvents& events;
    platform::QuitWait& quitWait;
    platform::Worker& worker;
    TodayServices& today;
    UnfinishedFiles* unfinished = nullptr;  ///< null: holding folders are written down nowhere
};

/// The application controller in a terminal: no window, alerts as questions, progress as a bar. Its
/// application object ends the run loop.
class TerminalSession final : private ui::Application, private RunObserver {
  public:
    /// `status` shows the status line of Browser Watch. Terminal, preferences and `status` must
    /// outlive the session.
    TerminalSession(Terminal& terminal, OpenedPreferences& opened, SessionServices services,
                    TerminalAlertPanel::Answers answers, ui::TextField& status);

    Controller& controller() { return *controller_; }

    /// A quit request: what has not reached its worker is given up, a question goes unanswered.
    /// When a worker works the program ends after it, else at once. Any thread, any number of
    /// times.
    void requestQuit();

    /// Called on the main thread for every request that has ended, in their order.
    std::function<void(const RunReport&)> onRunEnded;
    /// Calls `onRunEnded` for what ended just before the main loop did, or without one.
    void tellPendingReports();

    /// Takes the progress line away, so that other text can be written.
    void clearProgress();

  private:
    // ui::Application
    void hide() override {}
    void terminate() override;
    void replyToApplicationShouldTerminate(bool shouldTerminate) override;
    // RunObserver
    void runBegins(const std::vector<std::string>& items) override;
    void runEnded(const RunReport& report) override;

    Terminal& terminal_;
    ui::RunLoop& runLoop_;
    std::unique_ptr<DrawSequence> draws_;
    BundleInformationFile bundle_;
    TerminalAlertPanel alerts_;
    ui::Menu mainMenu_;
    NoWindow window_;
    NoWorkspace workspace_;

    std::mutex terminalMutex_;
    UnseenLabel label_;
    ProgressBar bar_;
    LockedProgressIndicator shreddingProgress_;
    LockedTextField fileName_;
    LockedTextField status_;

    std::deque<RunReport> pending_;  ///< not told yet; guarded by `terminalMutex_`
    std::unique_ptr<Controller> controller_;
};

}  // namespace dorvanel::terminal
