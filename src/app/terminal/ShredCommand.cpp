// SPDX-License-Identifier: MIT
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>
#include <system_error>

#include "app/MachinesUnfinished.h"
#include "app/ShredArguments.h"
#include "app/terminal/Commands.h"
#include "app/terminal/MediumText.h"
#include "app/terminal/OpenedPreferences.h"
#include "app/terminal/OutcomeText.h"
#include "app/terminal/ProgressBar.h"
#include "app/terminal/UnfinishedText.h"
#include "engine/FileAccess.h"
#include "platform/QuitSignals.h"

namespace dorvanel::terminal {
namespace {

using Paths = std::vector<std::string>;

/// What to shred, held; nothing, and every reason told, when some of it must not be touched.
std::optional<ShredArguments> checked(Terminal& terminal, const Paths& arguments,
                                      platform::SystemCalls& system) {
    Result<ShredArguments> items = checkShredArguments(arguments, system);
    if (!items) {
        terminal.complain(items.error().message());
        return std::nullopt;
    }
    for (const ShredArguments::Complaint& complaint : items.value().complaints) {
        terminal.complain("\"" + complaint.argument + "\" " + complaint.reason);
    }
    if (!items.value().complaints.empty()) return std::nullopt;
    return std::move(items.value());
}

ExitStatus shred(Terminal& terminal, const Paths& arguments) {
    const std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    std::optional<ShredArguments> items = checked(terminal, arguments, *system);
    if (!items) return ExitStatus::usage;

    OpenedPreferences opened(terminal);
    if (!opened.areKnown()) return ExitStatus::usage;
    const std::unique_ptr<DrawSequence> draws = makeDrawSequence();
    FileAccess* engine = nullptr;
    ProgressBar bar(terminal, platform::systemClock(), [&engine] {
        return ProgressBytes{engine->deepShreddedSize(), engine->deepPathSize()};
    });
    MachinesUnfinished unfinished;
    unfinished.record().onTrouble = [&](const Error& error) {
        bar.clear();
        tellNotWrittenDown(error, terminal);
    };
    FileAccess fileAccess({*system, platform::systemClock(), *draws, &unfinished.record()},
                          opened.preferences(), bar, bar.fileName());
    engine = &fileAccess;
    fileAccess.protect(std::move(items->protectedFolders));
    tellMedium(items->items, terminal);
    {
        const auto signals =
            platform::catchQuitSignals([&fileAccess] { fileAccess.requestStop(); });
        if (!signals) {
            terminal.complain("signals cannot be caught: one would end this midway");
        }
        fileAccess.shredItems(items->items);
    }
    bar.clear();
    tellOutcome(fileAccess.outcome(), terminal);
    return statusOf(fileAccess.outcome());
}

}  // namespace

void addShredCommand(CLI::App& program, Action& chosen) {
    auto paths = std::make_shared<Paths>();
    CLI::App* command = program.add_subcommand("shred", "Shred files and folders now");
    command->fallthrough()
        ->add_option("PATH", *paths, "A file or a folder; after \"--\" it may begin with a dash")
        ->required();
    command->callback([&chosen, paths] {
        chosen = [paths](Terminal& terminal) { return shred(terminal, *paths); };
    });
}

}  // namespace dorvanel::terminal
