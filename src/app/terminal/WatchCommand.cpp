#include <CLI/CLI.hpp>
#include <atomic>
#include <memory>

#include "app/terminal/Commands.h"
#include "app/terminal/RunReportText.h"
#include "app/terminal/TerminalSession.h"
#include "platform/QuitSignals.h"
#include "platform/QuitWait.h"
#include "platform/Worker.h"

namespace dorvanel::terminal {
namespace {

ExitStatus watch(Terminal& terminal, bool yes) {
    OpenedPreferences opened(terminal);
    if (!opened.preferences().areKnown()) return ExitStatus::notInitiated;
    const auto loop = platform::makeRunLoop();
    if (loop == nullptr) {
        terminal.complain("no main loop: out of descriptors");
        return ExitStatus::incomplete;
    }
    const auto listing = platform::makeProcessListing();
    const auto processes = platform::makeProcessManager();
    const auto events = platform::makeSystemEvents();
    const auto quitWait = platform::makeQuitWait();
    const auto system = platform::makeSystemCalls();
    const auto worker = platform::makeWorker();
    StatusLine status(terminal);
    TerminalSession session(
        terminal, opened,
        {*system, platform::systemClock(), *loop, *listing, *processes, *events, *quitWait,
         *worker},
        yes ? TerminalAlertPanel::Answers::assumed : TerminalAlertPanel::Answers::asked, status);
    Controller& controller = session.controller();

    // Standard output is for the status texts alone: what a run did goes to standard error.
    Terminal report{terminal.err, terminal.err,           terminal.in,
                    true,         terminal.errIsTerminal, terminal.columns};
    session.onRunEnded = [&](const RunReport& ended) {
        tellReport(ended, opened.preferences().boolForKey("ActivityLog"), report);
    };
    {
        std::atomic<int> requests = 0;
        const auto signals = platform::catchQuitSignals([&] {
            if (++requests > 1) controller.fileAccessInstance().requestStop();
            session.requestQuit();
        });
        if (signals == nullptr) {
            terminal.complain("signals cannot be caught: out of threads or descriptors");
            return ExitStatus::notInitiated;
        }
        status.onGone = [&session] { session.requestQuit(); };
        controller.applicationDidFinishLaunching();
        loop->run();
        controller.run().waitForWorker();
    }
    session.tellPendingReports();
    return opened.statusOf(controller.applicationWillTerminate());
}

}  // namespace

void addWatchCommand(CLI::App& program, Action& chosen) {
    auto yes = std::make_shared<bool>(false);
    CLI::App* command = program.add_subcommand(
        "watch", "Follow the supported applications and shred when one quits, until a signal");
    command->fallthrough()->add_flag("--yes", *yes, "Answer \"Yes\" and \"OK\" without asking");
    command->callback(
        [&chosen, yes] { chosen = [yes](Terminal& terminal) { return watch(terminal, *yes); }; });
}

}  // namespace dorvanel::terminal
