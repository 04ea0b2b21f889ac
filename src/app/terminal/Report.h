// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "app/terminal/ExitStatus.h"
#include "app/terminal/Terminal.h"
#include "engine/Discarding.h"
#include "engine/Plan.h"

namespace CLI {
class App;
}

namespace dorvanel::terminal {

/// What a command that shreds is to tell, and to make sure of.
struct ReportOptions {
    bool preview = false;   ///< say what would go, and touch nothing
    bool json = false;      ///< as one document for other programs
    bool verifies = false;  ///< what was overwritten is read back
    bool discards = false;  ///< free space is discarded when all is done
};

/// Gives the command `--preview` and `--json`.
void addReportOptions(CLI::App& command, ReportOptions& options);
/// Gives the command `--verify`, and `--discard`.
void addVerifyOption(CLI::App& command, ReportOptions& options);
void addDiscardOption(CLI::App& command, ReportOptions& options);

/// What a command says at its end. Where a document is asked for, standard output is kept free for
/// it, and what people read there goes to standard error.
class Report {
  public:
    /// Both must outlive the report. The time of the document begins now.
    Report(Terminal& terminal, const ReportOptions& options);
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    /// For all that the command says by itself.
    Terminal& words() { return words_; }

    /// Says what would go. `stopped`: somebody asked for an end before all was looked at.
    ExitStatus preview(const Plan& plan, bool stopped = false);
    /// Writes the document of what was found, or of what was done, where one is asked for. Returns
    /// `status`.
    ExitStatus looked(const Plan& plan, ExitStatus status);
    ExitStatus end(const Plan& plan, ExitStatus status);
    /// Says what came of discarding free space.
    void tellDiscarded(const std::vector<DiscardedSpace>& spaces);

  private:
    void write(const Plan& plan, bool hasEnded, ExitStatus status);

    Terminal& terminal_;
    ReportOptions options_;
    std::int64_t started_;
    Terminal words_;
};

}  // namespace dorvanel::terminal
