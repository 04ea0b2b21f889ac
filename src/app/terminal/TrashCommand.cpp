// SPDX-License-Identifier: MIT
#include "app/terminal/TrashCommand.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>

#include "app/MachinesPlanning.h"
#include "app/ShredArguments.h"
#include "app/SizeText.h"
#include "app/Texts.h"
#include "app/terminal/Commands.h"
#include "app/terminal/MediumText.h"
#include "app/terminal/OpenedPreferences.h"
#include "app/terminal/OutcomeText.h"
#include "app/terminal/TerminalAlertPanel.h"
#include "app/terminal/TerminalEngine.h"
#include "platform/CleaningCalls.h"
#include "platform/MountPoints.h"
#include "platform/QuitSignals.h"
#include "run/TrashShredding.h"
#include "targets/UserFolders.h"

namespace dorvanel::terminal {
namespace {

/// Whether the person wants it, who is asked where the preferences say so.
bool isConfirmed(Terminal& terminal, const TrashOptions& options,
                 const PreferenceReader& preferences, const TrashShredding& trash) {
    if (!preferences.boolForKey("ConfirmShredding")) return true;
    TerminalAlertPanel alerts(
        terminal.in, terminal.err,
        options.yes ? TerminalAlertPanel::Answers::assumed : TerminalAlertPanel::Answers::asked);
    const std::string message =
        fmt::format("Are you sure you want to shred these items: {} in the trash ({}) ?",
                    counted(trash.itemCount(), "item"), counted(trash.byteCount(), "byte"));
    return alerts.runAlertPanel("Dorvanel Confirmation", message, "No", "Yes", "") !=
           ui::AlertButton::defaultButton;
}

}  // namespace

ExitStatus shredTrash(Terminal& terminal, const TrashOptions& options,
                      const std::vector<std::string>& mountPoints) {
    Report report(terminal, options.report);
    Terminal& words = report.words();
    const bool onlyLooks = options.report.preview;
    OpenedPreferences opened(words, OpenedPreferences::Unreadable::stopsIt,
                             onlyLooks ? Saving::never : Saving::allowed);
    if (!opened.areKnown()) return ExitStatus::usage;
    const std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    const std::unique_ptr<platform::CleaningCalls> cleaningCalls = platform::makeCleaningCalls();
    Result<ShredArguments> home = checkShredArguments({}, *system);
    if (!home) {
        words.complain(home.error().message());
        return ExitStatus::usage;
    }
    MachinesUnfinished unfinished;
    TerminalEngine engine(words, *system, opened.preferences(), unfinished);
    FileAccess& access = engine.access();
    access.setVerifies(options.report.verifies);
    access.protect(home.value().protectedFolders);

    MachinesPlanning planning;
    TrashShredding trash({*system, *cleaningCalls, platform::systemClock()});
    Plan planned;
    Outcome outcome;
    {
        // From before the question on: a signal then ends the wait for an answer, which is no.
        const auto signals = platform::catchQuitSignals([&access, &terminal] {
            access.requestStop();
            terminal.in.interrupt();
        });
        if (!signals && !onlyLooks) {
            words.complain(tr("signals cannot be caught: one would end this midway"));
        }
        trash.find(userDataFolder(), mountPoints,
                   planning.parts(
                       *system, [&access] { return access.stopRequested(); },
                       home.value().protectedFolders));
        planned = trash.plan();
        if (onlyLooks) return report.preview(planned, access.stopRequested());
        if (trash.isEmpty() && planned.skipped.empty()) {
            words.out << tr("Nothing is in the trash") << '\n' << std::flush;
            return report.end(planned, ExitStatus::done);
        }
        std::vector<std::string> paths;
        for (const PlanItem& item : planned.items) paths.push_back(item.path);
        tellMedium(paths, words);
        if (!trash.isEmpty() && !isConfirmed(words, options, opened.preferences(), trash)) {
            const bool isStopped = access.stopRequested();
            return report.end(planned, isStopped ? ExitStatus::interrupted : ExitStatus::cancelled);
        }
        outcome = trash.shred(access);
    }
    engine.clearProgress();
    tellOutcome(outcome, words);
    if (options.report.json) addOutcome(planned, outcome);
    return report.end(planned, statusOf(outcome));
}

void addTrashCommand(CLI::App& program, Action& chosen) {
    auto options = std::make_shared<TrashOptions>();
    CLI::App* command = program.add_subcommand("trash", tr("Shred what is in the trash"));
    command->fallthrough()->add_flag("--yes", options->yes, tr("Answer \"Yes\" without asking"));
    addReportOptions(*command, options->report);
    addVerifyOption(*command, options->report);
    command->callback([&chosen, options] {
        chosen = [options](Terminal& terminal) {
            const Result<std::vector<std::string>> mounted = platform::mountPoints();
            if (mounted) return shredTrash(terminal, *options, mounted.value());
            terminal.complain(mounted.error().message());
            return ExitStatus::usage;
        };
    });
}

}  // namespace dorvanel::terminal
