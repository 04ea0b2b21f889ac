// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QIcon>
#include <iostream>
#include <vector>

#include "app/BundleInformation.h"
#include "app/MachinesUnfinished.h"
#include "app/desktop/Bytes.h"
#include "app/desktop/CommandLine.h"
#include "app/desktop/Desktop.h"
#include "app/desktop/StatusArea.h"
#include "apps/Applications.h"
#include "engine/random/DrawSequence.h"
#include "platform/AccountFolders.h"
#include "platform/Clock.h"
#include "platform/ProcessStart.h"
#include "platform/QuitSignals.h"
#include "platform/Resources.h"
#include "platform/SystemCalls.h"
#include "platform/UserSwitch.h"
#include "prefs/PropertyListDefaults.h"

namespace {

using namespace dorvanel;

QIcon programIcon(const std::string& resources) {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const std::string name = "/icons/dorvanel-x-" + std::to_string(size) + ".png";
        icon.addFile(QString::fromStdString(resources + name), QSize(size, size));
    }
    return icon;
}

void setUp(QApplication& application, const std::string& resources) {
    QApplication::setApplicationName(QStringLiteral("dorvanel-x"));
    QApplication::setApplicationVersion(QStringLiteral(DORVANEL_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("dorvanel-x"));
    QApplication::setWindowIcon(programIcon(resources));
    application.setQuitOnLastWindowClosed(false);
}

int runProgram(const desktop::CommandLine& line, desktop::SingleInstance& instance) {
    std::string trouble;
    const auto report = [](const Error& error) { platform::systemLog().log(error.message()); };
    const auto reportOfPreferences = [&](const Error& error) {
        trouble = error.message();
        report(error);
    };
    if (const auto made = platform::makeAccountFolders(); !made) report(made.error());
    const auto defaults = openUserDefaults(userDefaultsPath(), reportOfPreferences);
    PreferencesOwner preferencesOwner{.defaults = *defaults, .applications = supportedApplications};
    const auto preferences = Preferences::sharedInstance(preferencesOwner);
    const auto system = platform::makeSystemCalls();
    const auto draws = makeDrawSequence();
    const auto listing = platform::makeProcessListing();
    const auto processes = platform::makeProcessManager();
    const auto events = platform::makeSystemEvents();
    const std::string resources = platform::resourcesFolder();
    BundleInformationFile bundle(resources + "/Info.plist");
    const auto medium = platform::makeMediumInspector();
    desktop::StatusArea statusArea;
    MachinesUnfinished unfinished;
    unfinished.record().onTrouble = [](const Error& error) {
        platform::systemLog().log("what is in work is not written down: " + error.message());
    };

    desktop::Desktop program({.system = *system,
                              .clock = platform::systemClock(),
                              .draws = *draws,
                              .files = platform::defaultFileManager(),
                              .defaults = *defaults,
                              .preferencesInstance = *preferences,
                              .listing = *listing,
                              .processes = *processes,
                              .events = *events,
                              .log = platform::systemLog(),
                              .bundle = bundle,
                              .medium = *medium,
                              .resourcesFolder = resources,
                              .preferencesTrouble = [&trouble] { return trouble; },
                              .hasStatusArea = [&statusArea] { return statusArea.isThere(); },
                              .unfinished = &unfinished.record(),
                              .unfinishedFolders = [&unfinished] { return unfinished.count(); }});
    statusArea.watch([&program] { program.checkStatusArea(); });
    if (instance.claim(program.instanceHandlers()) == desktop::SingleInstance::Role::second) {
        return instance.handOver(line.files, line.action) ? 0 : 1;
    }
    const auto quitSignals = platform::catchQuitSignals([&program] { program.askToQuit(); });
    return program.runFromLaunch(line.files, line.action) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    platform::prepareProcess();
    int status = 0;
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto line = desktop::readCommandLine(arguments, std::cout, std::cerr, status);
    if (!line) return status;
    if (const auto entered = platform::becomeOwnerOfHome(); !entered) {
        std::cerr << "dorvanel-x: " << desktop::displayText(entered.error().message()).toStdString()
                  << '\n';
        return 2;
    }

    argc = 1;  // the files are ours to read, not the toolkit's
    QApplication application(argc, argv);
    setUp(application, platform::resourcesFolder());
    desktop::SingleInstance instance(platform::homeDirectory());
    return runProgram(*line, instance);
}
