#include <CLI/CLI.hpp>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>

#include "app/terminal/Commands.h"
#include "app/terminal/RunReportText.h"
#include "app/terminal/TerminalSession.h"
#include "platform/QuitSignals.h"

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
    const auto loop = platform::makeRunLoop();  // never entered: no timer fires in a run
    if (loop == nullptr) {
        terminal.complain("no main loop: out of descriptors");
        return ExitStatus::notInitiated;
    }
    const auto listing = platform::makeProcessListing();
    const auto processes = platform::makeProcessManager();
    const auto events = platform::makeSystemEvents();
    UnseenLabel status;
    TerminalSession session(
        terminal, opened, {platform::systemClock(), *loop, *listing, *processes, *events},
        options.yes ? TerminalAlertPanel::Answers::assumed : TerminalAlertPanel::Answers::asked,
        status);
    Controller& controller = session.controller();
    {
        const auto signals = platform::catchQuitSignals([&controller] {
            // Nothing has been touched yet while the user or an application is waited for.
            if (controller.run().isWaitingForSomebody()) {
                std::_Exit(static_cast<int>(ExitStatus::interrupted));
            }
            controller.fileAccessInstance().requestStop();
        });
        controller.applicationDidFinishLaunching();
        (controller.*endings().at(options.then))();
        controller.run().waitForWorker();
    }
    session.clearProgress();
    controller.applicationShouldTerminate();
    const ExitStatus saved = opened.statusOf(controller.applicationWillTerminate());

    const RunReport report = session.report().value_or(RunReport{RunResult::notInitiated, {}, {}});
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
