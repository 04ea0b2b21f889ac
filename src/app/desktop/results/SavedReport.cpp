// SPDX-License-Identifier: MIT
#include "app/desktop/results/SavedReport.h"

#include <filesystem>
#include <sstream>

#include "app/ReportDocument.h"
#include "app/desktop/Words.h"
#include "platform/FolderLock.h"
#include "platform/ReplaceFile.h"

namespace dorvanel::desktop {
namespace {

// What the terminal program would exit with.
constexpr int done = 0;
constexpr int incomplete = 1;
constexpr int cancelled = 3;
constexpr int notInitiated = 4;
constexpr int interrupted = 130;

int statusOf(const RunEntry& entry) {
    switch (entry.report.result) {
        case RunResult::completed:
            if (entry.report.endingStruck) return interrupted;
            break;
        case RunResult::nothingSelected:
            return done;
        case RunResult::cancelled:
            return cancelled;
        case RunResult::givenUp:
            return interrupted;
        case RunResult::notInitiated:
            return notInitiated;
    }
    return entry.failure.isEmpty() ? done : incomplete;
}

}  // namespace

std::string reportDocumentOf(const RunEntry& entry) {
    const Outcome& outcome = entry.report.outcome;
    std::ostringstream document;
    writeReportDocument(entry.report.plan,
                        {.started = entry.started,
                         .ended = entry.ended,
                         .status = statusOf(entry),
                         .isVerified = outcome.filesVerified + outcome.notVerified > 0},
                        document);
    return std::move(document).str();
}

Result<Done> saveReport(const std::string& document, const std::string& path) {
    const std::string file = platform::followingLinks(path);
    const std::string folder = std::filesystem::path(file).parent_path().native();
    // Not waited for: who holds it may hold it for as long as they like.
    const auto lock = platform::FolderLock::takeIfFree(folder);
    if (!lock) return lock.error();
    if (!lock.value()) {
        return Error{.operation = "lock",
                     .path = folder,
                     .detail = Words::tr("another program has it").toStdString()};
    }
    return platform::replaceFile(file, document, *lock.value());
}

}  // namespace dorvanel::desktop
