// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QList>
#include <QMenu>
#include <QPointer>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/ApplicationsOfToday.h"
#include "app/BundleInformation.h"
#include "app/Controller.h"
#include "app/LookServices.h"
#include "app/ShredArguments.h"
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
#include "app/desktop/applications/SurveyServices.h"
#include "app/desktop/help/AboutDialog.h"
#include "app/desktop/help/HelpWindow.h"
#include "app/desktop/help/WelcomeView.h"
#include "app/desktop/plan/PlanDialog.h"
#include "app/desktop/plan/Plans.h"
#include "app/desktop/work/LauncherEntry.h"
#include "app/desktop/work/WorkPanel.h"
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

class ApplicationsOverview;
class RunResults;

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
    /// What the window looks with at what would be shredded.
    std::function<std::unique_ptr<LookServices>()> makeLookServices = [] {
        return std::make_unique<LookServices>();
    };
    /// Where holding folders are written down; null: nowhere.
    UnfinishedRecord* unfinished = nullptr;
    /// How many holding folders earlier shreddings have left; empty for none.
    std::function<std::size_t()> unfinishedFolders = {};
    /// What the applications of this computer are looked at with in the background.
    std::function<SurveyServices()> makeSurvey = machinesSurvey;
    /// Shreds what is written down of holding folders that a later request has finished; empty:
    /// nothing is. The worker.
    std::function<void()> forgetFinished = {};
    /// How long people have to cancel an ending of the session; 0: none is counted down to.
    std::chrono::seconds countdown{10};
    /// The program's place in docks; null: none.
    LauncherEntry* launcher = nullptr;
    /// The desktop's services of the session: notifications, the file manager. Without one, nothing
    /// is told there.
    QDBusConnection sessionBus = QDBusConnection(QStringLiteral("none"));
    /// What turns services of the session's user on and off.
    QString systemctl = QStringLiteral("systemctl");
    /// The window is put away at the launch.
    bool startsHidden = false;
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

    /// Shows what a run would take, and carries that out if the person wants it.
    void previewRun();
    /// The same of what is in the trash.
    void shredTrash();
    /// Comes forward and asks before the files are shredded; returns before the answer.
    void askAbout(const std::vector<std::string>& files);
    /// Asks before files that somebody hands over are shredded: dropped on a window, for one.
    /// Absolute paths in bytes, however many. Returns once there is an answer, which a quit ends.
    void filesDropped(const std::vector<std::string>& files);
    /// The Open panel command.
    void openDoc();

    // What there is, for who puts the program together.

    Controller& controller() { return *controller_; }
    MainWindow& mainWindow() { return *window_; }
    PreferencesPanel& panel() { return panel_; }
    ApplicationsOverview& applications() { return *overview_; }
    /// Made when it is first asked for.
    HelpWindow& help();
    QtApplication& application() { return application_; }
    QtRunLoop& runLoop() { return loop_; }
    Plans& plans() { return *plans_; }
    [[nodiscard]] const std::vector<std::unique_ptr<MyDocument>>& documents() const {
        return documents_;
    }
    /// The icon in the status area; there from the launch on.
    [[nodiscard]] Tray& tray() { return *tray_; }
    /// The menu of the tray, which stands in for the Dock's; null where there is no tray.
    [[nodiscard]] QMenu* trayMenu() const { return tray_->menu(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool makeWindow();
    void makeController();
    void makeApplications();
    /// The pages of the panel that show more than preferences.
    void furnishPanel(QDialog& panel);
    /// The applications are not looked at while something is at work.
    void followActivity(Activity now);
    void makeTray();
    void makePlans();
    void makeResults();
    void startHidden();
    /// The window in front, with the page of the last runs.
    void showLastRuns();
    void showTrayStatus();
    /// Whether a person has a window of the program before them.
    [[nodiscard]] bool isWatched() const;
    [[nodiscard]] bool isBrowserWatchOn() const;
    void setBrowserWatch(bool on);
    /// Asks, and hands over what is left of a run; as dropped files, but for who started it.
    void shredAgain(const std::vector<std::string>& left);
    void shredAfterQuestion(const std::vector<std::string>& files, const QString& title,
                            StartedBy::Door door);
    MainWindowActions actions();
    // First minutes and help.
    void makeHelp();
    /// Shows the page of the help about what is in front.
    void showHelp();
    void showAbout();
    /// Where on the screen the window tells what goes on; empty where it is not seen.
    [[nodiscard]] QRect progressArea() const;
    void whenLaunched(std::function<void()> work);
    void showHiddenWindows();
    /// Has a window take files that are dropped on it.
    void takeDrops(QWidget& window);
    /// Why no request for files can be made now; "" when one can.
    QString whyNotNow();
    [[nodiscard]] bool isClosed(const MyDocument& document) const;
    /// `run`: the number of the run that failed; 0 for none.
    void tellFailure(const QString& message, const QString& details, quint64 run = 0);
    /// A question comes up or has been answered; while there is one, no request is taken.
    void setAsking(bool asking);
    /// Whether something goes on that a request has to wait for; the window says so then.
    bool refuses();
    /// The items as they can be shredded; none, and the window tells why, when one of them must not
    /// be: the home folder, a mount point, something that does not exist.
    std::vector<HeldItem> checkedItems(const std::vector<std::string>& items);
    /// What the person has chosen now.
    [[nodiscard]] RunChoice choice() const;
    using LookForPlan = std::function<Result<ShownPlan>(const Looker::Stop&)>;
    bool askAboutPlan(const PlanDialog::Texts& texts, const LookForPlan& look);
    /// Asks about files, which are checked meanwhile. What there is to shred: nothing where the
    /// person does not want it, or where one of them must not be shredded, which the window tells.
    std::vector<HeldItem> askAboutItems(const std::vector<std::string>& files,
                                        const QString& title);
    /// Takes what was checked, or tells why nothing of it is shredded.
    std::vector<HeldItem> takeChecked(Result<ShredArguments> result);
    /// Lets the main loop go round until no look is at work; false where the program ends first.
    bool waitForLook();
    /// What is going on has changed: looks make room, and what they have found is old afterwards.
    void plansFollow(Activity now);
    /// Says which of the items a request is about to shred lie where overwriting in place does not
    /// surely reach their old contents.
    void tellMedium(const std::vector<std::string>& items);
    void tellEnd(const RunReport& report);
    void tellRefusal(Refusal refusal, quint64 run = 0);
    /// Says of what earlier shreddings have left that it is there.
    void tellUnfinished();
    bool makeWork();
    void goOn();
    void showActivity(Activity now);
    /// Says what a stop or a cancelled countdown has left, and offers to go on.
    void tellStop(const RunReport& report);
    // ApplicationDelegate
    ui::TerminateReply shouldTerminate() override;
    void terminationDeferred() override;
    void willTerminate() override;
    void hideWindows() override;
    // RunObserver
    void activityChanged(Activity now) override;
    void stillCollecting() override;
    void runBegins(const std::vector<std::string>& items) override;
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
    std::unique_ptr<Plans> plans_;
    std::unique_ptr<WorkPanel> work_;
    QString workTip_;  ///< how far the work at hand is
    std::unique_ptr<platform::QuitWait> quitWait_;
    std::unique_ptr<platform::Worker> worker_;
    std::unique_ptr<MachinesTodayServices> today_;
    std::unique_ptr<Controller> controller_;
    std::atomic<Controller*> reachable_ = nullptr;  ///< the controller, for other threads
    std::atomic<bool> quitAsked_ = false;
    std::unique_ptr<MenuView> profilesView_;
    std::unique_ptr<Tray> tray_;
    std::vector<std::unique_ptr<MyDocument>> documents_;
    std::unique_ptr<HelpWindow> help_;  ///< null: nobody has asked for it
    std::unique_ptr<WelcomeView> welcome_;
    QPointer<AboutDialog> about_;
    QList<QPointer<QWidget>> hidden_;  ///< the windows beside the main one that `hide` put away
    std::unique_ptr<ApplicationsOverview> overview_;
    std::vector<std::function<void()>> waiting_;
    std::unique_ptr<RunResults> results_;
    bool isBehindIcon_ = false;  ///< the window is kept small until there is an icon to hide behind
    bool launched_ = false;
    int questions_ = 0;  ///< that wait for an answer
};

}  // namespace dorvanel::desktop
