// SPDX-License-Identifier: MIT
#include "app/desktop/results/DetailLines.h"

#include <QStringList>
#include <utility>

#include "app/desktop/Bytes.h"
#include "app/desktop/OutcomeText.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

/// Beyond so many lines under a heading, items that went as they should are only counted.
constexpr std::size_t mostLines = 2000;

using Troubles = std::vector<ItemOutcome::Trouble>;

DetailLine lineOf(const ItemOutcome::Trouble& trouble) {
    const bool hasMoved = !trouble.was.empty() && trouble.was != trouble.path;
    const QString reason = reasonOf(trouble);
    return {.what = displayText(hasMoved ? trouble.was : trouble.path),
            //: %1: why something was not done; %2: the path where it is now
            .fate = hasMoved ? Words::tr("%1; now at %2").arg(reason, displayText(trouble.path))
                             : reason,
            .isTrouble = true};
}

/// What of all items is in this list of theirs, under one heading.
void addTroubles(std::vector<DetailLine>& all, const RunEntry& entry, const QString& heading,
                 Troubles ItemOutcome::*list) {
    DetailLine group{.what = heading, .isTrouble = true};
    for (const PlanItem& item : entry.report.plan.items) {
        if (!item.outcome) continue;
        for (const ItemOutcome::Trouble& trouble : (*item.outcome).*list) {
            group.lines.push_back(lineOf(trouble));
        }
    }
    if (!group.lines.empty()) all.push_back(std::move(group));
}

QString fateOf(const PlanItem& item) {
    const ItemOutcome& outcome = *item.outcome;
    if (!outcome.left.empty()) {
        return Words::tr("%Ln thing(s) still there", nullptr, asNumber(outcome.left.size()));
    }
    if (!outcome.unwritten.empty()) return Words::tr("not wholly overwritten");
    if (!outcome.unverified.empty()) return Words::tr("not read back as it was written");
    if (item.isOfList()) {
        return Words::tr("%Ln mention(s) removed", nullptr, asNumber(outcome.rows));
    }
    if (item.action == PlanItem::Action::clean) {
        return Words::tr("cleaned: %Ln row(s) removed", nullptr, asNumber(outcome.rows));
    }
    if (outcome.overwritten == 0) return Words::tr("removed");
    return Words::tr("shredded: %Ln file(s), %1", nullptr, asNumber(outcome.overwritten))
        .arg(sizeWords(outcome.bytes));
}

DetailLine lineOf(const PlanItem& item) {
    QString fate = fateOf(item);
    if (!item.application.empty()) {
        //: %1: what became of an item; %2: the application that it belonged to
        fate = Words::tr("%1 (%2)").arg(fate, displayText(item.application));
    }
    return {.what = displayText(item.path), .fate = fate, .isTrouble = hasTroubles(item)};
}

void addItems(std::vector<DetailLine>& all, const RunEntry& entry) {
    DetailLine group{.what = Words::tr("Items")};
    std::uint64_t more = entry.onlyCounted;
    for (const PlanItem& item : entry.report.plan.items) {
        if (!item.outcome) continue;
        if (group.lines.size() < mostLines || hasTroubles(item)) {
            group.lines.push_back(lineOf(item));
        } else {
            ++more;
        }
    }
    if (more > 0) {
        group.lines.push_back({.what = Words::tr("and %Ln more item(s), as (it|they) should be",
                                                 nullptr, asNumber(more))});
    }
    if (!group.lines.empty()) all.push_back(std::move(group));
}

QString reasonOf(const PlanSkip& skip) {
    switch (skip.reason) {
        case PlanSkip::Reason::running:
            return Words::tr("its application runs");
        case PlanSkip::Reason::mount:
            return Words::tr("another file system is mounted there");
        case PlanSkip::Reason::unreadable:
            return Words::tr("cannot be read");
        case PlanSkip::Reason::locked:
            return Words::tr("locked by another program");
        case PlanSkip::Reason::corrupt:
            return Words::tr("damaged, or of an unknown kind");
        case PlanSkip::Reason::insecure:
            break;
    }
    return Words::tr("others may write there");
}

DetailLine lineOf(const PlanSkip& skip) {
    QString reason = reasonOf(skip);
    if (!skip.detail.empty()) {
        //: %1: a reason, %2: more about it
        reason = Words::tr("%1: %2").arg(reason, displayText(skip.detail));
    }
    return {.what = displayText(skip.path.empty() ? skip.application : skip.path),
            .fate = reason,
            .isTrouble = skip.reason != PlanSkip::Reason::running};
}

void addSkipped(std::vector<DetailLine>& all, const RunEntry& entry) {
    const RunReport& report = entry.report;
    DetailLine group{.what = Words::tr("Left alone")};
    for (const PlanSkip& skip : report.plan.skipped) group.lines.push_back(lineOf(skip));
    if (report.plan.skipped.empty()) {
        for (const std::string& name : report.skipped) {
            group.lines.push_back({.what = displayText(name), .fate = Words::tr("runs")});
        }
    }
    for (const std::string& fault : report.catalogueFaults) {
        group.lines.push_back({.what = displayText(fault), .isTrouble = true});
    }
    if (!group.lines.empty()) all.push_back(std::move(group));
}

/// What was told on the way, of things that belong to no item too.
void addTold(std::vector<DetailLine>& all, const Outcome& outcome) {
    DetailLine group{.what = Words::tr("What was told on the way"), .isTrouble = true};
    for (const Outcome::Trouble& trouble : outcome.troubles) {
        group.lines.push_back(lineOf(trouble));
    }
    for (const std::string& path : outcome.left) {
        group.lines.push_back({.what = displayText(path),
                               .fate = Words::tr("left when shredding ended early"),
                               .isTrouble = true});
    }
    if (outcome.allTroubles > outcome.troubles.size()) {
        group.lines.push_back(
            {.what = Words::tr("and %Ln more", nullptr,
                               asNumber(outcome.allTroubles - outcome.troubles.size()))});
    }
    if (!group.lines.empty()) all.push_back(std::move(group));
}

}  // namespace

std::vector<DetailLine> detailLinesOf(const RunEntry& entry) {
    std::vector<DetailLine> all;
    addTroubles(all, entry, Words::tr("Still there"), &ItemOutcome::left);
    addTroubles(all, entry, Words::tr("Not wholly overwritten"), &ItemOutcome::unwritten);
    addTroubles(all, entry, Words::tr("Not read back as written"), &ItemOutcome::unverified);
    addSkipped(all, entry);
    addItems(all, entry);
    addTold(all, entry.report.outcome);
    return all;
}

QString asText(const std::vector<DetailLine>& lines) {
    QStringList text;
    for (const DetailLine& line : lines) {
        text << (line.fate.isEmpty() ? line.what
                                     //: %1: a path, %2: what became of it
                                     : Words::tr("%1: %2").arg(line.what, line.fate));
        if (line.lines.empty()) continue;
        for (const QString& below : asText(line.lines).split(u'\n')) {
            text << QStringLiteral("    ") + below;
        }
    }
    return text.join(u'\n');
}

}  // namespace dorvanel::desktop
