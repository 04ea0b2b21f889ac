// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/random/FeedbackSequence.h"
#include "platform/SystemCalls.h"
#include "run/ShreddingRun.h"
#include "support/FakeAlertPanel.h"
#include "support/FakeClock.h"
#include "support/FakeDesktop.h"
#include "support/FakeOutlets.h"
#include "support/FakePreferences.h"
#include "support/FakeProcessListing.h"
#include "support/FakeProcessManager.h"
#include "support/FakeProgramListing.h"
#include "support/FakeQuitWait.h"
#include "support/FakeRunLoop.h"
#include "support/FakeUserDefaults.h"
#include "support/LogCapture.h"
#include "support/TemporaryFolder.h"
#include "targets/traces/FoundTraces.h"

namespace dorvanel::test {

/// An alert panel whose answer may do something first, as a user who is not in a hurry may.
class ScriptedAlertPanel final : public ui::AlertPanel {
  public:
    explicit ScriptedAlertPanel(CallLog& log) : log_(log) {}
    ui::AlertButton runAlertPanel(const std::string& title, const std::string& message,
                                  const std::string& defaultButton,
                                  const std::string& alternateButton,
                                  const std::string& otherButton) override {
        log_.add("alert " + title + ": " + message + " [" + defaultButton + "|" + alternateButton +
                 "|" + otherButton + "]");
        if (onAlert) onAlert(title);
        return answers.contains(title) ? answers.at(title) : ui::AlertButton::alternateButton;
    }
    std::map<std::string, ui::AlertButton> answers;
    std::function<void(const std::string& title)> onAlert;

  private:
    CallLog& log_;
};

/// A run over a temporary home: the engine, the collectors and Browser Watch are the real ones;
/// the processes, the clock, the alerts and the system are the test's.
class RunFixture : public ::testing::Test, private BrowserWatchOwner, protected RunObserver {
  protected:
    RunFixture() {
        preferences.set("ActivityLog", true);
        preferences.set("NumberOfWrites", 2);
        clock.step = std::chrono::seconds(1);
    }
    ~RunFixture() override {
        run.waitForWorker();
        kalvet_logger_close();
    }

    /// Makes a file of Safari's cache, the first thing that a run takes.
    void addSafariCache() { writeFile(home / "Library/Caches/Safari/00/page.cache", "secret"); }

    /// The Activity Log without its time stamps.
    [[nodiscard]] static std::vector<std::string> logLines() { return LogCapture::linesNow(); }

    [[nodiscard]] std::vector<HeldItem> held(const std::string& path) {
        return holdAll(*system, {path});
    }

    static std::string text(const FakeTextField& field) {
        return field.texts.empty() ? std::string() : field.texts.back();
    }

    void shredAndNothing() override { run.shredAndNothing(); }
    void runEnded(const RunReport& report) override {
        reports.push_back(report);
        calls.add("ended");
    }

    TemporaryHome home;
    CallLog calls;
    FakeClock clock;
    FakePreferences preferences;
    FakeUserDefaults defaults;
    FakeRunLoop runLoop{clock};
    FakeProcessListing listing;
    FakeProcessManager processes;
    FakeSystemEvents events{calls};
    FakeSystemSound sound;
    FakeApplicationObject application{calls};
    FakeWindow window{calls};
    ScriptedAlertPanel alerts{calls};
    FakeQuitWait quitWait{clock};
    std::unique_ptr<platform::Worker> worker = platform::makeWorker();
    FakeProgressIndicator progress;
    FakeTextField fileName;
    FakeTextField status;
    std::array<FakeTextField, 12> labels;
    std::vector<RunReport> reports;

    std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    FeedbackSequence draws;
    std::vector<std::string> mPathArray;
    FileAccess fileAccess{{*system, clock, draws}, preferences, progress, fileName};
    Collectors collectors{mPathArray, preferences, platform::defaultFileManager(), defaults, clock};
    BrowserWatch watch{
        {preferences, listing, runLoop, sound},
        {&status, &labels[0], &labels[1], &labels[2], &labels[3], &labels[4], &labels[5],
         &labels[6], &labels[7], &labels[8], &labels[9], &labels[10], &labels[11]},
        *this};
    std::unique_ptr<platform::CleaningCalls> cleaningCalls = platform::makeCleaningCalls();
    std::unique_ptr<platform::LockProbe> locks = platform::makeLockProbe();
    FakeProgramListing programs;
    RunningApplications runningApplications{
        programs, *locks,
        [this](const catalogue::Entry& entry) { return traces::findLocks(entry, *system); }};
    TraceCollection traces{{*system, *cleaningCalls, clock, platform::defaultFileManager(),
                            defaults, runningApplications, [this] {
                                return catalogue::Folders{home / "applications", {}};
                            }}};
    MentionsOfItems mentions{{*system, *cleaningCalls, clock}};
    ShreddingRun run{{fileAccess, preferences, watch, collectors, mPathArray, traces, mentions,
                      processes, events, quitWait, *worker, alerts, window, application, *this}};
};

}  // namespace dorvanel::test
