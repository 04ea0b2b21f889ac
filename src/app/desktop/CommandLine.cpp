#include "app/desktop/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <ostream>

namespace dorvanel::desktop {

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
        std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
        program.parse(std::move(reversed));
    } catch (const CLI::ParseError& error) {
        status = program.exit(error, out, err) == 0 ? 0 : 2;
        return std::nullopt;
    }
    for (std::string& file : line.files) {
        // Relative to where this launch stands, not the running program; links stay links.
        file = std::filesystem::absolute(file).lexically_normal().native();
    }
    return line;
}

}  // namespace dorvanel::desktop
