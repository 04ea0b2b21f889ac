// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <string>

#include "app/terminal/Commands.h"
#include "app/terminal/MachineServices.h"
#include "app/terminal/RunReportText.h"
#include "engine/FileAccess.h"
#include "platform/QuitSignals.h"
#include "run/ShreddingRun.h"

namespace dorvanel::terminal {
namespace {

struct Options {
    std::string then;
    bool yes = false;
};

const std::map<std::string, void (Controller::*)()>& endings() {
    static const std::map<std::string, void (Controller::*)()> actions = {
        {"", &Controller::shredAndNothing},
        {"logout", &Controller::shredAndLogout},
        {"shutdown", &Controller::shredAndShutdown},
        {"restart", &Controller::shredAndRestart},
    };
    return actions;
}

ExitStatus run(Terminal& terminal, const Options& options) {
    OpenedPreferences opened(terminal);
    if (!opened.preferences().areKnown()) return ExitStatus::notInitiated;
    const auto machine = MachineServices::make(terminal);  // its loop is never entered: no timer
    if (machine == nullptr) return ExitStatus::notInitiated;
    UnseenLabel status;
    TerminalSession session(
        terminal, opened, machine->services(),
        options.yes ? TerminalAlertPanel::Answers::assumed : TerminalAlertPanel::Answers::asked,
        status);
    Controller& controller = session.controller();
    RunReport report;
    report.result = RunResult::givenUp;  // where a signal comes before the run begins
    session.onRunEnded = [&report](const RunReport& ended) { report = ended; };
    {
        const auto signals = platform::catchQuitSignals([&session, &controller] {
            controller.fileAccessInstance().requestStop();
            session.requestQuit();
        });
        if (!signals) {
            terminal.complain("signals cannot be caught: out of threads or descriptors");
            return ExitStatus::notInitiated;
        }
        controller.applicationDidFinishLaunching();
        if (!controller.isQuitting()) (controller.*endings().at(options.then))();
        controller.run().waitForWorker();
    }
    session.clearProgress();
    session.tellPendingReports();
    controller.applicationShouldTerminate();
    const ExitStatus saved = opened.statusOf(controller.applicationWillTerminate());

    tellReport(report, opened.preferences().boolForKey("ActivityLog"), terminal);
    const ExitStatus result = statusOf(report);
    return result == ExitStatus::done ? saved : result;
}

}  // namespace

void addRunCommand(CLI::App& program, Action& chosen) {
    auto options = std::make_shared<Options>();
    CLI::App* command =
        program.add_subcommand("run", "Shred the traces that the preferences select");
    command->fallthrough();
    command->add_option("--then", options->then, "End with this")
        ->type_name("logout|shutdown|restart")
        ->check(CLI::IsMember({"logout", "shutdown", "restart"}));
    command->add_flag("--yes", options->yes, "Answer \"Yes\" and \"OK\" without asking");
    command->callback([&chosen, options] {
        chosen = [options](Terminal& terminal) { return run(terminal, *options); };
    });
}

}  // namespace dorvanel::terminal
