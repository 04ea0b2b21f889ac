// SPDX-License-Identifier: MIT
#include "app/terminal/OutcomeText.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <ostream>
#include <system_error>

#include "app/Texts.h"

namespace dorvanel::terminal {
namespace {

std::uint64_t troublesOf(const Outcome& outcome) {
    return outcome.notOverwritten + outcome.notRemoved + outcome.notVerified + outcome.notFlushed +
           outcome.vanished + outcome.notCleaned;
}

/// What cannot be done, each a sentence that a language can put in its own order.
constexpr const char* failures[] = {marked("could not chmod: {}"),
                                    marked("could not chown: {}"),
                                    marked("could not clean: {}"),
                                    marked("could not create: {}"),
                                    marked("could not find: {}"),
                                    marked("could not find its traces: {}"),
                                    marked("could not look for mentions: {}"),
                                    marked("could not make folder: {}"),
                                    marked("could not flush: {}"),
                                    marked("could not fsync: {}"),
                                    marked("could not list: {}"),
                                    marked("could not lock: {}"),
                                    marked("could not look at: {}"),
                                    marked("could not look into: {}"),
                                    marked("could not move: {}"),
                                    marked("could not open: {}"),
                                    marked("could not overwrite: {}"),
                                    marked("could not read: {}"),
                                    marked("could not remove: {}"),
                                    marked("could not rename: {}"),
                                    marked("could not replace: {}"),
                                    marked("could not stat: {}"),
                                    marked("could not truncate: {}"),
                                    marked("could not verify: {}"),
                                    marked("could not write: {}")};

std::string textOf(const std::string& operation, const std::string& reason) {
    const auto isIt = [&](const char* text) { return "could not " + operation + ": {}" == text; };
    const auto* known = std::ranges::find_if(failures, isIt);
    return known == std::end(failures) ? tr("could not {}: {}", operation, reason)
                                       : tr(*known, reason);
}

}  // namespace

void tellOutcome(const Outcome& outcome, Terminal& terminal) {
    for (const Outcome::Trouble& trouble : outcome.troubles) {
        const std::string reason =
            trouble.reason.empty() ? std::generic_category().message(trouble.code) : trouble.reason;
        const std::string text = textOf(trouble.operation, reason);
        terminal.complain(trouble.path.empty() ? text : trouble.path + ": " + text);
    }
    if (outcome.notOverwritten > 0) {
        terminal.complain(trn("{} file not wholly overwritten", "{} files not wholly overwritten",
                              outcome.notOverwritten));
    }
    if (outcome.notRemoved > 0) {
        terminal.complain(trn("{} item still there", "{} items still there", outcome.notRemoved));
    }
    if (outcome.notVerified > 0) {
        terminal.complain(trn("{} file read back otherwise or not at all",
                              "{} files read back otherwise or not at all", outcome.notVerified));
    }
    if (outcome.notFlushed > 0) {
        terminal.complain(trn("{} file overwritten, but perhaps not on the medium",
                              "{} files overwritten, but perhaps not on the medium",
                              outcome.notFlushed));
    }
    if (outcome.vanished > 0) {
        terminal.complain(trn("{} item vanished before its turn",
                              "{} items vanished before their turn", outcome.vanished));
    }
    if (outcome.notCleaned > 0) {
        terminal.complain(trn("{} place could not be cleaned", "{} places could not be cleaned",
                              outcome.notCleaned));
    }
    for (const std::string& path : outcome.left) {
        terminal.complain(tr("left: {}", path));
    }

    const char* whole = outcome.stopped
                            ? marked("{}: {} overwritten ({}), {} and {} removed; stopped")
                            : marked("{}: {} overwritten ({}), {} and {} removed");
    terminal.out << tr(whole, trn("{} item", "{} items", outcome.items),
                       trn("{} file", "{} files", outcome.filesOverwritten),
                       trn("{} byte", "{} bytes", outcome.bytesOverwritten),
                       trn("{} file", "{} files", outcome.filesRemoved),
                       trn("{} folder", "{} folders", outcome.foldersRemoved))
                 << '\n'
                 << std::flush;
    if (outcome.filesVerified > 0) {
        terminal.out << trn("{} file verified", "{} files verified", outcome.filesVerified) << '\n'
                     << std::flush;
    }
    if (outcome.filesCleaned > 0) {
        terminal.out << trn("{} file cleaned ({} removed)", "{} files cleaned ({} removed)",
                            outcome.filesCleaned, trn("{} row", "{} rows", outcome.rowsRemoved))
                     << '\n'
                     << std::flush;
    }
}

ExitStatus statusOf(const Outcome& outcome) {
    if (outcome.stopped) return ExitStatus::interrupted;
    return troublesOf(outcome) > 0 || !outcome.left.empty() ? ExitStatus::incomplete
                                                            : ExitStatus::done;
}

}  // namespace dorvanel::terminal
