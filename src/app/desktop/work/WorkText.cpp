// SPDX-License-Identifier: MIT
#include "app/desktop/work/WorkText.h"

#include <QLocale>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <limits>

#include "app/desktop/Bytes.h"
#include "app/desktop/OutcomeText.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {

using ui::WorkPhase;

namespace {

/// "2.1 of 5.0 GiB": both in the unit of the second.
QString amountText(std::uint64_t done, std::uint64_t total) {
    constexpr int bitsOfStep = 10;
    const int power = static_cast<int>(std::log2(static_cast<double>(total)) / bitsOfStep);
    const int decimals = power == 0 ? 0 : 1;
    const double shown =
        static_cast<double>(std::min(done, total)) / std::exp2(double{bitsOfStep} * power);
    return Words::tr("%1 of %2")
        .arg(QLocale().toString(shown, 'f', decimals),
             QLocale().formattedDataSize(qint64(total), decimals));
}

QString rateText(double bytesPerSecond) {
    constexpr double gigabyte = 1e9;
    const int decimals = bytesPerSecond < gigabyte ? 0 : 1;
    return Words::tr("%1/s").arg(QLocale().formattedDataSize(std::llround(bytesPerSecond), decimals,
                                                             QLocale::DataSizeSIFormat));
}

QString timeText(const TimeLeft& left) {
    switch (left.unit) {
        case TimeLeft::Unit::minutes:
            return Words::tr("about %1 min").arg(QLocale().toString(left.count));
        case TimeLeft::Unit::hours:
            return Words::tr("about %1 h").arg(QLocale().toString(left.count));
        case TimeLeft::Unit::lessThanAMinute:
            break;
    }
    return Words::tr("less than a minute");
}

QString struckText(Ending ending) {
    switch (ending) {
        case Ending::logout:
            return Words::tr("You are not logged out.");
        case Ending::shutdown:
            return Words::tr("The computer is not shut down.");
        case Ending::restart:
            return Words::tr("The computer is not restarted.");
        case Ending::none:
            break;
    }
    return {};
}

int number(std::uint64_t count) {
    return static_cast<int>(std::min<std::uint64_t>(count, std::numeric_limits<int>::max()));
}

}  // namespace

int percentOf(const ui::WorkState& state) {
    if (state.total == 0) return -1;
    return static_cast<int>(std::min(state.done, state.total) * 100 / state.total);
}

QString workTextOf(const ui::WorkState& state, const WorkEstimate& estimate) {
    if (state.phase == WorkPhase::none) return {};
    if (state.phase == WorkPhase::measuring) {
        return Words::tr("Measuring what is to be shredded…");
    }
    QStringList parts;
    const int percent = percentOf(state);
    if (percent >= 0) {
        parts << Words::tr("%1 %").arg(QLocale().toString(percent))
              << amountText(state.done, state.total);
    }
    if (state.phase == WorkPhase::flushing) {
        parts << Words::tr("bringing it to the medium and removing the names…");
    } else if (state.phase == WorkPhase::readingBack) {
        parts << Words::tr("reading back what was written…");
    } else {
        if (const auto rate = estimate.bytesPerSecond()) parts << rateText(*rate);
        if (const auto left = estimate.timeLeft()) parts << timeText(*left);
    }
    return parts.join(QStringLiteral(" · "));
}

QString itemTextOf(const ui::WorkState& state) {
    if (state.item == 0) return {};
    const std::string& path = state.path;
    return Words::tr("Item %1 of %2: %3")
        .arg(QLocale().toString(qulonglong(state.item)),
             QLocale().toString(qulonglong(state.items)),
             displayText(path.substr(path.rfind('/') + 1)));
}

QString stopTextOf(const RunReport& report) {
    if (report.result != RunResult::completed) return {};
    const QString struck = report.endingStruck ? struckText(report.ending) : QString();
    if (!report.outcome.stopped) {
        return struck.isEmpty() ? QString() : messageOf(report) + u' ' + struck;
    }
    QStringList sentences;
    if (report.itemsInAll == 0) {
        sentences << Words::tr("Stopped before the first item.");
    } else {
        const std::uint64_t done =
            report.itemsInAll - std::min(report.itemsInAll, report.itemsLeft);
        sentences << Words::tr("%1 of %n item(s) (was|were) shredded.", nullptr,
                               number(report.itemsInAll))
                         .arg(QLocale().toString(qulonglong(done)));
        if (report.itemsLeft > 0) {
            sentences << Words::tr("%n item(s) (is|are) left.", nullptr, number(report.itemsLeft));
        }
    }
    if (!struck.isEmpty()) sentences << struck;
    return sentences.join(u' ');
}

QString countdownTextOf(Ending ending, int seconds) {
    const QString count = QLocale().toString(seconds);
    switch (ending) {
        case Ending::logout:
            return Words::tr("Logging out in %1 s…").arg(count);
        case Ending::shutdown:
            return Words::tr("Shutting down in %1 s…").arg(count);
        case Ending::restart:
            return Words::tr("Restarting in %1 s…").arg(count);
        case Ending::none:
            break;
    }
    return {};
}

QString endNowTextOf(Ending ending) {
    switch (ending) {
        case Ending::logout:
            return Words::tr("&Log Out Now");
        case Ending::shutdown:
            return Words::tr("&Shut Down Now");
        case Ending::restart:
            return Words::tr("&Restart Now");
        case Ending::none:
            break;
    }
    return {};
}

}  // namespace dorvanel::desktop
