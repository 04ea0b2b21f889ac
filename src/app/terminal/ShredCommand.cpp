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
#include "platform/CleaningCalls.h"
#include "platform/QuitSignals.h"
#include "run/MentionsOfItems.h"

namespace dorvanel::terminal {
namespace {

using Paths = std::vector<std::string>;

struct Options {
    Paths paths;
    bool mentions = false;    ///< also what the desktop remembers of the files
    bool noMentions = false;  ///< not that, whatever the preferences say
    bool verifies = false;    ///< what was overwritten is read back
    [[nodiscard]] bool wantsMentions(const PreferenceReader& preferences) const {
        return !noMentions && (mentions || preferences.boolForKey("ShredMentions"));
    }
};

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

ExitStatus shred(Terminal& terminal, const Options& options) {
    const std::unique_ptr<platform::SystemCalls> system = platform::makeSystemCalls();
    std::optional<ShredArguments> items = checked(terminal, options.paths, *system);
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
    fileAccess.setVerifies(options.verifies);
    fileAccess.protect(std::move(items->protectedFolders));
    const auto cleaningCalls = platform::makeCleaningCalls();
    MentionsOfItems mentions({*system, *cleaningCalls, platform::systemClock()});
    const bool wantsMentions = options.wantsMentions(opened.preferences());
    Outcome outcome;
    tellMedium(items->items, terminal);
    {
        const auto signals =
            platform::catchQuitSignals([&fileAccess] { fileAccess.requestStop(); });
        if (!signals) {
            terminal.complain("signals cannot be caught: one would end this midway");
        }
        if (wantsMentions) {
            mentions.find(items->items, MentionsOfItems::Where::everywhere,
                          [&fileAccess] { return fileAccess.stopRequested(); });
        }
        fileAccess.shredItems(items->items);
        outcome = fileAccess.outcome();
        if (wantsMentions) mentions.shred(fileAccess, outcome);
    }
    bar.clear();
    tellOutcome(outcome, terminal);
    return statusOf(outcome);
}

}  // namespace

void addShredCommand(CLI::App& program, Action& chosen) {
    auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand("shred", "Shred files and folders now");
    command->fallthrough()
        ->add_option("PATH", options->paths,
                     "A file or a folder; after \"--\" it may begin with a dash")
        ->required();
    command->add_flag("--verify", options->verifies, "Read back what was overwritten");
    CLI::Option* mentions = command->add_flag(
        "--mentions", options->mentions,
        "Also thumbnails of the files, and their entries in lists of recent documents");
    command
        ->add_flag("--no-mentions", options->noMentions, "Not those, whatever ShredMentions says")
        ->excludes(mentions);
    command->callback([&chosen, options] {
        chosen = [options](Terminal& terminal) { return shred(terminal, *options); };
    });
}

}  // namespace dorvanel::terminal
