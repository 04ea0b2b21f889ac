// SPDX-License-Identifier: MIT
#include "app/desktop/OutcomeText.h"

#include <QLocale>
#include <QStringList>
#include <system_error>

#include "app/desktop/Bytes.h"

namespace dorvanel::desktop {

QString counted(quint64 count, const QString& noun) {
    return QLocale().toString(count) + u' ' + noun + (count == 1 ? QString() : QStringLiteral("s"));
}

namespace {

QString whatWasDone(const Outcome& outcome) {
    QString done = outcome.items == 0
                       ? QStringLiteral("There was nothing to shred.")
                       : QStringLiteral("Shredded: %1, %2 overwritten.")
                             .arg(counted(outcome.filesOverwritten, QStringLiteral("file")),
                                  QLocale().formattedDataSize(qint64(outcome.bytesOverwritten)));
    if (outcome.filesVerified > 0) {
        done += QStringLiteral(" Verified: %1.")
                    .arg(counted(outcome.filesVerified, QStringLiteral("file")));
    }
    if (outcome.filesCleaned > 0) {
        done += QStringLiteral(" Cleaned: %1, %2 removed.")
                    .arg(counted(outcome.filesCleaned, QStringLiteral("file")),
                         counted(outcome.rowsRemoved, QStringLiteral("row")));
    }
    return done;
}

/// The applications that were passed over.
QString whatWasSkipped(const RunReport& report) {
    if (report.skipped.empty() || report.listingUnknown) return {};
    QStringList names;
    for (const std::string& name : report.skipped) names << displayText(name);
    return QStringLiteral(" Left alone, as running: %1.").arg(names.join(u", "));
}

}  // namespace

QString messageOf(const RunReport& report) {
    switch (report.result) {
        case RunResult::nothingSelected:
            return QStringLiteral("Nothing was selected to shred.") + whatWasSkipped(report);
        case RunResult::cancelled:
            return QStringLiteral("Cancelled. Nothing was shredded.");
        case RunResult::givenUp:
            return QStringLiteral("Given up. Nothing was shredded.");
        case RunResult::notInitiated:
            return messageOf(report.refusal);
        case RunResult::completed:
            break;
    }
    return whatWasDone(report.outcome) + whatWasSkipped(report);
}

QString failureOf(const RunReport& report) {
    const Outcome& outcome = report.outcome;
    QStringList parts;
    if (outcome.notRemoved > 0) {
        parts << counted(outcome.notRemoved, QStringLiteral("item")) +
                     (outcome.notRemoved == 1 ? QStringLiteral(" is still there.")
                                              : QStringLiteral(" are still there."));
    }
    if (outcome.notOverwritten > 0) {
        parts << counted(outcome.notOverwritten, QStringLiteral("file")) +
                     QStringLiteral(" not wholly overwritten.");
    }
    if (outcome.notVerified > 0) {
        parts << counted(outcome.notVerified, QStringLiteral("file")) +
                     QStringLiteral(" read back otherwise or not at all.");
    }
    if (outcome.vanished > 0) {
        parts << counted(outcome.vanished, QStringLiteral("item")) +
                     QStringLiteral(" vanished before being shredded.");
    }
    if (outcome.notFlushed > 0) {
        parts << counted(outcome.notFlushed, QStringLiteral("file")) +
                     QStringLiteral(" perhaps not on the medium yet.");
    }
    if (outcome.notCleaned > 0) {
        parts << counted(outcome.notCleaned, QStringLiteral("place")) +
                     QStringLiteral(" could not be cleaned.");
    }
    if (outcome.stopped || !outcome.left.empty()) {
        parts << QStringLiteral("Shredding ended early.");
    }
    if (parts.isEmpty() && !outcome.troubles.empty()) {
        parts << QStringLiteral("Something did not go as it should.");
    }
    if (report.listingUnknown) {
        parts << QStringLiteral("What runs could not be listed: all applications were left alone.");
    }
    return parts.join(u' ');
}

QString messageOf(Refusal refusal) {
    switch (refusal) {
        case Refusal::quitting:
            return QStringLiteral("Not started: Dorvanel is about to quit.");
        case Refusal::preferencesUnknown:
            return QStringLiteral("Not started: the preferences cannot be read.");
        case Refusal::noThread:
            return QStringLiteral("Not started: the computer has no thread to give.");
        case Refusal::atWork:
        case Refusal::none:
            break;
    }
    return QStringLiteral("Not started: a run is still in progress.");
}

QString detailsOf(const Outcome& outcome) {
    QStringList lines;
    for (const Outcome::Trouble& trouble : outcome.troubles) {
        const std::string reason =
            trouble.reason.empty() ? std::generic_category().message(trouble.code) : trouble.reason;
        lines << QStringLiteral("%1: could not %2: %3")
                     .arg(displayText(trouble.path), displayText(trouble.operation),
                          displayText(reason));
    }
    for (const std::string& path : outcome.left) {
        lines << QStringLiteral("Left: %1").arg(displayText(path));
    }
    return lines.join(u'\n');
}

}  // namespace dorvanel::desktop
