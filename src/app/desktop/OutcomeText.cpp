// SPDX-License-Identifier: MIT
#include "app/desktop/OutcomeText.h"

#include <QStringList>
#include <algorithm>
#include <system_error>

#include "app/desktop/Bytes.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {

namespace {

QString whatWasDone(const Outcome& outcome) {
    QStringList sentences;
    sentences << (outcome.items == 0 ? Words::tr("There was nothing to shred.")
                                     : Words::tr("Shredded: %Ln file(s), %1 overwritten.", nullptr,
                                                 asNumber(outcome.filesOverwritten))
                                           .arg(sizeWords(outcome.bytesOverwritten)));
    if (outcome.filesVerified > 0) {
        sentences << Words::tr("Verified: %Ln file(s).", nullptr, asNumber(outcome.filesVerified));
    }
    if (outcome.filesCleaned > 0) {
        //: %1: "3 files", %2: "120 rows"
        sentences << Words::tr("Cleaned: %1, %2 removed.")
                         .arg(Words::tr("%Ln file(s)", nullptr, asNumber(outcome.filesCleaned)),
                              Words::tr("%Ln row(s)", nullptr, asNumber(outcome.rowsRemoved)));
    }
    return sentences.join(u' ');
}

/// The applications that were passed over.
QString whatWasSkipped(const RunReport& report) {
    if (report.skipped.empty() || report.listingUnknown) return {};
    QStringList names;
    for (const std::string& name : report.skipped) names << displayText(name);
    return Words::tr("Left alone, as running: %1.").arg(names.join(u", "));
}

/// What came after the preview that the run carried out.
QString whatWasLeft(const RunReport& report) {
    if (report.leftForNextRun == 0) return {};
    return Words::tr("%n item(s) that came after the preview (is|are) left for the next run.",
                     nullptr, asNumber(report.leftForNextRun));
}

QString joined(const QString& sentence, const QString& more) {
    return more.isEmpty() ? sentence : sentence + u' ' + more;
}

/// Marked for translation; the engine has the words.
[[maybe_unused]] constexpr const char* operations[] = {
    QT_TRANSLATE_NOOP("Words", "clean"),     QT_TRANSLATE_NOOP("Words", "follow"),
    QT_TRANSLATE_NOOP("Words", "look into"), QT_TRANSLATE_NOOP("Words", "look for mentions"),
    QT_TRANSLATE_NOOP("Words", "find"),      QT_TRANSLATE_NOOP("Words", "flush"),
    QT_TRANSLATE_NOOP("Words", "list"),      QT_TRANSLATE_NOOP("Words", "look at"),
    QT_TRANSLATE_NOOP("Words", "move"),      QT_TRANSLATE_NOOP("Words", "open"),
    QT_TRANSLATE_NOOP("Words", "read"),      QT_TRANSLATE_NOOP("Words", "remove"),
    QT_TRANSLATE_NOOP("Words", "rename"),    QT_TRANSLATE_NOOP("Words", "shred"),
    QT_TRANSLATE_NOOP("Words", "verify"),    QT_TRANSLATE_NOOP("Words", "write"),
};

}  // namespace

QString messageOf(const RunReport& report) {
    switch (report.result) {
        case RunResult::nothingSelected:
            return joined(
                joined(Words::tr("Nothing was selected to shred."), whatWasSkipped(report)),
                whatWasLeft(report));
        case RunResult::cancelled:
            return Words::tr("Cancelled. Nothing was shredded.");
        case RunResult::givenUp:
            return Words::tr("Given up. Nothing was shredded.");
        case RunResult::notInitiated:
            return messageOf(report.refusal);
        case RunResult::completed:
            break;
    }
    return joined(joined(whatWasDone(report.outcome), whatWasSkipped(report)), whatWasLeft(report));
}

std::uint64_t stillThere(const Outcome& outcome) {
    std::uint64_t told = 0;
    for (const ItemOutcome& item : outcome.perItem) told += item.left.size();
    const bool isAllTold = told > 0 && told < Outcome::keptTroubles;
    return isAllTold ? std::min(told, outcome.notRemoved) : outcome.notRemoved;
}

QString failureOf(const RunReport& report) {
    const Outcome& outcome = report.outcome;
    QStringList parts;
    if (const std::uint64_t left = stillThere(outcome); left > 0) {
        parts << Words::tr("%Ln item(s) (is|are) still there.", nullptr, asNumber(left));
    }
    if (outcome.notOverwritten > 0) {
        parts << Words::tr("%Ln file(s) not wholly overwritten.", nullptr,
                           asNumber(outcome.notOverwritten));
    }
    if (outcome.notVerified > 0) {
        parts << Words::tr("%Ln file(s) read back otherwise or not at all.", nullptr,
                           asNumber(outcome.notVerified));
    }
    if (outcome.vanished > 0) {
        parts << Words::tr("%Ln item(s) vanished before being shredded.", nullptr,
                           asNumber(outcome.vanished));
    }
    if (outcome.notFlushed > 0) {
        parts << Words::tr("%Ln file(s) perhaps not on the medium yet.", nullptr,
                           asNumber(outcome.notFlushed));
    }
    if (outcome.notCleaned > 0) {
        parts << Words::tr("%Ln place(s) could not be cleaned.", nullptr,
                           asNumber(outcome.notCleaned));
    }
    if (outcome.stopped || !outcome.left.empty()) {
        parts << Words::tr("Shredding ended early.");
    }
    if (parts.isEmpty() && !outcome.troubles.empty()) {
        parts << Words::tr("Something did not go as it should.");
    }
    if (report.listingUnknown) {
        parts << Words::tr("What runs could not be listed: all applications were left alone.");
    }
    return parts.join(u' ');
}

QString messageOf(Refusal refusal) {
    switch (refusal) {
        case Refusal::quitting:
            return Words::tr("Not started: Dorvanel is about to quit.");
        case Refusal::preferencesUnknown:
            return Words::tr("Not started: the preferences cannot be read.");
        case Refusal::noThread:
            return Words::tr("Not started: the computer has no thread to give.");
        case Refusal::atWork:
        case Refusal::none:
            break;
    }
    return Words::tr("Not started: a run is still in progress.");
}

QString reasonOf(const Outcome::Trouble& trouble) {
    const std::string reason =
        trouble.reason.empty() ? std::generic_category().message(trouble.code) : trouble.reason;
    //: %1: a word for what was tried, as "remove"; %2: why it failed
    return Words::tr("could not %1: %2")
        .arg(displayText(Words::tr(trouble.operation.c_str()).toStdString()), displayText(reason));
}

QString detailsOf(const Outcome& outcome) {
    QStringList lines;
    for (const Outcome::Trouble& trouble : outcome.troubles) {
        //: %1: a path; %2: "could not remove: Operation not permitted"
        lines << (trouble.path.empty()
                      ? reasonOf(trouble)
                      : Words::tr("%1: %2").arg(displayText(trouble.path), reasonOf(trouble)));
    }
    for (const std::string& path : outcome.left) {
        lines << Words::tr("Left: %1").arg(displayText(path));
    }
    return lines.join(u'\n');
}

}  // namespace dorvanel::desktop
