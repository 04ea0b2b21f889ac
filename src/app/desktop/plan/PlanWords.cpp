// SPDX-License-Identifier: MIT
#include "app/desktop/plan/PlanWords.h"

#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <map>

#include "app/desktop/Bytes.h"
#include "app/desktop/Words.h"
#include "targets/traces/HomeRoot.h"

namespace dorvanel::desktop {
namespace {

using Action = PlanItem::Action;

QString withDetail(const QString& words, const std::string& detail) {
    if (detail.empty()) return words;
    return Words::tr("%1: %2").arg(words, displayText(detail));
}

bool goesAsAWhole(const PlanItem& item) {
    return item.action != Action::clean && !item.isOfList();
}

QString rowsAndKeys(std::uint64_t rows, std::uint64_t keys) {
    QString row = Words::tr("%n row(s)", nullptr, asNumber(rows));
    QString key = Words::tr("%n key(s)", nullptr, asNumber(keys));
    if (keys == 0) return row;
    return rows == 0 ? key : Words::tr("%1, %2").arg(row, key);
}

}  // namespace

QString traceWords(const std::string& trace) {
    static const std::map<std::string, QString> words = {
        {"cache", Words::tr("Cache")},
        {"history", Words::tr("History")},
        {"downloads", Words::tr("List of downloads")},
        {"cookies", Words::tr("Cookies")},
        {"forms", Words::tr("Form entries")},
        {"sessions", Words::tr("Open tabs and sessions")},
        {"sitedata", Words::tr("Data of web sites")},
        {"icons", Words::tr("Icons of web sites")},
        {"permissions", Words::tr("Permissions of web sites")},
        {"thumbnails", Words::tr("Thumbnails")},
        {"logs", Words::tr("Logs")},
        {"crashes", Words::tr("Crash reports")},
        {"mailindex", Words::tr("Index of the mail")},
        {"mailcache", Words::tr("Cache of the mail")},
        {"collected", Words::tr("Collected addresses")},
        {"expunged", Words::tr("Deleted messages")},
        {"trash", Words::tr("Trash")},
        {"junk", Words::tr("Junk mail")},
        {"recent", Words::tr("Recent documents")}};
    const auto known = words.find(trace);
    return known == words.end() ? displayText(trace) : known->second;
}

QString pathWords(const std::string& path, const std::string& home) {
    if (path == home) return QStringLiteral("~");
    const std::string below = home.empty() ? std::string() : traces::pathBelow(path, home);
    QString text = displayText(below.empty() ? path : "~/" + below);
    if (!QGuiApplication::isRightToLeft()) return text;
    // A path begins at its left in every language.
    constexpr QChar leftToRight(0x2066), end(0x2069);
    return leftToRight + text + end;
}

QString countWords(const PlanItem& item) {
    if (item.action == Action::clean || item.isOfList()) return {};
    if (item.files == 0 && item.folders > 0) {
        return Words::tr("%n folder(s)", nullptr, asNumber(item.folders));
    }
    return Words::tr("%n file(s)", nullptr, asNumber(item.files));
}

QString amountWords(const PlanItem& item) {
    if (item.isOfList()) return Words::tr("%n mention(s)", nullptr, asNumber(item.entries));
    if (item.action != Action::clean) return sizeWords(item.bytes);
    return rowsAndKeys(item.rows, item.keys);
}

QString reasonWords(const PlanSkip& skip) {
    switch (skip.reason) {
        case PlanSkip::Reason::running:
            return withDetail(Words::tr("It is running. Quit it to have this shredded."),
                              skip.detail);
        case PlanSkip::Reason::mount:
            return withDetail(Words::tr("Another file system is mounted there"), skip.detail);
        case PlanSkip::Reason::unreadable:
            return withDetail(Words::tr("It cannot be looked into"), skip.detail);
        case PlanSkip::Reason::locked:
            return withDetail(Words::tr("Another program has locked it"), skip.detail);
        case PlanSkip::Reason::corrupt:
            return withDetail(Words::tr("It is damaged"), skip.detail);
        case PlanSkip::Reason::insecure:
            break;
    }
    return withDetail(Words::tr("Other people can write there"), skip.detail);
}

QString noteWords(const PlanNote& note, const std::string& home) {
    switch (note.kind) {
        case PlanNote::Kind::link:
            return Words::tr("A link: “%1”, where it leads, would be overwritten too.")
                .arg(pathWords(note.target, home));
        case PlanNote::Kind::hardLink: {
            const std::uint64_t others = note.links - std::min<std::uint64_t>(note.links, 1);
            return Words::tr("%n other name(s) of this file will show its overwritten contents.",
                             nullptr, asNumber(others));
        }
        case PlanNote::Kind::medium:
            return Words::tr("Overwriting may not reach the old contents: %1.")
                .arg(displayText(note.detail));
        case PlanNote::Kind::shared:
            return withDetail(Words::tr("A snapshot or a copy shares it and keeps the contents."),
                              note.detail);
        case PlanNote::Kind::unreadable:
            return withDetail(Words::tr("It cannot be looked into, or not be overwritten"),
                              note.detail);
        case PlanNote::Kind::open:
            break;
    }
    return Words::tr("Another program has it open: %1.").arg(displayText(note.detail));
}

QStringList noticeWords(const Plan& plan) {
    std::array<std::uint64_t, 6> counts{};
    std::uint64_t more = 0;
    for (const PlanItem& item : plan.items) {
        more += item.moreNotes;
        for (const PlanNote& note : item.notes) ++counts.at(static_cast<std::size_t>(note.kind));
    }
    const auto count = [&counts](PlanNote::Kind kind) {
        return asNumber(counts.at(static_cast<std::size_t>(kind)));
    };
    QStringList notices;
    if (const int links = count(PlanNote::Kind::link); links > 0) {
        notices << Words::tr(
            "%n link(s) (leads|lead) to (a file|files) that would be overwritten too.", nullptr,
            links);
    }
    if (const int files = count(PlanNote::Kind::hardLink); files > 0) {
        notices << Words::tr(
            "%n file(s) (has|have) other names, which will show the overwritten contents.", nullptr,
            files);
    }
    if (const int places = count(PlanNote::Kind::medium); places > 0) {
        notices << Words::tr("Of %n item(s) old contents may survive on the medium.", nullptr,
                             places);
    }
    if (const int files = count(PlanNote::Kind::shared); files > 0) {
        notices << Words::tr("%n file(s) (is|are) shared with a snapshot or a copy.", nullptr,
                             files);
    }
    if (const int files = count(PlanNote::Kind::unreadable); files > 0) {
        notices << Words::tr("%n file(s) cannot be looked into or overwritten.", nullptr, files);
    }
    if (const int files = count(PlanNote::Kind::open); files > 0) {
        notices << Words::tr("%n file(s) (is|are) open in another program.", nullptr, files);
    }
    if (more > 0)
        notices << Words::tr("%n more note(s) (is|are) not shown.", nullptr, asNumber(more));
    return notices;
}

QString totalsWords(const Plan& plan) {
    const Totals totals = totalsOf(plan);
    const auto whole = static_cast<std::uint64_t>(std::ranges::count_if(plan.items, goesAsAWhole));
    QStringList parts;
    if (whole > 0) {
        parts << Words::tr("%1, %2, %3 would be shredded.")
                     .arg(Words::tr("%n item(s)", nullptr, asNumber(whole)),
                          Words::tr("%n file(s)", nullptr, asNumber(totals.files)),
                          sizeWords(totals.bytes));
    }
    const bool isCleaned = std::ranges::any_of(
        plan.items, [](const PlanItem& item) { return item.action == Action::clean; });
    if (isCleaned) {
        parts << Words::tr("%1 would be cleaned out.").arg(rowsAndKeys(totals.rows, totals.keys));
    }
    if (totals.entries > 0) {
        parts << Words::tr("%n mention(s) would be removed.", nullptr, asNumber(totals.entries));
    }
    return parts.isEmpty() ? Words::tr("Nothing would be shredded.") : parts.join(u' ');
}

QString idleWords(const Plan& plan) {
    const Totals totals = totalsOf(plan);
    const auto whole = std::ranges::count_if(plan.items, goesAsAWhole);
    if (whole > 0) {
        return Words::tr("%n item(s), %1 would be shredded.", nullptr,
                         asNumber(static_cast<std::uint64_t>(whole)))
            .arg(sizeWords(totals.bytes));
    }
    if (totals.items > 0) {
        return Words::tr("%n item(s) would be cleaned.", nullptr, asNumber(totals.items));
    }
    return Words::tr("Nothing to shred now.");
}

}  // namespace dorvanel::desktop
