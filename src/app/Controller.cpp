// SPDX-License-Identifier: MIT
#include "app/Controller.h"

#include <utility>

#include "app/ApplicationsOfToday.h"
#include "app/BundleInformation.h"
#include "engine/FileAccess.h"
#include "prefs/Preferences.h"
#include "run/MentionsOfItems.h"
#include "run/RunPreview.h"
#include "run/ShreddingRun.h"
#include "targets/Collectors.h"
#include "targets/ProfilesMenu.h"
#include "ui/Workspace.h"
#include "watch/BrowserWatch.h"

namespace dorvanel {

using ui::SheetCode;
using ui::TerminateReply;

/// An enabled application has quit: a run that nothing follows.
class Controller::QuitOfAnApplication final : public BrowserWatchOwner {
  public:
    explicit QuitOfAnApplication(Controller& controller) : controller_(controller) {}
    void shredAndNothing() override {
        controller_.shredAsQuit(controller_.browserWatch().haveQuit());
    }

  private:
    Controller& controller_;
};

Controller::Controller(const ControllerParts& parts)
    : parts_(parts),
      fileAccessInstance_(std::make_unique<FileAccess>(
          EngineServices{.system = parts.system,
                         .clock = parts.clock,
                         .draws = parts.draws,
                         .unfinished = parts.unfinished,
                         .work = parts.work},
          parts.preferencesInstance, parts.shreddingProgress, parts.fileName)),
      collectors_(std::make_unique<Collectors>(mPathArray, parts.preferencesInstance, parts.files,
                                               parts.defaults, parts.clock)),
      profilesMenu_(std::make_unique<ProfilesMenu>(parts.mainMenu, parts.files, parts.defaults,
                                                   parts.alertPanel)),
      watchOwner_(std::make_unique<QuitOfAnApplication>(*this)),
      browserWatch_(std::make_unique<BrowserWatch>(
          BrowserWatchServices{.preferencesInstance = parts.preferencesInstance,
                               .listing = parts.listing,
                               .runLoop = parts.runLoop,
                               .sound = parts.sound},
          parts.watchOutlets, *watchOwner_)),
      today_(std::make_unique<ApplicationsOfToday>(
          parts, *browserWatch_, [this](auto names) { shredAsQuit(std::move(names)); })),
      mentions_(std::make_unique<MentionsOfItems>(
          mentions::Mentions::Parts{.system = parts.system,
                                    .cleaningCalls = parts.today.cleaningCalls,
                                    .clock = parts.clock})),
      run_(std::make_unique<ShreddingRun>(
          ShreddingRun::Parts{.fileAccessInstance = *fileAccessInstance_,
                              .preferencesInstance = parts.preferencesInstance,
                              .browserWatch = *browserWatch_,
                              .collectors = *collectors_,
                              .mPathArray = mPathArray,
                              .traces = today_->traces(),
                              .mentions = *mentions_,
                              .processes = parts.processes,
                              .events = parts.events,
                              .quitWait = parts.quitWait,
                              .worker = parts.worker,
                              .alertPanel = parts.alertPanel,
                              .myWindow = parts.myWindow,
                              .application = parts.application,
                              .observer = parts.observer,
                              .countdown = parts.countdown})) {
    makeDockMenu();
}

Controller::~Controller() = default;

void Controller::shred() {
    run_->shred();
}
void Controller::shredAndNothing() {
    run_->shredAndNothing();
}
void Controller::shredAndLogout() {
    run_->shredAndLogout();
}
void Controller::shredAndShutdown() {
    run_->shredAndShutdown();
}
void Controller::shredAndRestart() {
    run_->shredAndRestart();
}

/// A run that nothing follows, for applications that have quit.
void Controller::shredAsQuit(std::vector<std::string> names) {
    run_->nextIsStartedBy(
        {.door = StartedBy::Door::browserWatch, .applications = std::move(names)});
    shredAndNothing();
}

std::optional<Plan> Controller::previewRun(bool withQuicktime, const ItemPlanner::Parts& planning) {
    if (run_->isBusy()) return std::nullopt;
    if (applicationLaunched == 0) profilesMenu_->populateProfilesMenu();
    RunPreview preview({.preferencesInstance = parts_.preferencesInstance,
                        .browserWatch = *browserWatch_,
                        .files = parts_.files,
                        .defaults = parts_.defaults,
                        .clock = parts_.clock,
                        .traces = today_->traces()});
    return preview.plan(withQuicktime, planning);
}

bool Controller::shredFiles(std::vector<HeldItem> items) {
    return run_->shredFiles(std::move(items));
}

void Controller::giveUp() {
    run_->giveUp();
}

Activity Controller::activity() const {
    return run_->activity();
}
bool Controller::isBusy() const {
    return run_->isBusy();
}
bool Controller::isQuitting() const {
    return run_->isQuitting();
}

void Controller::applicationDidFinishLaunching() {
    run_->applicationLaunches();
    parts_.myWindow.setFrameAutosaveName("My Window");
    // "1" makes a background element of the program, without a place among the others.
    if (parts_.bundle.objectForInfoDictionaryKey("NSUIElement") == "1") {
        parts_.application.hide();
    } else {
        parts_.myWindow.center();
        parts_.myWindow.makeKeyAndOrderFront();
    }

    if (droppedFile) {
        run_->shredLaunchItems(std::exchange(mDroppedItems, {}));
        if (applicationLaunched == 0) browserWatch_->scheduleTimer();
    }
    applicationLaunched = 1;
    browserWatch_->scheduleTimer();  // the poll; a second one beside the first changes nothing

    mPathArray.clear();
    browserWatch_->setInitialState();
    profilesMenu_->populateProfilesMenu();
    browserWatch_->resetRunningRecords();
    // Once the main loop runs: a program without one watches nothing.
    parts_.runLoop.performOnMainThread([this] { today_->watch(*run_); });
}

TerminateReply Controller::applicationShouldTerminate() {
    giveUp();
    if (run_->awaitingConfirmation()) return TerminateReply::now;
    browserWatch_->invalidateTimer();
    today_->stopWatching();
    return run_->putOffQuit() ? TerminateReply::later : TerminateReply::now;
}

Result<Done> Controller::applicationWillTerminate() {
    return parts_.preferencesInstance.saveDefaults();
}

bool Controller::applicationOpenFile(const std::string&) {
    return true;
}

void Controller::reallyQuit() {
    if (!parts_.preferencesInstance.boolForKey("BrowserWatch")) {
        parts_.application.terminate();
        return;
    }
    parts_.myWindow.beginSheet(
        "Quit",
        "Quitting Dorvanel will interrupt Browser Watch™ and Dorvanel will not run automatically "
        "when you quit from your web browser or email application. Would you prefer to hide "
        "Dorvanel in the Dock?",
        "Hide", "Quit", "Cancel", [this](SheetCode code) { handleQuitSheet(code); });
}

void Controller::handleQuitSheet(SheetCode returnCode) {
    if (returnCode == SheetCode::defaultButton) parts_.application.hide();
    if (returnCode == SheetCode::alternateButton) parts_.application.terminate();
}

void Controller::emailSupport() {
    parts_.workspace.openURL("mailto:support@dorvanel.example?subject=Dorvanel%20X");
}

void Controller::webFAQ() {
    parts_.workspace.openURL("https://www.dorvanel.example/faq");
}

void Controller::webDownloads() {
    parts_.workspace.openURL("https://www.dorvanel.example/downloads");
}

void Controller::setDroppedItems(std::vector<HeldItem> items) {
    droppedFile = !items.empty();
    mDroppedItems = std::move(items);
}

void Controller::makeDockMenu() {
    mDockMenu.addItemWithTitle(
        "Shred", [this](auto&) { shredAndNothing(); }, "");
    mDockMenu.addItemWithTitle(
        "Shred and Log Out", [this](auto&) { shredAndLogout(); }, "");
    mDockMenu.addItemWithTitle(
        "Shred and Shut Down", [this](auto&) { shredAndShutdown(); }, "");
    mDockMenu.addItemWithTitle(
        "Shred and Restart", [this](auto&) { shredAndRestart(); }, "");
}

}  // namespace dorvanel
