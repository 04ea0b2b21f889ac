// SPDX-License-Identifier: MIT
#include "app/terminal/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <optional>
#include <span>

#include "app/CommandLineWords.h"
#include "app/Texts.h"
#include "app/terminal/Commands.h"
#include "platform/AccountFolders.h"
#include "platform/UserSwitch.h"

namespace dorvanel::terminal {
namespace {

/// Help and version go to `out`, complaints to `err`.
ExitStatus tell(const CLI::App& program, const CLI::ParseError& outcome, Terminal& terminal) {
    if (outcome.get_exit_code() != 0) {
        terminal.complain(outcome.what());
        terminal.complain(tr("\"dorvanel --help\" tells how it is used"));
        return ExitStatus::usage;
    }
    program.exit(outcome, terminal.out, terminal.err);
    return ExitStatus::done;
}

using Words = std::vector<std::string>;

/// Words of the parser's own, in the language of the person; those of its complaints stay as it has
/// them.
void speakOfHelp(CLI::App& program) {
    program.set_help_flag("-h,--help", tr("Print this help message and exit"));
    program.option_defaults()->group(tr("Options"));
    program.group(tr("Subcommands"));
    const auto& formatter = program.get_formatter();
    formatter->label("Usage", tr("Usage"));
    formatter->label("OPTIONS", tr("OPTIONS"));
    formatter->label("SUBCOMMAND", tr("SUBCOMMAND"));
    formatter->label("SUBCOMMANDS", tr("SUBCOMMANDS"));
    formatter->label("Positionals", tr("Positionals"));
    formatter->label("REQUIRED", tr("REQUIRED"));
    formatter->label("Excludes", tr("Excludes"));
}

/// Puts the option for help of each command beside its others: a command has it before these have
/// a name for their group.
void groupHelp(CLI::App& command) {
    command.get_help_ptr()->group(tr("Options"));
    for (CLI::App* inner : command.get_subcommands([](CLI::App*) { return true; })) {
        groupHelp(*inner);
    }
}

/// All but the one that is started most often, and is not to wait for what it does not use.
void addOtherCommands(CLI::App& program, Action& chosen) {
    addRecoverCommand(program, chosen);
    addWatchCommand(program, chosen);
    addRunCommand(program, chosen);
    addPrefsCommand(program, chosen);
    addAppsCommand(program, chosen);
    addProfilesCommand(program, chosen);
    addTracesCommand(program, chosen);
    addTrashCommand(program, chosen);
    addLogCommand(program, chosen);
}

/// Whether anything but the home folder is said before the command: the help lists all commands.
bool asksBefore(std::span<const std::string> words) {
    return !words.empty() && (words.size() != 2 || words.front() != "--home");
}

/// The word that names the command.
Words::const_iterator commandOf(const Words& arguments) {
    auto word = arguments.begin();
    while (word != arguments.end() && word->starts_with('-')) {
        const bool takesOne = *word == "--home" && word + 1 != arguments.end();
        word += takesOne ? 2 : 1;
    }
    return word;
}

}  // namespace

std::optional<Command> readCommandLine(const std::vector<std::string>& arguments,
                                       Terminal& terminal, ExitStatus& ended) {
    CLI::App program(tr("Shreds files for good: their contents are overwritten before they go."),
                     "dorvanel");
    speakOfHelp(program);
    Command command;
    Action& chosen = command.action;
    program.require_subcommand(0, 1);  // an unknown command is then told by its name
    program.set_version_flag("--version", "dorvanel " DORVANEL_VERSION,
                             tr("Display program version information and exit"));
    program.add_option("--home", command.home, tr("Use DIR as the home folder"))->type_name("DIR");
    const auto first = commandOf(arguments);
    const bool isShred = first != arguments.end() && *first == "shred";
    addShredCommand(program, chosen);
    if (!isShred || asksBefore({arguments.begin(), first})) addOtherCommands(program, chosen);
    groupHelp(program);

    const bool takesNames = isShred || (first != arguments.end() && *first == "recover");
    const auto named = takesNames ? first : arguments.end();
    if (isShred && asksAmongFileNames({first + 1, arguments.end()})) {
        terminal.complain(
            tr("help or version among the files: a file of such a name is shredded behind \"--\""));
        ended = ExitStatus::usage;
        return std::nullopt;
    }
    std::vector<std::string> words(arguments.begin(), named);
    std::ranges::copy(plainFileNames({named, arguments.end()}), std::back_inserter(words));
    std::reverse(words.begin(), words.end());  // as the parser wants them
    try {
        program.parse(std::move(words));
        if (!chosen) throw CLI::RequiredError("A command");
    } catch (const CLI::ParseError& outcome) {
        ended = tell(program, outcome, terminal);
        return std::nullopt;
    }
    // What root shreds may be anybody's; everything else is one person's own.
    command.keepsRights = program.got_subcommand("shred");
    return command;
}

namespace {

/// Settles whose home folder it is, and who works in it.
Result<Done> enterHome(const Command& command) {
    Result<Done> entered =
        command.home ? platform::useHomeDirectory(*command.home) : platform::checkHomeDirectory();
    if (entered && !command.keepsRights) entered = platform::becomeOwnerOfHome();
    return entered;
}

}  // namespace

ExitStatus runCommandLine(const std::vector<std::string>& arguments, Terminal& terminal) {
    ExitStatus ended = ExitStatus::done;
    const std::optional<Command> command = readCommandLine(arguments, terminal, ended);
    if (!command) return ended;
    const Result<Done> entered = enterHome(*command);
    if (!entered) {
        terminal.complain(entered.error().message());
        return ExitStatus::usage;
    }
    return command->action(terminal);
}

}  // namespace dorvanel::terminal
