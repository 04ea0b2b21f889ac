#include "app/terminal/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <optional>

#include "app/terminal/Commands.h"
#include "platform/AccountFolders.h"

namespace dorvanel::terminal {
namespace {

/// The parser takes a word in brackets for a list of words: a file named "[a,b]" would become the
/// files "a" and "b". With "./" before it, it names the same file and is left alone.
std::vector<std::string> withoutLists(std::vector<std::string> words) {
    for (std::string& word : words) {
        if (word.starts_with('[') && word.ends_with(']')) word.insert(0, "./");
    }
    return words;
}

/// Help and version go to `out`, complaints to `err`.
ExitStatus tell(const CLI::App& program, const CLI::ParseError& outcome, Terminal& terminal) {
    if (outcome.get_exit_code() != 0) {
        terminal.complain(outcome.what());
        terminal.complain("\"dorvanel --help\" tells how it is used");
        return ExitStatus::usage;
    }
    program.exit(outcome, terminal.out, terminal.err);
    return ExitStatus::done;
}

}  // namespace

ExitStatus runCommandLine(const std::vector<std::string>& arguments, Terminal& terminal) {
    CLI::App program("Shreds files for good: their contents are overwritten before they go.",
                     "dorvanel");
    Action chosen;
    std::optional<std::string> home;
    program.require_subcommand(1);
    program.set_version_flag("--version", "dorvanel " DORVANEL_VERSION);
    program.add_option("--home", home, "Use DIR as the home folder")->type_name("DIR");
    addShredCommand(program, chosen);
    addWatchCommand(program, chosen);
    addRunCommand(program, chosen);
    addPrefsCommand(program, chosen);
    addAppsCommand(program, chosen);
    addLogCommand(program, chosen);

    std::vector<std::string> words = withoutLists(arguments);
    std::reverse(words.begin(), words.end());  // as the parser wants them
    try {
        program.parse(std::move(words));
    } catch (const CLI::ParseError& outcome) {
        return tell(program, outcome, terminal);
    }
    if (home) {
        const platform::Result<platform::Done> used = platform::useHomeDirectory(*home);
        if (!used) {
            terminal.complain(used.error().message());
            return ExitStatus::usage;
        }
    }
    return chosen(terminal);
}

}  // namespace dorvanel::terminal
