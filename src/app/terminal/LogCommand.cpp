// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <system_error>

#include "app/Texts.h"
#include "app/terminal/Commands.h"
#include "log/ActivityLog.h"

namespace dorvanel::terminal {
namespace {

/// For a person, line by line: the names in the log are whatever somebody called a file.
void printEscaped(std::istream& log, Terminal& terminal) {
    std::string line;
    while (std::getline(log, line)) terminal.out << terminal.forOut(line) << '\n';
}

void printAsItIs(std::istream& log, Terminal& terminal) {
    std::array<char, 65536> buffer;
    while (log.read(buffer.data(), buffer.size()) || log.gcount() > 0) {
        terminal.out.write(buffer.data(), log.gcount());
    }
}

ExitStatus print(Terminal& terminal) {
    const std::string path = activityLogPath();
    if (path.empty()) {
        terminal.complain(tr("there is no Activity Log: HOME is not set"));
        return ExitStatus::done;
    }
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    if (std::filesystem::is_other(status)) {  // a pipe, say, which nobody might ever write to
        terminal.complain(tr("{}: not a regular file", path));
        return ExitStatus::incomplete;
    }
    errno = 0;
    std::ifstream log(path, std::ios::binary);
    if (!log && errno == ENOENT) {
        terminal.complain(tr("there is no Activity Log yet: {}", path));
        return ExitStatus::done;
    }
    if (log) terminal.outIsTerminal ? printEscaped(log, terminal) : printAsItIs(log, terminal);
    if (log.eof()) return ExitStatus::done;
    terminal.complain(path + ": " + std::generic_category().message(errno));
    return ExitStatus::incomplete;
}

}  // namespace

void addLogCommand(CLI::App& program, Action& chosen) {
    program.add_subcommand("log", tr("Print the Activity Log"))->fallthrough()->callback([&chosen] {
        chosen = print;
    });
}

}  // namespace dorvanel::terminal
