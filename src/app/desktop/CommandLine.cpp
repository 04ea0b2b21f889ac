// SPDX-License-Identifier: MIT
#include "app/desktop/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <ostream>
#include <system_error>

#include "app/CommandLineWords.h"
#include "app/Texts.h"
#include "app/desktop/Bytes.h"

namespace dorvanel::desktop {
namespace {

/// Complaints may quote the name of a file, which could steer a terminal.
void complain(const std::string& text, std::ostream& err) {
    err << "dorvanel-x: " << displayText(text).toStdString() << '\n';
}

/// Help and version go to `out`, complaints to `err`.
int tell(const CLI::App& program, const CLI::ParseError& outcome, std::ostream& out,
         std::ostream& err) {
    if (outcome.get_exit_code() == 0) return program.exit(outcome, out, err);
    complain(outcome.what(), err);
    complain(tr("\"dorvanel-x --help\" tells how it is used"), err);
    return 2;
}

/// Words of the parser's own, in the language of the person; those of its complaints stay as it has
/// them.
void speakOfHelp(CLI::App& program) {
    program.option_defaults()->group(tr("Options"));
    program.set_help_flag("-h,--help", tr("Print this help message and exit"));
    const auto& formatter = program.get_formatter();
    formatter->label("Usage", tr("Usage"));
    formatter->label("OPTIONS", tr("OPTIONS"));
    formatter->label("Positionals", tr("Positionals"));
    formatter->label("Excludes", tr("Excludes"));
}

}  // namespace

std::optional<CommandLine> readCommandLine(const std::vector<std::string>& arguments,
                                           std::ostream& out, std::ostream& err, int& status) {
    CLI::App program(
        tr("Dorvanel X shreds files, and the traces that browsers and mail programs leave"),
        "dorvanel-x");
    speakOfHelp(program);
    program.set_version_flag("--version", "dorvanel-x " DORVANEL_VERSION,
                             tr("Display program version information and exit"));
    CommandLine line;
    auto* action =
        program.add_option("--action", line.action, tr("What the running program is to do"));
    action->check(
        CLI::IsMember({"shred", "shred-and-log-out", "shred-and-shut-down", "shred-and-restart"}));
    program.add_flag("--ask", line.asks, tr("Ask before the files are shredded, in any case"))
        ->excludes(action);
    program.add_flag("--hidden", line.isHidden,
                     tr("Start without the window, behind the icon in the status area"));
    program.add_option(
        "FILE", line.files,
        tr("Shredded at once when the program starts; shown when it is running already"));
    try {
        std::vector<std::string> words = plainFileNames(arguments);
        std::ranges::reverse(words);  // as the parser wants them
        program.parse(std::move(words));
    } catch (const CLI::ParseError& outcome) {
        status = tell(program, outcome, out, err);
        return std::nullopt;
    }
    // A launcher that may be started with files or without ends its own words with "--".
    if (line.asks && line.files.empty()) {
        line.asks = false;
        if (std::ranges::find(arguments, "--") == arguments.end()) {
            complain(tr("--ask needs a file to ask about"), err);
            status = 2;
            return std::nullopt;
        }
    }
    for (std::string& file : line.files) {
        // A file manager hands over URIs where it would not pass every name on unharmed.
        if (line.asks && file.starts_with("file:///")) {
            std::string path =
                pathOfUrl(QUrl::fromEncoded(QByteArray::fromStdString(file), QUrl::StrictMode));
            if (path.empty()) {
                complain(tr("\"{}\" names no file of this computer", file), err);
                status = 2;
                return std::nullopt;
            }
            file = std::move(path);
        }
        // Relative to where this launch stands, not the running program; links stay links.
        std::error_code error;
        const std::filesystem::path path = std::filesystem::absolute(file, error);
        if (error) {
            complain("\"" + file + "\": " + error.message(), err);
            status = 2;
            return std::nullopt;
        }
        file = path.lexically_normal().native();
    }
    return line;
}

}  // namespace dorvanel::desktop
