// SPDX-License-Identifier: MIT
#include "app/terminal/TrashCommand.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>

#include "app/ShredArguments.h"
#include "app/terminal/Commands.h"
#include "app/terminal/MediumText.h"
#include "app/terminal/OpenedPreferences.h"
#include "app/terminal/OutcomeText.h"
#include "app/terminal/ProgressBar.h"
#include "app/terminal/SizeText.h"
#include "app/terminal/TerminalAlertPanel.h"
#include "engine/FileAccess.h"
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
    OpenedPreferences opened(terminal);
    if (!opened.areKnown()) return ExitStatus::usage;
    const std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    const std::unique_ptr<platform::CleaningCalls> cleaningCalls = platform::makeCleaningCalls();
    Result<ShredArguments> home = checkShredArguments({}, *system);
    if (!home) {
        terminal.complain(home.error().message());
        return ExitStatus::usage;
    }
    const std::unique_ptr<DrawSequence> draws = makeDrawSequence();
    FileAccess* engine = nullptr;
    ProgressBar bar(terminal, platform::systemClock(), [&engine] {
        return ProgressBytes{engine->deepShreddedSize(), engine->deepPathSize()};
    });
    FileAccess fileAccess({*system, platform::systemClock(), *draws}, opened.preferences(), bar,
                          bar.fileName());
    engine = &fileAccess;
    fileAccess.setVerifies(options.verifies);
    fileAccess.protect(std::move(home.value().protectedFolders));

    TrashShredding trash({*system, *cleaningCalls, platform::systemClock()});
    Outcome outcome;
    {
        // From before the question on: a signal then ends the wait for an answer, which is no.
        const auto signals = platform::catchQuitSignals([&fileAccess, &terminal] {
            fileAccess.requestStop();
            terminal.in.interrupt();
        });
        if (!signals) {
            terminal.complain("signals cannot be caught: one would end this midway");
        }
        trash.find(userDataFolder(), mountPoints,
                   [&fileAccess] { return fileAccess.stopRequested(); });
        if (trash.isEmpty() && trash.plan().skipped.empty()) {
            terminal.out << "Nothing is in the trash\n" << std::flush;
            return ExitStatus::done;
        }
        std::vector<std::string> paths;
        for (const PlanItem& item : trash.plan().items) paths.push_back(item.path);
        tellMedium(paths, terminal);
        if (!trash.isEmpty() && !isConfirmed(terminal, options, opened.preferences(), trash)) {
            return fileAccess.stopRequested() ? ExitStatus::interrupted : ExitStatus::cancelled;
        }
        outcome = trash.shred(fileAccess);
    }
    bar.clear();
    tellOutcome(outcome, terminal);
    return statusOf(outcome);
}

void addTrashCommand(CLI::App& program, Action& chosen) {
    auto options = std::make_shared<TrashOptions>();
    CLI::App* command = program.add_subcommand("trash", "Shred what is in the trash");
    command->fallthrough()->add_flag("--yes", options->yes, "Answer \"Yes\" without asking");
    command->add_flag("--verify", options->verifies, "Read back what was overwritten");
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
