// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "app/BundleInformation.h"
#include "app/desktop/Desktop.h"
#include "app/desktop/QtQuitWait.h"
#include "engine/FileAccess.h"
#include "engine/random/FeedbackSequence.h"
#include "platform/Resources.h"
#include "prefs/Preferences.h"
#include "prefs/PropertyListDefaults.h"
#include "run/ShreddingRun.h"
#include "support/FakeClock.h"
#include "support/FakeDesktop.h"
#include "support/FakeMedium.h"
#include "support/FakeProcessListing.h"
#include "support/FakeProcessManager.h"
#include "support/FakeProgramListing.h"
#include "support/LogCapture.h"
#include "support/SharedPreferences.h"
#include "support/TemporaryFolder.h"
#include "targets/ProfilesMenu.h"
#include "watch/BrowserWatch.h"

namespace dorvanel::test {

class FakeSystemLog final : public platform::SystemLog {
  public:
    void log(std::string_view message) override { lines.emplace_back(message); }
    std::vector<std::string> lines;
};

/// The sequence of the engine, which waits at one of its fills while the test holds it.
class HeldSequence final : public DrawSequence {
  public:
    /// The worker waits after so many fills of the buffer, until it is released.
    void hold(int fills = 0) {
        fillsBefore_ = fills;
        held_ = std::make_shared<std::promise<void>>();
        released_ = false;
    }
    void release() {
        if (held_ && !std::exchange(released_, true)) held_->set_value();
    }
    std::uint32_t next() override { return sequence_.next(); }
    void takeFill() override {
        if (held_ && fillsBefore_-- == 0) held_->get_future().wait();
        sequence_.takeFill();
    }
    std::size_t produce(std::uint16_t* words, std::size_t made, std::size_t wanted) override {
        return sequence_.produce(words, made, wanted);
    }

