// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/BundleInformation.h"
#include "engine/FileAccess.h"
#include "platform/FileManager.h"
#include "platform/ProcessListing.h"
#include "platform/ProcessManager.h"
#include "platform/QuitWait.h"
#include "platform/SystemEvents.h"
#include "platform/SystemSound.h"
#include "platform/UserDefaults.h"
#include "platform/Worker.h"
#include "prefs/Preferences.h"
#include "run/ShreddingRun.h"
#include "targets/Collectors.h"
#include "targets/ProfilesMenu.h"
#include "ui/AlertPanel.h"
#include "ui/Application.h"
#include "ui/Menu.h"
#include "ui/RunLoop.h"
#include "ui/Window.h"
#include "ui/Workspace.h"
#include "watch/BrowserWatch.h"

namespace dorvanel {

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
};

/// The application controller: the application's delegate and the owner of the engine, Browser
/// Watch, the collectors, the Profiles menu and the run. Main thread.
class Controller final : private BrowserWatchOwner {
  public:
    explicit Controller(ControllerParts parts);

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

    void shred() { run_.shred(); }
    void shredAndNothing() override { run_.shredAndNothing(); }
    void shredAndLogout() { run_.shredAndLogout(); }
    void shredAndShutdown() { run_.shredAndShutdown(); }
    void shredAndRestart() { run_.shredAndRestart(); }

    /// Shreds files that somebody hands over: ShreddingRun::shredFiles.
    bool shredFiles(std::vector<HeldItem> items) { return run_.shredFiles(std::move(items)); }
    /// The program is asked to quit: at once, from any thread, also before it has launched. What
    /// has not reached its worker is given up; nothing starts any more, and no logout, shutdown or
    /// restart follows.
    void giveUp() { run_.giveUp(); }
    /// What is going on; any thread.
    [[nodiscard]] Activity activity() const { return run_.activity(); }
    [[nodiscard]] bool isBusy() const { return run_.isBusy(); }
    [[nodiscard]] bool isQuitting() const { return run_.isQuitting(); }

    /// Items that are to be shredded when the application has launched; call it before.
    void setDroppedItems(std::vector<HeldItem> items);

    FileAccess& fileAccessInstance() { return fileAccessInstance_; }
    ShreddingRun& run() { return run_; }
    BrowserWatch& browserWatch() { return browserWatch_; }
    ProfilesMenu& profilesMenu() { return profilesMenu_; }

  private:
    void makeDockMenu();

    ControllerParts parts_;
    std::vector<std::string> mPathArray;

    FileAccess fileAccessInstance_;
    Collectors collectors_;
    ProfilesMenu profilesMenu_;
    BrowserWatch browserWatch_;
    ShreddingRun run_;

    ui::Menu mDockMenu;
    bool droppedFile = false;  ///< whether this launch was given items
    std::vector<HeldItem> mDroppedItems;
    std::int16_t applicationLaunched = 0;
};

}  // namespace dorvanel
