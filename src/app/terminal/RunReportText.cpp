// SPDX-License-Identifier: MIT
#include "app/terminal/RunReportText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <ostream>

#include "app/terminal/OutcomeText.h"
#include "log/ActivityLog.h"

namespace dorvanel::terminal {
namespace {

const char* reasonOf(Refusal refusal) {
    switch (refusal) {
        case Refusal::atWork:
            return ": another request is at work";
        case Refusal::quitting:
            return ": the program is about to quit";
        case Refusal::preferencesUnknown:
            return ": the preferences cannot be read";
        case Refusal::noThread:
            return ": the machine has no thread to give";
        case Refusal::none:
            break;
    }
    return "";
}

}  // namespace

namespace {

void tellLog(bool wroteLog, Terminal& terminal) {
    const std::optional<Error> trouble = activityLogTrouble();
    if (wroteLog && !trouble) {
        terminal.out << "Activity Log: " << terminal.forOut(activityLogPath()) << '\n';
    }
    // Also where nothing was to be written: the log of the run before should be empty now.
    if (trouble && (wroteLog || !activityLogPath().empty())) {
        terminal.complain("no Activity Log: " + trouble->message());
    }
}

}  // namespace

void tellReport(const RunReport& report, bool wroteLog, Terminal& terminal) {
    switch (report.result) {
        case RunResult::completed:
            tellOutcome(report.outcome, terminal);
            break;
        case RunResult::nothingSelected:
            terminal.out << "nothing selected to shred\n";
            break;
        case RunResult::cancelled:
            terminal.complain("cancelled; nothing was shredded");
            break;
        case RunResult::givenUp:
            terminal.complain("ended by a signal; nothing was shredded");
            break;
        case RunResult::notInitiated:
            terminal.complain(std::string("not initiated") + reasonOf(report.refusal) +
                              "; nothing was shredded");
            break;
    }
    for (const std::string& fault : report.catalogueFaults) terminal.complain(fault);
    if (report.listingUnknown) {
        terminal.complain("the processes could not be listed: every application may be running");
    }
    if (!report.skipped.empty()) {
        terminal.out << fmt::format("not touched, because running: {}\n",
                                    fmt::join(report.skipped, ", "));
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