  private:
    FeedbackSequence sequence_;
    std::shared_ptr<std::promise<void>> held_;
    int fillsBefore_ = 0;    ///< the worker's, once it works
    bool released_ = false;  ///< the test's
};

/// The program's own wait for applications, in a thousandth of the time.
class ShortQuitWait final : public desktop::QtQuitWait {
  public:
    using QtQuitWait::QtQuitWait;
    bool wait(std::chrono::microseconds time) override { return QtQuitWait::wait(time / 1000); }
};

/// Lets the main loop go round until `condition` holds.
inline void waitUntil(const std::function<bool()>& condition) {
    while (!condition()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
}

/// The whole program over a temporary home, with the test's processes, clock and system.
class DesktopFixture : public ::testing::Test {
  protected:
    DesktopFixture() { listing.show({}); }
    ~DesktopFixture() override {
        draws.release();
        desktop.reset();
        kalvet_logger_close();
    }

    /// Puts the program together.
    void make() {
        desktop::DesktopServices services{
            *system,   clock,        draws,   platform::defaultFileManager(),
            *defaults, *preferences, listing, processes,
            events,    log,          bundle,  medium,
            resources};
        services.preferencesTrouble = [this] { return trouble; };
        services.hasStatusArea = [this] { return hasStatusArea; };
        services.makeQuitWait = [](desktop::QtRunLoop& loop) {
            return std::make_unique<ShortQuitWait>(loop);
        };
        if (makeWorker) services.makeWorker = makeWorker;
        services.unfinishedFolders = [this] { return unfinishedFolders; };
        // A look at what would be shredded sees what the test has run by now.
        services.makeLookServices = [this] {
            auto made = std::make_unique<LookServices>();
            auto seen = std::make_unique<FakeProcessListing>();
            seen->lines = listing.lines;
            made->listing = std::move(seen);
            made->mountPoints = [] { return std::vector<std::string>(); };
            return made;
        };
        services.makeSurvey = [this] {
            desktop::SurveyServices survey = desktop::machinesSurvey();
            auto nothingRuns = std::make_unique<FakeProgramListing>();
            todaysListing = nothingRuns.get();
            survey.listing = std::move(nothingRuns);
            return survey;
        };
        services.countdown = countdown;
        services.launcher = launcher;
        services.sessionBus = sessionBus;
        services.startsHidden = startsHidden;
        services.systemctl = "/nowhere/systemctl";
        desktop = std::make_unique<desktop::Desktop>(std::move(services));
    }
    /// Starts the program; false when it could not be.
    bool launch(const std::vector<std::string>& items = {}) {
        make();
        return desktop->launch(items);
    }
    QMainWindow& window() { return desktop->mainWindow().window(); }
    template <typename Widget>
    Widget* find(const char* name) {
        return window().findChild<Widget*>(QLatin1String(name));
    }
    /// Gives a command, once it can be given.
    void trigger(const char* action) {
        auto* command = find<QAction>(action);
        waitUntil([command] { return command->isEnabled(); });
        command->trigger();
    }
    /// Lets what has been posted to the main loop happen.
    static void settle() {
        for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    }
    /// Waits for the end of the request at work, until the window has said how it ended.
    void waitForEnd() {
        waitUntil([this] { return !desktop->controller().isBusy(); });
        desktop->controller().run().waitForWorker();
        settle();
    }

    void set(BoolKey key, bool value) {
        preferences->displayedValues.insert_or_assign(key, Number::fromBool(value));
        ASSERT_TRUE(preferences->commitDisplayedValues());
    }
    std::string addSafariCache() {
        const std::string path = home / "Library/Caches/Safari/page.cache";
        writeFile(path, "secret");
        return path;
    }

    /// Has `answer` deal with the next alert or sheet, once it is up.
    void onAlert(std::function<void(QMessageBox&)> answer) {
        auto* timer = new QTimer(&alertContext_);
        QObject::connect(timer, &QTimer::timeout, [timer, answer = std::move(answer)] {
            for (QWidget* widget : QApplication::topLevelWidgets()) {
                auto* box = qobject_cast<QMessageBox*>(widget);
                if (box == nullptr || !box->isVisible()) continue;
                timer->stop();
                timer->deleteLater();
                answer(*box);
                return;
            }
        });
        timer->start(1);
    }
    /// Has `answer` deal with the next question about what would be shredded, once it shows all
    /// that there is to show.
    void onQuestion(std::function<void(QDialog&)> answer) {
        auto* timer = new QTimer(&alertContext_);
        QObject::connect(timer, &QTimer::timeout, [timer, answer = std::move(answer)] {
            for (QWidget* widget : QApplication::topLevelWidgets()) {
                auto* dialog = qobject_cast<QDialog*>(widget);
                if (dialog == nullptr || !dialog->isVisible()) continue;
                const auto* busy = dialog->findChild<QWidget*>("busyBar");
                if (busy == nullptr || busy->isVisible()) continue;
                timer->stop();
                timer->deleteLater();
                answer(*dialog);
                return;
            }
        });
        timer->start(1);
    }
    static void press(QDialog& dialog, const char* button) {
        auto* found = dialog.findChild<QPushButton*>(QLatin1String(button));
        ASSERT_NE(found, nullptr) << button;
        EXPECT_TRUE(found->isEnabled() && found->isVisible()) << button;
        found->click();
    }
    static void agree(QDialog& dialog) { press(dialog, "shredPlannedButton"); }
    static void decline(QDialog& dialog) { press(dialog, "cancelButton"); }

    static void click(QMessageBox& box, const QString& title) {
        for (QAbstractButton* button : box.buttons()) {
            if (button->text() == title) return button->click();
        }
        ADD_FAILURE() << "no button " << title.toStdString();
    }
    static QStringList titlesOf(const QMessageBox& box) {
        QStringList titles;
        for (const char* name : {"defaultButton", "alternateButton", "otherButton"}) {
            if (auto* button = box.findChild<QPushButton*>(name)) titles << button->text();
        }
        return titles;
    }

    TemporaryHome home;
    CallLog calls;
    FakeClock clock;
    FakeProcessListing listing;
    FakeProcessManager processes;
    FakeProgramListing* todaysListing = nullptr;  ///< of the window; another thread's
    FakeSystemEvents events{calls};
    FakeSystemLog log;
    FakeBundle bundle;
    FakeMedium medium;
    HeldSequence draws;
    std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    std::unique_ptr<platform::UserDefaults> defaults =
        openUserDefaults(userDefaultsPath(), [](const auto&) {});
    std::shared_ptr<Preferences> preferences = sharedPreferences(*defaults);
    std::string resources = platform::resourcesFolder();
    std::size_t unfinishedFolders = 0;  ///< that earlier shreddings have left
    std::string trouble;                ///< with the stored preferences
    bool hasStatusArea = false;
    std::chrono::seconds countdown{0};  ///< before the session ends: none
    desktop::LauncherEntry* launcher = nullptr;
    bool startsHidden = false;
    QDBusConnection sessionBus{"none"};
    std::function<std::unique_ptr<platform::Worker>()> makeWorker;
    std::unique_ptr<desktop::Desktop> desktop;

  private:
    QObject alertContext_;
};

}  // namespace dorvanel::test
