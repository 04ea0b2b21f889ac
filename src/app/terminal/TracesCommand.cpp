// SPDX-License-Identifier: MIT
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>
#include <string>

#include "app/terminal/Commands.h"
#include "apps/catalogue/Catalogue.h"
#include "platform/FileManager.h"

namespace dorvanel::terminal {
namespace {

using catalogue::Catalogue;
using catalogue::Problem;

/// "FILE:LINE: reason", without the line where the file as a whole is meant.
std::string textOf(const std::string& file, const Problem& problem) {
    return problem.line > 0 ? fmt::format("{}:{}: {}", file, problem.line, problem.reason)
                            : fmt::format("{}: {}", file, problem.reason);
}

std::string summaryOf(const catalogue::Entry& entry) {
    std::string kinds;
    for (const catalogue::Trace& trace : entry.traces) {
        kinds += (kinds.empty() ? "" : ", ") + trace.kind;
    }
    return fmt::format("{}: {}", entry.name, kinds);
}

ExitStatus check(Terminal& terminal, const std::string& file) {
    const Catalogue others =
        Catalogue::load(catalogue::catalogueFolders(), platform::defaultFileManager());
    const catalogue::ReadEntry read = catalogue::readFile(file, others);
    for (const Problem& problem : read.problems) terminal.complain(textOf(file, problem));
    if (!read.entry) return ExitStatus::incomplete;
    terminal.out << terminal.forOut(summaryOf(*read.entry)) << '\n';
    return ExitStatus::done;
}

}  // namespace

void addTracesCommand(CLI::App& program, Action& chosen) {
    auto file = std::make_shared<std::string>();
    CLI::App* traces =
        program.add_subcommand("traces", "Look at descriptions of where applications keep traces");
    traces->require_subcommand(1)->fallthrough();
    CLI::App* checker = traces->add_subcommand("check", "Say what is wrong with a description");
    checker->fallthrough()->add_option("FILE", *file, "The description, ID.toml")->required();
    checker->callback([&chosen, file] {
        chosen = [file](Terminal& terminal) { return check(terminal, *file); };
    });
}

}  // namespace dorvanel::terminal
