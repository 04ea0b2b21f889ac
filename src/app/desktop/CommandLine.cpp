// SPDX-License-Identifier: MIT
#include "app/desktop/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <ostream>
#include <system_error>

#include "app/CommandLineWords.h"
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
    complain("\"dorvanel-x --help\" tells how it is used", err);
    return 2;
}

}  // namespace

std::optional<CommandLine> readCommandLine(const std::vector<std::string>& arguments,
                                           std::ostream& out, std::ostream& err, int& status) {
    CLI::App program(
        "Dorvanel X shreds files, and the traces that browsers and mail programs leave",
        "dorvanel-x");
    program.set_version_flag("--version", std::string("dorvanel-x ") + DORVANEL_VERSION);
    CommandLine line;
    program.add_option("--action", line.action, "What the running program is to do")
        ->check(CLI::IsMember(
            {"shred", "shred-and-log-out", "shred-and-shut-down", "shred-and-restart"}));
    program.add_option(
        "FILE", line.files,
        "Shredded at once when the program starts; shown when it is running already");
    try {
        std::vector<std::string> words = plainFileNames(arguments);
        std::ranges::reverse(words);  // as the parser wants them
        program.parse(std::move(words));
    } catch (const CLI::ParseError& outcome) {
        status = tell(program, outcome, out, err);
        return std::nullopt;
    }
    for (std::string& file : line.files) {
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
