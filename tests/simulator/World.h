// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "app/ApplicationsOfToday.h"
#include "app/Controller.h"
#include "app/terminal/OpenedPreferences.h"
#include "app/terminal/TerminalSession.h"
#include "engine/FileAccess.h"
#include "prefs/Preferences.h"
#include "run/ShreddingRun.h"
#include "simulator/Judge.h"
#include "simulator/SteppedWorker.h"
#include "support/FakeDesktop.h"
#include "support/FakeOutlets.h"
#include "support/FakeProcessListing.h"
#include "support/FakeProcessManager.h"
#include "support/FakeRunLoop.h"
#include "support/FaultySystemCalls.h"
#include "support/TemporaryFolder.h"
#include "targets/ProfilesMenu.h"
#include "watch/BrowserWatch.h"

namespace dorvanel::simulator {

/// The program with everything around it, and what happens to it. In each moment that waits for
/// something (the main loop, an alert, a wait for applications, a listing) the next events of the
/// sequence happen, those that can happen there.
class World final : private ui::AlertPanel,
                    private platform::AnswerInput,
                    private platform::QuitWait,
                    private platform::ProcessListing,
                    private ui::Application,
                    private platform::SystemEvents,
                    private RunObserver {
  public:
    explicit World(const Sequence& sequence);
    ~World() override;

    Findings live();

  private:
    /// What can happen in a moment.
    enum class Moment {
        mainLoop,  ///< everything
        alert,     ///< everything, and answers; no timer fires
        waiting,   ///< everything; no timer fires
        blocked,   ///< the main thread is busy: only what other threads and programs do
    };

    // What the program is given.
    ui::AlertButton runAlertPanel(const std::string& title, const std::string& message,
                                  const std::string& defaultButton,
                                  const std::string& alternateButton,
                                  const std::string& otherButton) override;
    void discardPending() override {}
    Read readLine(std::string& line) override;
    void interrupt() override { interrupted_ = true; }
    bool wait(std::chrono::microseconds time) override;
    void cancel() override { waitCancelled_ = true; }
    void renew() override { waitCancelled_ = false; }
    std::unique_ptr<platform::CommandOutput> open(const std::string& command) override;
    std::string userName() const override { return "alice"; }
    void hide() override {}
    void terminate() override;
    void replyToApplicationShouldTerminate(bool shouldTerminate) override;
    OSErr send(FourCharCode event) override;
    void runBegins(const std::vector<std::string>& items) override { judge_.runBegins(items); }
    void runEnded(const RunReport& report) override { judge_.runEnded(report); }

    void setUpHome();
    void workerEnded();
    void makeProgram();
    BrowserWatchOutlets outlets();
    void launch();
    [[nodiscard]] bool hasEnded() const { return ended_ || loop_.isStopped(); }
    /// The next event, or nothing when the sequence is over.
    std::optional<Event> next();
    /// Lets the next event happen; false when there is none.
    bool happen(Moment moment);
    void perform(const Event& event, Moment moment);
    void request(const Event& event);
    void pass(std::chrono::seconds time, Moment moment);
    void turn(std::uint8_t which);
    void signal();
    void end();
    void drain();
    [[nodiscard]] bool isWindow() const { return sequence_.scene.face == Scene::Face::window; }
    Controller& controller() { return isWindow() ? *controller_ : session_->controller(); }

    const Sequence& sequence_;
    std::size_t at_ = 0;

    test::TemporaryHome home_;
    test::FakeClock clock_;
    test::FakeRunLoop loop_{clock_};
    MachinesTodayServices today_{loop_};
    test::FakeProcessListing listing_;
    test::FakeProcessManager processes_;
    test::FakeSystemSound sound_;
    test::FakeBundle bundle_;
    test::CallLog calls_;
    test::FakeWindow window_{calls_};
    test::FakeWorkspace workspace_;
    test::FakeProgressIndicator progress_;
    test::FakeTextField fileName_;
    test::FakeTextField status_;
    std::array<test::FakeTextField, applicationCount> labels_;
    ui::Menu mainMenu_;
    std::unique_ptr<platform::SystemCalls> realSystem_ = platform::makeSystemCalls();
    test::FaultySystemCalls system_{*realSystem_};
    SteppedWorker worker_;
    std::unique_ptr<DrawSequence> draws_ = makeDrawSequence();

    std::ostringstream out_;
    std::ostringstream err_;
    terminal::Terminal terminal_{out_, err_, *this, false, false, {}};
    std::unique_ptr<terminal::OpenedPreferences> opened_;
    std::unique_ptr<Controller> controller_;              ///< of the window
    std::unique_ptr<terminal::TerminalSession> session_;  ///< of the terminal
    Judge judge_;

    bool safariRuns_ = false;
    bool safariRefuses_ = false;
    bool threadIsThere_ = true;
    bool interrupted_ = false;
    bool waitCancelled_ = false;
    bool ended_ = false;     ///< the window's program has quit
    bool deferred_ = false;  ///< its quit waits for the worker
    int signals_ = 0;
    int depth_ = 0;  ///< moments within moments
};

}  // namespace dorvanel::simulator
