// SPDX-License-Identifier: MIT
#include "app/terminal/Report.h"

#include <CLI/CLI.hpp>
#include <ostream>

#include "app/ReportDocument.h"
#include "app/Texts.h"
#include "app/terminal/PlanText.h"
#include "platform/Clock.h"

namespace dorvanel::terminal {
namespace {

Terminal withoutOutput(const Terminal& terminal) {
    return {.out = terminal.err,
            .err = terminal.err,
            .in = terminal.in,
            .outIsTerminal = true,  // names are escaped there for people
            .errIsTerminal = terminal.errIsTerminal,
            .columns = terminal.columns,
            .medium = terminal.medium};
}

}  // namespace

void addReportOptions(CLI::App& command, ReportOptions& options) {
    command.add_flag("--preview", options.preview, tr("Say what would go, and touch nothing"));
    command.add_flag("--json", options.json, tr("Print one JSON document, and nothing else"));
}

void addVerifyOption(CLI::App& command, ReportOptions& options) {
    command.add_flag("--verify", options.verifies, tr("Read back what was overwritten"));
}

void addDiscardOption(CLI::App& command, ReportOptions& options) {
    command.add_flag("--discard", options.discards,
                     tr("Have the medium forget all free space when all is done"));
}

Report::Report(Terminal& terminal, const ReportOptions& options)
    : terminal_(terminal),
      options_(options),
      started_(platform::systemClock().time()),
      words_(options.json ? withoutOutput(terminal) : terminal) {
    if (options.json) platform::speakEnglish();  // the reasons in it are what programs compare
}

ExitStatus Report::preview(const Plan& plan, bool stopped) {
    const auto status =
        stopped ? ExitStatus::interrupted : static_cast<ExitStatus>(previewStatus(plan));
    if (stopped) {
        terminal_.complain(tr("ended by a signal; not all was looked at"));
    } else if (!options_.json) {
        tellPlan(plan, terminal_, terminal_.columns ? terminal_.columns() : 0);
    }
    return looked(plan, status);
}

ExitStatus Report::looked(const Plan& plan, ExitStatus status) {
    if (options_.json) write(plan, false, status);
    return status;
}

ExitStatus Report::end(const Plan& plan, ExitStatus status) {
    if (options_.json) write(plan, true, status);
    return status;
}

void Report::write(const Plan& plan, bool hasEnded, ExitStatus status) {
    DocumentFrame frame{
        .started = started_, .status = static_cast<int>(status), .isVerified = options_.verifies};
    if (hasEnded) frame.ended = platform::systemClock().time();
    writeReportDocument(plan, frame, terminal_.out);
    terminal_.out << std::flush;
}

void Report::tellDiscarded(const std::vector<DiscardedSpace>& spaces) {
    const auto quoted = [](const std::string& path) { return "\"" + path + "\""; };
    for (const DiscardedSpace& space : spaces) {
        if (space.result.answer == platform::FreeSpace::Answer::discarded) {
            words_.out << words_.forOut(space.line(quoted)) << '\n' << std::flush;
        } else {
            words_.complain(space.line(quoted));
        }
    }
}

}  // namespace dorvanel::terminal
