// SPDX-License-Identifier: MIT
#include "app/terminal/OutcomeText.h"

#include <fmt/format.h>

#include <cstdint>
#include <ostream>
#include <system_error>

#include "app/SizeText.h"

namespace dorvanel::terminal {
namespace {

std::uint64_t troublesOf(const Outcome& outcome) {
    return outcome.notOverwritten + outcome.notRemoved + outcome.notFlushed + outcome.vanished +
           outcome.notCleaned;
}

}  // namespace

void tellOutcome(const Outcome& outcome, Terminal& terminal) {
    for (const Outcome::Trouble& trouble : outcome.troubles) {
        const std::string reason =
            trouble.reason.empty() ? std::generic_category().message(trouble.code) : trouble.reason;
        const char* separator = trouble.path.empty() ? "" : ": ";
        terminal.complain(fmt::format("{}{}could not {}: {}", trouble.path, separator,
                                      trouble.operation, reason));
    }
    if (outcome.notOverwritten > 0) {
        terminal.complain(counted(outcome.notOverwritten, "file") + " not wholly overwritten");
    }
    if (outcome.notRemoved > 0) {
        terminal.complain(counted(outcome.notRemoved, "item") + " still there");
    }
    if (outcome.notFlushed > 0) {
        terminal.complain(counted(outcome.notFlushed, "file") +
                          " overwritten, but perhaps not on the medium");
    }
    if (outcome.vanished > 0) {
        terminal.complain(fmt::format("{} vanished before {} turn",
                                      counted(outcome.vanished, "item"),
                                      outcome.vanished == 1 ? "its" : "their"));
    }
    if (outcome.notCleaned > 0) {
        terminal.complain(counted(outcome.notCleaned, "place") + " could not be cleaned");
    }
    for (const std::string& path : outcome.left) terminal.complain("left: " + path);

    terminal.out << fmt::format("{}: {} overwritten ({}), {} and {} removed{}\n",
                                counted(outcome.items, "item"),
                                counted(outcome.filesOverwritten, "file"),
                                counted(outcome.bytesOverwritten, "byte"),
                                counted(outcome.filesRemoved, "file"),
                                counted(outcome.foldersRemoved, "folder"),
                                outcome.stopped ? "; stopped" : "")
                 << std::flush;
    if (outcome.filesCleaned > 0) {
        terminal.out << fmt::format("{} cleaned ({} removed)\n",
                                    counted(outcome.filesCleaned, "file"),
                                    counted(outcome.rowsRemoved, "row"))
                     << std::flush;
    }
}

ExitStatus statusOf(const Outcome& outcome) {
    if (outcome.stopped) return ExitStatus::interrupted;
    return troublesOf(outcome) > 0 || !outcome.left.empty() ? ExitStatus::incomplete
                                                            : ExitStatus::done;
}

}  // namespace dorvanel::terminal
