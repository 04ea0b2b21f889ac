// SPDX-License-Identifier: MIT
#include "app/Controller.h"

#include <utility>

namespace dorvanel {

using ui::SheetCode;
using ui::TerminateReply;

Controller::Controller(ControllerParts parts)
    : parts_(parts),
      fileAccessInstance_({.system = parts_.system, .clock = parts_.clock, .draws = parts_.draws},
                          parts_.preferencesInstance, parts_.shreddingProgress, parts_.fileName),
      collectors_(mPathArray, parts_.preferencesInstance, parts_.files, parts_.defaults,
                  parts_.clock),
      profilesMenu_(parts_.mainMenu, parts_.files, parts_.defaults, parts_.alertPanel),
      browserWatch_({.preferencesInstance = parts_.preferencesInstance,
                     .listing = parts_.listing,
                     .runLoop = parts_.runLoop,
                     .sound = parts_.sound},
                    parts_.watchOutlets, *this),
      run_({.fileAccessInstance = fileAccessInstance_,
            .preferencesInstance = parts_.preferencesInstance,
            .browserWatch = browserWatch_,
            .collectors = collectors_,
            .mPathArray = mPathArray,
            .processes = parts_.processes,
            .events = parts_.events,
            .quitWait = parts_.quitWait,
            .worker = parts_.worker,
            .alertPanel = parts_.alertPanel,
            .myWindow = parts_.myWindow,
            .application = parts_.application,
            .observer = parts_.observer}) {
    makeDockMenu();
}

void Controller::applicationDidFinishLaunching() {
    run_.applicationLaunches();
    parts_.myWindow.setFrameAutosaveName("My Window");
    // "1" makes a background element of the program, without a place among the others.
    if (parts_.bundle.objectForInfoDictionaryKey("NSUIElement") == "1") {
        parts_.application.hide();
    } else {
        parts_.myWindow.center();
        parts_.myWindow.makeKeyAndOrderFront();
    }

    if (droppedFile) {
        run_.shredLaunchItems(std::exchange(mDroppedItems, {}));
        if (applicationLaunched == 0) browserWatch_.scheduleTimer();
    }
    applicationLaunched = 1;
    browserWatch_.scheduleTimer();  // the poll; a second one beside the first changes nothing

    mPathArray.clear();
    browserWatch_.setInitialState();
    profilesMenu_.populateProfilesMenu();
    browserWatch_.resetRunningRecords();
}

TerminateReply Controller::applicationShouldTerminate() {
    giveUp();
    if (run_.awaitingConfirmation()) return TerminateReply::now;
    browserWatch_.invalidateTimer();
    return run_.putOffQuit() ? TerminateReply::later : TerminateReply::now;
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
