// SPDX-License-Identifier: MIT
#include "app/terminal/RunReportText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <ostream>

#include "app/Texts.h"
#include "app/terminal/OutcomeText.h"
#include "log/ActivityLog.h"

namespace dorvanel::terminal {
namespace {

const char* textOf(Refusal refusal) {
    switch (refusal) {
        case Refusal::atWork:
            return marked("not initiated: another request is at work; nothing was shredded");
        case Refusal::quitting:
            return marked("not initiated: the program is about to quit; nothing was shredded");
        case Refusal::preferencesUnknown:
            return marked("not initiated: the preferences cannot be read; nothing was shredded");
        case Refusal::noThread:
            return marked("not initiated: the machine has no thread to give; nothing was shredded");
        case Refusal::none:
            break;
    }
    return marked("not initiated; nothing was shredded");
}

void tellLog(bool wroteLog, Terminal& terminal) {
    const std::optional<Error> trouble = activityLogTrouble();
    if (wroteLog && !trouble) {
        terminal.out << tr("Activity Log: {}", terminal.forOut(activityLogPath())) << '\n';
    }
    // Also where nothing was to be written: the log of the run before should be empty now.
    if (trouble && (wroteLog || !activityLogPath().empty())) {
        terminal.complain(tr("no Activity Log: {}", trouble->message()));
    }
}

}  // namespace

void tellReport(const RunReport& report, bool wroteLog, Terminal& terminal) {
    switch (report.result) {
        case RunResult::completed:
            tellOutcome(report.outcome, terminal);
            break;
        case RunResult::nothingSelected:
            terminal.out << tr("nothing selected to shred") << '\n';
            break;
        case RunResult::cancelled:
            terminal.complain(tr("cancelled; nothing was shredded"));
            break;
        case RunResult::givenUp:
            terminal.complain(tr("ended by a signal; nothing was shredded"));
            break;
        case RunResult::notInitiated:
            terminal.complain(tr(textOf(report.refusal)));
            break;
    }
    for (const std::string& fault : report.catalogueFaults) terminal.complain(fault);
    if (report.listingUnknown) {
        terminal.complain(
            tr("the processes could not be listed: every application may be running"));
    }
    if (!report.skipped.empty()) {
        terminal.out << tr("not touched, because running: {}",
                           fmt::format("{}", fmt::join(report.skipped, ", ")))
                     << '\n';
    }
    tellLog(wroteLog, terminal);
    terminal.out << std::flush;
}

ExitStatus statusOf(const RunReport& report) {
    switch (report.result) {
        case RunResult::completed:
            return report.endingStruck ? ExitStatus::interrupted : statusOf(report.outcome);
        case RunResult::nothingSelected:
            return ExitStatus::done;
        case RunResult::cancelled:
            return ExitStatus::cancelled;
        case RunResult::givenUp:
            return ExitStatus::interrupted;
        case RunResult::notInitiated:
            break;
    }
    return ExitStatus::notInitiated;
}

}  // namespace dorvanel::terminal
