// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QMenu>
#include <QPointer>
#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/ApplicationsOfToday.h"
#include "app/BundleInformation.h"
#include "app/Controller.h"
#include "app/desktop/ActivityView.h"
#include "app/desktop/MainWindow.h"
#include "app/desktop/MenuView.h"
#include "app/desktop/MyDocument.h"
#include "app/desktop/PreferencesPanel.h"
#include "app/desktop/QtAlertPanel.h"
#include "app/desktop/QtApplication.h"
#include "app/desktop/QtQuitWait.h"
#include "app/desktop/QtRunLoop.h"
#include "app/desktop/QtWindow.h"
#include "app/desktop/QtWorkspace.h"
#include "app/desktop/SingleInstance.h"
#include "app/desktop/Tray.h"
#include "engine/HeldItem.h"
#include "engine/random/DrawSequence.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Medium.h"
#include "platform/ProcessListing.h"
#include "platform/ProcessManager.h"
#include "platform/SystemCalls.h"
#include "platform/SystemEvents.h"
#include "platform/SystemLog.h"
#include "platform/UserDefaults.h"
#include "platform/Worker.h"
#include "run/RunReport.h"

namespace dorvanel::desktop {

/// What the desktop program stands on besides the toolkit; all of it outlives the program.
struct DesktopServices {
    platform::SystemCalls& system;
    platform::Clock& clock;
    DrawSequence& draws;
    platform::FileManager& files;
    platform::UserDefaults& defaults;
    Preferences& preferencesInstance;
    platform::ProcessListing& listing;
    platform::ProcessManager& processes;
    platform::SystemEvents& events;
    platform::SystemLog& log;
    BundleInformation& bundle;
    platform::MediumInspector& medium;
    std::string resourcesFolder;
    /// What became of the stored preferences where they are not as they should be: the file and the
    /// reason. May be empty.
    std::function<std::string()> preferencesTrouble = {};
    /// Whether there is a status area for an icon now; empty where there never is one.
    std::function<bool()> hasStatusArea = {};
    std::function<std::unique_ptr<platform::QuitWait>(QtRunLoop&)> makeQuitWait =
        [](QtRunLoop& loop) { return std::make_unique<QtQuitWait>(loop); };
    std::function<std::unique_ptr<platform::Worker>()> makeWorker = platform::makeWorker;
    /// Where holding folders are written down; null: nowhere.
    UnfinishedRecord* unfinished = nullptr;
    /// How many holding folders earlier shreddings have left; empty for none.
    std::function<std::size_t()> unfinishedFolders = {};
};

/// The desktop program put together: the window, the panel, the menus and the tray around one
/// controller. Needs a QApplication. Main thread, but for what says otherwise.
class Desktop final : public QObject, private RunObserver, private ApplicationDelegate {
  public:
    explicit Desktop(DesktopServices services);
    ~Desktop() override;

    /// Loads the interface and launches the controller. `droppedItems` are shredded at once. False
    /// when the interface cannot be loaded, which the system's log and a beep have then told.
    bool launch(const std::vector<std::string>& droppedItems);

    /// The main loop, until the program has quit.
    void run() { loop_.run(); }
    /// The whole program: launches from within the main loop, so that what asks a question on the
    /// way can be quit like any other, performs the action, where one is named, and returns when
    /// the program has quit. False when it could not be launched.
    bool runFromLaunch(const std::vector<std::string>& droppedItems, const std::string& action);
    /// A signal, for one, asks the program to quit: nothing that has not reached the worker is
    /// shredded from this moment on. Any thread, also before the launch.
    void askToQuit();

    // What second launches and other programs ask; before launch() is through, it waits.

    InstanceHandlers instanceHandlers();
    /// Brings the program forward, also when it is hidden, with all that was hidden with it.
    void activate();
    /// The status area may have come or gone: the icon follows it, and a program that was hidden
    /// behind an icon that is gone comes back.
    void checkStatusArea();
    /// Opens a document that shows the files.
    void openFiles(const std::vector<std::string>& files);
    /// Sends an action by its name in the launcher ("shred"); an unknown one only brings the
    /// program forward.
    void performAction(const std::string& name);

    /// Asks before files that were dropped on the window are shredded.
    void filesDropped(const std::vector<std::string>& files);
    /// The Open panel command.
    void openDoc();

    // What there is, for who puts the program together.

    Controller& controller() { return *controller_; }
    MainWindow& mainWindow() { return *window_; }
    PreferencesPanel& panel() { return panel_; }
    QtApplication& application() { return application_; }
    QtRunLoop& runLoop() { return loop_; }
    [[nodiscard]] const std::vector<std::unique_ptr<MyDocument>>& documents() const {
        return documents_;
    }
    /// The menu of the tray, which stands in for the Dock's; null where there is no tray.
    [[nodiscard]] QMenu* trayMenu() const { return tray_->menu(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool makeWindow();
    void makeController();
    void makeTray();
    MainWindowActions actions();
    void whenLaunched(std::function<void()> work);
    void showHiddenWindows();
    [[nodiscard]] bool isClosed(const MyDocument& document) const;
    void tellFailure(const QString& message, const QString& details);
    /// A question comes up or has been answered; while there is one, no request is taken.
    void setAsking(bool asking);
    /// Whether something goes on that a request has to wait for; the window says so then.
    bool refuses();
    /// The items as they can be shredded; none, and the window tells why, when one of them must not
    /// be: the home folder, a mount point, something that does not exist.
    std::vector<HeldItem> checkedItems(const std::vector<std::string>& items);
    /// Says which of the items a request is about to shred lie where overwriting in place does not
    /// surely reach their old contents.
    void tellMedium(const std::vector<std::string>& items);
    void tellEnd(const RunReport& report);
    void tellRefusal(Refusal refusal);
    /// Says of what earlier shreddings have left that it is there.
    void tellUnfinished();
    // ApplicationDelegate
    ui::TerminateReply shouldTerminate() override;
    void terminationDeferred() override;
    void willTerminate() override;
    void hideWindows() override;
    // RunObserver
    void activityChanged(Activity now) override;
    void runBegins(const std::vector<std::string>& items) override { tellMedium(items); }
    void runEnded(const RunReport& report) override;

    DesktopServices services_;
    QtRunLoop loop_;
    QtApplication application_{loop_, *this};
    QtWorkspace workspace_;
    PreferencesPanel panel_;
    std::unique_ptr<MainWindow> window_;
    std::unique_ptr<QtAlertPanel> alerts_;
    std::unique_ptr<QtWindow> myWindow_;
    ui::Menu mainMenu_;
    std::unique_ptr<ActivityView> activity_;
    std::unique_ptr<platform::QuitWait> quitWait_;
    std::unique_ptr<platform::Worker> worker_;
    std::unique_ptr<MachinesTodayServices> today_;
    std::unique_ptr<Controller> controller_;
    std::atomic<Controller*> reachable_ = nullptr;  ///< the controller, for other threads
    std::atomic<bool> quitAsked_ = false;
    std::unique_ptr<MenuView> profilesView_;
    std::unique_ptr<Tray> tray_;
    std::vector<std::unique_ptr<MyDocument>> documents_;
    QList<QPointer<QWidget>> hidden_;  ///< the windows beside the main one that `hide` put away
    std::vector<std::function<void()>> waiting_;
    bool launched_ = false;
    int questions_ = 0;  ///< that wait for an answer
};

}  // namespace dorvanel::desktop
