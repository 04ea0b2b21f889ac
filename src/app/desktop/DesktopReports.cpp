// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QDateTime>
#include <QFontMetrics>
#include <QLocale>
#include <memory>

#include "app/desktop/Bytes.h"
#include "app/desktop/Desktop.h"
#include "app/desktop/OutcomeText.h"
#include "app/desktop/Words.h"
#include "app/desktop/results/RunResults.h"
#include "engine/MediumNotice.h"
#include "platform/FileManager.h"

// What the window says of a request: what goes on, how it ended, and what went wrong.

namespace dorvanel::desktop {
namespace {

/// How much room a path has in the line about the medium, in pixels.
constexpr int pathWidth = 280;

/// A path as a person knows it: in the home folder without the way there.
QString shortPath(const std::string& path) {
    const std::string home = platform::homeDirectory() + "/";
    return displayText(path.starts_with(home) ? "~/" + path.substr(home.size()) : path);
}

}  // namespace

void Desktop::activityChanged(Activity now) {
    if (!isMainThread()) {
        loop_.performOnMainThread([this] { showActivity(controller_->activity()); });
        return;
    }
    showActivity(now);
    // The main thread may be at work itself for a while: listing what runs, collecting.
    window_->paintNow();
}

void Desktop::runEnded(const RunReport& report) {
    if (isMainThread()) return tellEnd(withOutcomesInPlan(report));
    if (report.wentOn && services_.forgetFinished) services_.forgetFinished();
    const auto whole = std::make_shared<RunReport>(withOutcomesInPlan(report));
    loop_.performOnMainThread([this, whole] { tellEnd(*whole); });
}

void Desktop::tellEnd(const RunReport& report) {
    if (report.result == RunResult::notInitiated) {
        // What passes by itself is no request that anybody looks for later.
        const bool passes =
            report.refusal == Refusal::atWork || report.refusal == Refusal::quitting;
        return tellRefusal(report.refusal, passes ? 0 : results_->add(report));
    }
    if (report.result != RunResult::completed) window_->showMediumNotice({}, {});
    activity_->showResult(messageOf(report));
    tellStop(report);
    const QString failure = failureOf(report);
    const quint64 run = results_->add(report);
    if (!failure.isEmpty()) tellFailure(failure, detailsOf(report.outcome), run);
    if (!isWatched()) results_->notify(run, report);
    showTrayStatus();
    for (const auto& document : documents_) document->refresh();
}

void Desktop::tellRefusal(Refusal refusal, quint64 run) {
    QString message = messageOf(refusal);
    QString wayOut;
    if (refusal == Refusal::preferencesUnknown) {
        if (services_.preferencesTrouble) {
            message += u' ' + displayText(services_.preferencesTrouble());
        }
        wayOut = Words::tr(
            "“Factory Settings” in the preferences sets the file aside and begins again.");
    }
    workspace_.beep();
    // What passes by itself is told in passing; the rest stays until somebody has seen it.
    if (refusal == Refusal::atWork || refusal == Refusal::quitting) {
        return activity_->showRefusal(message);
    }
    activity_->showResult(Words::tr("Not started. Nothing was shredded."));
    tellFailure(message, wayOut, run);
}

void Desktop::tellUnfinished() {
    const std::size_t count = services_.unfinishedFolders ? services_.unfinishedFolders() : 0;
    if (count == 0) return;
    const int number = asNumber(count);
    tellFailure(Words::tr("%n holding folder(s) of an unfinished shredding (is|are) left.", nullptr,
                          number),
                Words::tr("“dorvanel recover” in a terminal finishes (it|them).", nullptr, number));
}

void Desktop::tellFailure(const QString& message, const QString& details, quint64 run) {
    const QDateTime now = QDateTime::fromSecsSinceEpoch(services_.clock.time());
    window_->failures().add(
        {message, details, QLocale().toString(now.time(), QLocale::ShortFormat), run});
}

void Desktop::tellMedium(const std::vector<std::string>& items) {
    const QFontMetrics metrics(QApplication::font());
    QStringList whole;
    const std::string notice = mediumNotice(items, services_.medium, [&](const std::string& path) {
        const QString text = shortPath(path);
        whole << text;
        return "“" + metrics.elidedText(text, Qt::ElideMiddle, pathWidth).toStdString() + "”";
    });
    if (notice.empty()) return window_->showMediumNotice({}, {});
    QString sentence = QString::fromStdString(notice) + u'.';
    sentence[0] = sentence[0].toUpper();
    window_->showMediumNotice(sentence, whole.join(u'\n'));
}

}  // namespace dorvanel::desktop
