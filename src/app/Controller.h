// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/BrowserWatchOutlets.h"
#include "base/Result.h"
#include "engine/Plan.h"
#include "engine/plan/ItemPlanner.h"
#include "run/Activity.h"
#include "ui/Application.h"
#include "ui/Menu.h"
#include "ui/Window.h"

namespace dorvanel {

class ApplicationsOfToday;
class BrowserWatch;
class BundleInformation;
class Collectors;
class DrawSequence;
class EndingCountdown;
class FileAccess;
class MentionsOfItems;
class Preferences;
class ProfilesMenu;
class RunObserver;
class ShreddingRun;
class UnfinishedRecord;
struct HeldItem;
struct TodayServices;

namespace platform {
class Clock;
class FileManager;
class ProcessListing;
class ProcessManager;
class QuitWait;
class SystemCalls;
class SystemEvents;
class SystemSound;
class UserDefaults;
class Worker;
}  // namespace platform

namespace ui {
class AlertPanel;
class RunLoop;
class WorkProgress;
class Workspace;
}  // namespace ui

/// What the application controller stands on: the services of the platform and the outlets of the
/// interface. All of it outlives the controller.
struct ControllerParts {
    platform::SystemCalls& system;
    platform::Clock& clock;
    DrawSequence& draws;
    platform::FileManager& files;
    platform::UserDefaults& defaults;
    Preferences& preferencesInstance;
    ui::RunLoop& runLoop;
    platform::ProcessListing& listing;
    platform::ProcessManager& processes;
    platform::SystemEvents& events;
    platform::QuitWait& quitWait;
    platform::Worker& worker;
    platform::SystemSound& sound;
    TodayServices& today;
    BundleInformation& bundle;
    ui::AlertPanel& alertPanel;
    ui::Application& application;
    ui::Workspace& workspace;
    ui::Window& myWindow;
    ui::Menu& mainMenu;
    ui::ProgressIndicator& shreddingProgress;
    ui::TextField& fileName;
    BrowserWatchOutlets watchOutlets;
    RunObserver& observer;
    UnfinishedRecord* unfinished = nullptr;  ///< where holding folders are written down, if at all
    ui::WorkProgress* work = nullptr;        ///< shown how far a request is, if anybody
    EndingCountdown* countdown = nullptr;    ///< asked before the session is ended, if anybody
};

/// The application controller: the application's delegate and the owner of the engine, Browser
/// Watch, the collectors, the Profiles menu and the run. Main thread.
class Controller final {
  public:
    explicit Controller(const ControllerParts& parts);
    ~Controller();
    Controller(const Controller&) = delete;
    Controller& operator=(const Controller&) = delete;

    // Delegate of the application.

    /// Everything that starts with the application, in order.
    void applicationDidFinishLaunching();
    /// Gives up what has not reached its worker and stops Browser Watch; `later` while a worker
    /// works, which then answers "yes" itself. `now` at once while a run is being prepared, behind
    /// an alert for example.
    ui::TerminateReply applicationShouldTerminate();
    /// Saves the preferences.
    Result<Done> applicationWillTerminate();
    /// A file handed over by the system is acknowledged; the document takes it in.
    bool applicationOpenFile(const std::string& path);
    void applicationDidBecomeActive() {}
    ui::Menu& applicationDockMenu() { return mDockMenu; }

    // Actions.

    /// Quits; while Browser Watch is on, asks first whether hiding would do.
    void reallyQuit();
    void handleQuitSheet(ui::SheetCode returnCode);
    void emailSupport();
    void webFAQ();
    void webDownloads();

    void shred();
    void shredAndNothing();
    void shredAndLogout();
    void shredAndShutdown();
    void shredAndRestart();

    /// What a run would take now, `withQuicktime` of one that ends the session; touches nothing.
    /// Before the application has launched the profiles are those that launching would select.
    /// While something is at work: nothing.
    std::optional<Plan> previewRun(bool withQuicktime, const ItemPlanner::Parts& planning);

    /// Shreds files that somebody hands over: ShreddingRun::shredFiles.
    bool shredFiles(std::vector<HeldItem> items);
    /// The program is asked to quit: at once, from any thread, also before it has launched. What
    /// has not reached its worker is given up; nothing starts any more, and no logout, shutdown or
    /// restart follows.
    void giveUp();
    /// What is going on; any thread.
    [[nodiscard]] Activity activity() const;
    [[nodiscard]] bool isBusy() const;
    [[nodiscard]] bool isQuitting() const;

    /// Items that are to be shredded when the application has launched; call it before.
    void setDroppedItems(std::vector<HeldItem> items);

    FileAccess& fileAccessInstance() { return *fileAccessInstance_; }
    ShreddingRun& run() { return *run_; }
    BrowserWatch& browserWatch() { return *browserWatch_; }
    ProfilesMenu& profilesMenu() { return *profilesMenu_; }

  private:
    void makeDockMenu();
    void shredAsQuit(std::vector<std::string> names);

    class QuitOfAnApplication;

    ControllerParts parts_;
    std::vector<std::string> mPathArray;

    std::unique_ptr<FileAccess> fileAccessInstance_;
    std::unique_ptr<Collectors> collectors_;
    std::unique_ptr<ProfilesMenu> profilesMenu_;
    std::unique_ptr<QuitOfAnApplication> watchOwner_;
    std::unique_ptr<BrowserWatch> browserWatch_;
    std::unique_ptr<ApplicationsOfToday> today_;
    std::unique_ptr<MentionsOfItems> mentions_;
    std::unique_ptr<ShreddingRun> run_;

    ui::Menu mDockMenu;
    bool droppedFile = false;  ///< whether this launch was given items
    std::vector<HeldItem> mDroppedItems;
    std::int16_t applicationLaunched = 0;
};

}  // namespace dorvanel
