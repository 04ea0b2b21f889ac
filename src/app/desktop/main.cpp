// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QIcon>
#include <iostream>
#include <vector>

#include "app/BundleInformation.h"
#include "app/MachinesUnfinished.h"
#include "app/desktop/Bytes.h"
#include "app/desktop/Colors.h"
#include "app/desktop/CommandLine.h"
#include "app/desktop/Desktop.h"
#include "app/desktop/StatusArea.h"
#include "app/desktop/Translations.h"
#include "app/desktop/background/HiddenStart.h"
#include "apps/Applications.h"
#include "engine/random/DrawSequence.h"
#include "platform/AccountFolders.h"
#include "platform/Clock.h"
#include "platform/Language.h"
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
    desktop::installTranslations(resources);
    desktop::keepOutlinesVisible();
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
    const BundleInformationFile bundleFile(resources + "/Info.plist");
    desktop::HiddenStart bundle(bundleFile, line.isHidden);
    const auto medium = platform::makeMediumInspector();
    desktop::StatusArea statusArea;
    desktop::LauncherEntry launcher;
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
                              .unfinishedFolders = [&unfinished] { return unfinished.count(); },
                              // The worker's own, since the other is the main thread's.
                              .forgetFinished = [] { MachinesUnfinished().forgetGone(); },
                              .launcher = &launcher,
                              .sessionBus = QDBusConnection::sessionBus(),
                              .startsHidden = line.isHidden});
    statusArea.watch([&program] { program.checkStatusArea(); });
    using desktop::SingleInstance;
    const auto home = platform::isHomeDirectoryTheAccounts() ? SingleInstance::Home::accounts
                                                             : SingleInstance::Home::another;
    const desktop::InstanceHandlers handlers = program.instanceHandlers();
    if (instance.claim(handlers, home) == SingleInstance::Role::second) {
        // A session that starts the program again brings no window up.
        if (line.isHidden && line.files.empty() && line.action.empty()) return 0;
        const bool taken = line.asks ? instance.handOverToAsk(line.files)
                                     : instance.handOver(line.files, line.action);
        return taken ? 0 : 1;
    }
    const auto quitSignals = platform::catchQuitSignals([&program] { program.askToQuit(); });
    if (line.asks) handlers.ask(line.files);  // once the launch is through
    const auto atOnce = line.asks ? std::vector<std::string>() : line.files;
    return program.runFromLaunch(atOnce, line.action) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    platform::prepareProcess();
    // The command line is read before the toolkit is there, which needs a display.
    const std::string resources = platform::resourcesFolder();
    platform::speakLanguageOfEnvironment(resources + "/locale");
    int status = 0;
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto line = desktop::readCommandLine(arguments, std::cout, std::cerr, status);
    if (!line) return status;
    if (const auto entered = platform::becomeOwnerOfHome(); !entered) {
        std::cerr << "dorvanel-x: " << desktop::displayText(entered.error().message()).toStdString()
                  << '\n';
        return 2;
    }

    // Where the locale writes no UTF-8, the toolkit may speak its language all the same.
    platform::lookForTranslationsIn(resources + "/locale");
    argc = 1;  // the files are ours to read, not the toolkit's
    QApplication application(argc, argv);
    setUp(application, resources);
    desktop::SingleInstance instance(platform::homeDirectory());
    return runProgram(*line, instance);
}
