// SPDX-License-Identifier: MIT
#include "app/desktop/Desktop.h"
#include "run/ShreddingRun.h"
#include "targets/ProfilesMenu.h"

#include <QApplication>
#include <QEvent>

#include "app/desktop/Bytes.h"
#include "app/desktop/InterfaceFile.h"
#include "app/desktop/applications/ApplicationsOverview.h"
#include "app/desktop/results/RunResults.h"
#include "log/ActivityLog.h"

namespace dorvanel::desktop {

Desktop::Desktop(DesktopServices services)
    : services_(std::move(services)),
      panel_({.preferences = services_.preferencesInstance,
              .files = services_.files,
              .log = services_.log,
              .sound = workspace_,
              .loadMainMenu =
                  [this] { return loadInterfaceFile(services_.resourcesFolder, "MainMenu"); },
              .trouble = services_.preferencesTrouble,
              .defaults = &services_.defaults,
              .keepVisible = [this] { return progressArea(); },
              .furnish = [this](QDialog& panel) { furnishPanel(panel); }}) {
    mainMenu_.addItemWithTitle("Profiles", {}, "").makeSubmenu();
}

Desktop::~Desktop() {
    reachable_ = nullptr;
    if (plans_ != nullptr) plans_->looker.stop();
    if (work_ != nullptr) work_->countdown().strike();
    if (controller_ != nullptr) controller_->run().waitForWorker();
    documents_.clear();
}

bool Desktop::runFromLaunch(const std::vector<std::string>& droppedItems,
                            const std::string& action) {
    bool isLaunched = true;
    loop_.performOnMainThread([&] {
        if (quitAsked_) return loop_.stop();
        isLaunched = launch(droppedItems);
        if (!isLaunched) return loop_.stop();
        if (!action.empty() && !loop_.isStopping()) performAction(action);
    });
    run();
    return isLaunched;
}

void Desktop::askToQuit() {
    quitAsked_ = true;
    if (Controller* controller = reachable_) controller->giveUp();
    application_.terminate();
}

bool Desktop::launch(const std::vector<std::string>& droppedItems) {
    if (!makeWindow()) {
        services_.log.log("Failed to load MainMenu.nib");
        workspace_.beep();
        return false;
    }
    makePlans();
    makeController();
    makeApplications();
    makeTray();
    makeResults();
    window_->setActions(actions());
    makeHelp();
    takeDrops(window_->window());
    qApp->installEventFilter(this);

    tellUnfinished();
    if (!services_.preferencesInstance.areKnown()) tellRefusal(Refusal::preferencesUnknown);
    controller_->setDroppedItems(checkedItems(droppedItems));
    controller_->applicationDidFinishLaunching();
    if (services_.startsHidden) startHidden();
    profilesView_->sync();
    // A menu without a single profile says nothing; it is dimmed, as its item in the main menu is.
    window_->profilesMenu().menuAction()->setEnabled(mainMenu_.itemAtIndex(0).isEnabled());
    launched_ = true;
    plans_->idleLine.start();
    for (const auto& work : std::exchange(waiting_, {})) {
        if (!loop_.isStopping()) work();
    }
    return true;
}

bool Desktop::makeWindow() {
    std::unique_ptr<QWidget> mainMenu = loadInterfaceFile(services_.resourcesFolder, "MainMenu");
    if (mainMenu == nullptr) return false;
    window_ = MainWindow::create(std::move(mainMenu));
    if (window_ == nullptr) return false;
    activity_ = std::make_unique<ActivityView>(
        ActivityView::Parts{[this](const QString& message) { window_->showMessage(message); },
                            [this](bool enabled) {
                                window_->setCommandsEnabled(enabled);
                                if (work_ != nullptr) work_->setCommandsEnabled(enabled);
                                if (tray_ != nullptr) tray_->setCommandsEnabled(enabled);
                            }});
    alerts_ = std::make_unique<QtAlertPanel>(window_->window(), loop_,
                                             [this](bool asking) { setAsking(asking); });
    myWindow_ = std::make_unique<QtWindow>(window_->window(), services_.defaults);
    return makeWork();
}

void Desktop::makeController() {
    quitWait_ = services_.makeQuitWait(loop_);
    worker_ = services_.makeWorker();
    today_ = std::make_unique<MachinesTodayServices>(loop_);
    controller_ = std::make_unique<Controller>(ControllerParts{
        .system = services_.system,
        .clock = services_.clock,
        .draws = services_.draws,
        .files = services_.files,
        .defaults = services_.defaults,
        .preferencesInstance = services_.preferencesInstance,
        .runLoop = loop_,
        .listing = services_.listing,
        .processes = services_.processes,
        .events = services_.events,
        .quitWait = *quitWait_,
        .worker = *worker_,
        .sound = workspace_,
        .today = today_->services(),
        .bundle = services_.bundle,
        .alertPanel = *alerts_,
        .application = application_,
        .workspace = workspace_,
        .myWindow = *myWindow_,
        .mainMenu = mainMenu_,
        .shreddingProgress = window_->shreddingProgress(),
        .fileName = window_->fileName(),
        .watchOutlets = window_->watchOutlets(),
        .observer = *this,
        .unfinished = services_.unfinished,
        .work = &work_->view().progress(),
        .countdown = &work_->countdown(),
    });
    reachable_ = controller_.get();
    if (quitAsked_) controller_->giveUp();  // it came before there was anybody to tell
    ui::Menu* profiles = mainMenu_.itemAtIndex(0).submenu();
    profilesView_ = std::make_unique<MenuView>(
        window_->profilesMenu(), *profiles, MenuView::Items::choices,
        [this](const ui::MenuItem& item) {
            if (!item.isEnabled()) return QString();
            return displayText(controller_->profilesMenu().profileName(item));
        });
}

ui::TerminateReply Desktop::shouldTerminate() {
    if (controller_ == nullptr) return ui::TerminateReply::now;  // nothing has been launched yet
    return controller_->applicationShouldTerminate();
}

void Desktop::terminationDeferred() {
    activity_->setQuitDeferred();
}

void Desktop::willTerminate() {
    if (controller_ == nullptr) return;
    if (overview_ != nullptr) overview_->end();
    // Saves the window's frame too, while there is still somebody to save it.
    myWindow_->saveFrame();
    static_cast<void>(controller_->applicationWillTerminate());
    // An alert that is still up ends with the program, unanswered: no line about it.
    if (loop_.isHeld()) kalvet_logger_close();
}

void Desktop::makeTray() {
    tray_ = std::make_unique<Tray>(Tray::Parts{
        .isAvailable = services_.hasStatusArea,
        .commands = controller_->applicationDockMenu(),
        .show = [this] { activate(); },
        .quit = [this] { controller_->reallyQuit(); },
        .gone =
            [this] {
                if (!window_->window().isVisible()) activate();
            },
        .showPreferences = [this] { panel_.showPanel(); },
        .showLastRuns = [this] { showLastRuns(); },
        .isWatching = [this] { return isBrowserWatchOn(); },
        .setWatching = [this](bool on) { setBrowserWatch(on); },
    });
    tray_->check();
}

void Desktop::checkStatusArea() {
    // An alert may have come from the icon's own menu, which stays until it has been answered.
    if (!launched_ || loop_.isHeld()) return;
    tray_->check();
    // A status area often comes later than the programs that the session starts.
    if (isBehindIcon_ && tray_->isThere() && window_->window().isMinimized()) {
        window_->window().hide();
    }
    if (tray_->isThere()) isBehindIcon_ = false;
}

MainWindowActions Desktop::actions() {
    Controller* controller = controller_.get();
    MainWindowActions actions;
    actions.about = [this] { showAbout(); };
    actions.showPanel = [this] { panel_.showPanel(); };
    actions.hide = [this] { application_.hide(); };
    actions.reallyQuit = [controller] { controller->reallyQuit(); };
    actions.openDoc = [this] { openDoc(); };
    actions.preview = [this] { previewRun(); };
    actions.shredTrash = [this] { shredTrash(); };
    actions.shredAndNothing = [controller] { controller->shredAndNothing(); };
    actions.shredAndLogout = [controller] { controller->shredAndLogout(); };
    actions.shredAndShutdown = [controller] { controller->shredAndShutdown(); };
    actions.shredAndRestart = [controller] { controller->shredAndRestart(); };
    actions.emailSupport = [controller] { controller->emailSupport(); };
    actions.webFAQ = [controller] { controller->webFAQ(); };
    actions.webDownloads = [controller] { controller->webDownloads(); };
    return actions;
}

InstanceHandlers Desktop::instanceHandlers() {
    return {
        [this] { whenLaunched([this] { activate(); }); },
        [this](std::vector<std::string> files) {
            whenLaunched([this, files = std::move(files)] { openFiles(files); });
        },
        [this](const std::string& name) { whenLaunched([this, name] { performAction(name); }); },
        [this](std::vector<std::string> files) {
            whenLaunched([this, files = std::move(files)] { askAbout(files); });
        },
    };
}

void Desktop::whenLaunched(std::function<void()> work) {
    if (launched_) return work();
    waiting_.push_back(std::move(work));
}

void Desktop::activate() {
    showHiddenWindows();
    myWindow_->makeKeyAndOrderFront();
}

void Desktop::hideWindows() {
    const auto hide = [this](QWidget* window) {
        if (window == nullptr || !window->isVisible()) return;
        hidden_ << window;
        window->hide();
    };
    hide(panel_.window());
    hide(help_.get());
    for (const auto& document : documents_) hide(document->window());
    QMainWindow& window = window_->window();
    checkStatusArea();
    if (tray_->isThere()) {
        window.hide();
    } else if (window.isVisible()) {
        // Without a tray, a window that is gone could not be found again.
        window.showMinimized();
    }
}

void Desktop::showHiddenWindows() {
    for (const QPointer<QWidget>& window : std::exchange(hidden_, {})) {
        if (window != nullptr) window->show();
    }
}

bool Desktop::isClosed(const MyDocument& document) const {
    return !document.window()->isVisible() && !hidden_.contains(document.window());
}

bool Desktop::eventFilter(QObject* watched, QEvent* event) {
    // The session asks the program to quit: as any quit request.
    if (watched == qApp && event->type() == QEvent::Quit) {
        event->ignore();
        application_.terminate();
        return true;
    }
    // The main window comes back by the desktop's own hand, and what was hidden with it too.
    if (event->type() == QEvent::WindowStateChange && watched == &window_->window() &&
        !window_->window().isMinimized()) {
        showHiddenWindows();
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace dorvanel::desktop
