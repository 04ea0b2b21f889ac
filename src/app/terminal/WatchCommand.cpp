// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <atomic>
#include <memory>

#include "app/Texts.h"
#include "app/terminal/Commands.h"
#include "app/terminal/MachineServices.h"
#include "app/terminal/RunReportText.h"
#include "app/terminal/UnfinishedText.h"
#include "engine/FileAccess.h"
#include "platform/QuitSignals.h"
#include "run/ShreddingRun.h"

namespace dorvanel::terminal {
namespace {

ExitStatus watch(Terminal& terminal, bool yes) {
    OpenedPreferences opened(terminal);
    if (!opened.preferences().areKnown()) return ExitStatus::notInitiated;
    const auto machine = MachineServices::make(terminal);
    if (machine == nullptr) return ExitStatus::incomplete;
    tellUnfinished(machine->unfinished().count(), terminal);
    StatusLine status(terminal);
    TerminalSession session(
        terminal, opened, machine->services(),
        yes ? TerminalAlertPanel::Answers::assumed : TerminalAlertPanel::Answers::asked, status);
    Controller& controller = session.controller();

    // Standard output is for the status texts alone: what a run did goes to standard error.
    Terminal report{.out = terminal.err,
                    .err = terminal.err,
                    .in = terminal.in,
                    .outIsTerminal = true,
                    .errIsTerminal = terminal.errIsTerminal,
                    .columns = terminal.columns};
    session.onRunEnded = [&](const RunReport& ended) {
        tellReport(ended, opened.preferences().boolForKey("ActivityLog"), report);
    };
    {
        std::atomic<int> requests = 0;
        const auto signals = platform::catchQuitSignals([&] {
            if (++requests > 1) controller.fileAccessInstance().requestStop();
            session.requestQuit();
        });
        if (!signals) {
            terminal.complain(tr("signals cannot be caught: out of threads or descriptors"));
            return ExitStatus::notInitiated;
        }
        status.onGone = [&session] { session.requestQuit(); };
        controller.applicationDidFinishLaunching();
        machine->runLoop().run();
        controller.run().waitForWorker();
    }
    session.tellPendingReports();
    return opened.statusOf(controller.applicationWillTerminate());
}

}  // namespace

void addWatchCommand(CLI::App& program, Action& chosen) {
    auto yes = std::make_shared<bool>(false);
    CLI::App* command = program.add_subcommand(
        "watch", tr("Follow the supported applications and shred when one quits, until a signal"));
    command->fallthrough()->add_flag("--yes", *yes, tr("Answer \"Yes\" and \"OK\" without asking"));
    command->callback(
        [&chosen, yes] { chosen = [yes](Terminal& terminal) { return watch(terminal, *yes); }; });
}

}  // namespace dorvanel::terminal
