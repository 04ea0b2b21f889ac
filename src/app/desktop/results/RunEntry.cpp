// SPDX-License-Identifier: MIT
#include "app/desktop/results/RunEntry.h"

#include <QStringList>
#include <algorithm>
#include <set>
#include <unordered_set>
#include <utility>

#include "app/desktop/Bytes.h"
#include "app/desktop/OutcomeText.h"
#include "app/desktop/Words.h"
#include "engine/HoldingFolderName.h"

namespace dorvanel::desktop {
namespace {

constexpr std::int64_t secondsOfMinute = 60;

/// Whether nothing became of it: it was not there, or went with another.
bool isNothing(const PlanItem& item) {
    const ItemOutcome& outcome = *item.outcome;
    return outcome.removed == 0 && outcome.overwritten == 0 && outcome.rows == 0 &&
           !hasTroubles(item);
}

/// The holding folder that the path leads through; the path itself where there is none.
std::string upToHoldingFolder(const std::string& path) {
    for (std::size_t start = 1; start < path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        if (isHoldingFolderName(std::string_view(path).substr(start, end - start))) {
            return path.substr(0, end);
        }
        start = end + 1;
    }
    return path;
}

bool goesAsAWhole(const PlanItem& item) {
    return item.action != PlanItem::Action::clean && !item.isOfList();
}

}  // namespace

bool hasTroubles(const PlanItem& item) {
    return item.outcome && (!item.outcome->left.empty() || !item.outcome->unwritten.empty() ||
                            !item.outcome->unverified.empty());
}

RunReport withOutcomesInPlan(RunReport report) {
    // What a run keeps no plan of is known by its outcome.
    if (report.plan.items.empty()) addOutcome(report.plan, report.outcome);
    std::erase_if(report.plan.items,
                  [](const PlanItem& item) { return !item.outcome || isNothing(item); });
    for (PlanItem& item : report.plan.items) {
        if (!goesAsAWhole(item) || item.files + item.folders > 0) continue;
        item.files = item.outcome->overwritten;
        item.bytes = item.outcome->bytes;
    }
    return report;
}

QString starterOf(const RunEntry& entry) {
    const StartedBy& who = entry.report.startedBy;
    switch (who.door) {
        case StartedBy::Door::person:
            return Words::tr("You");
        case StartedBy::Door::browserWatch:
            break;
        case StartedBy::Door::launch:
            return Words::tr("Launch");
        case StartedBy::Door::launcher:
            return Words::tr("Launcher");
        case StartedBy::Door::droppedFiles:
            return Words::tr("Dropped files");
        case StartedBy::Door::trash:
            return Words::tr("Trash");
        case StartedBy::Door::again:
            return Words::tr("Try Again");
    }
    if (who.applications.empty()) return Words::tr("Browser Watch");
    QStringList names;
    for (const std::string& name : who.applications) names << displayText(name);
    //: %1: names of applications
    return Words::tr("Browser Watch: %1 quit").arg(names.join(u", "));
}

QString subjectOf(const RunEntry& entry) {
    if (!entry.report.handedOver) return Words::tr("Chosen traces");
    if (entry.given.empty()) return Words::tr("Files");
    return Words::tr("%Ln item(s)", nullptr, asNumber(entry.given.size()));
}

QString durationOf(const RunEntry& entry) {
    const std::int64_t seconds = std::max<std::int64_t>(entry.ended - entry.started, 0);
    if (seconds == 0) return Words::tr("less than a second");
    if (seconds < secondsOfMinute) {
        return Words::tr("%Ln second(s)", nullptr, static_cast<int>(seconds));
    }
    //: A duration of minutes and seconds
    return Words::tr("%1 min %2 s").arg(seconds / secondsOfMinute).arg(seconds % secondsOfMinute);
}

std::vector<std::string> leftBy(const RunEntry& entry) {
    // Of what is handed over there may be more outcomes: lists of the desktop that stay.
    const std::unordered_set<std::string> given(entry.given.begin(), entry.given.end());
    std::set<std::string> paths;
    for (const PlanItem& item : entry.report.plan.items) {
        if (!goesAsAWhole(item) || !item.outcome) continue;
        if (entry.report.handedOver && !given.contains(item.path)) continue;
        for (const ItemOutcome::Trouble& trouble : item.outcome->left) {
            if (!trouble.path.empty()) paths.insert(upToHoldingFolder(trouble.path));
        }
    }
    std::vector<std::string> outermost;
    const auto isInside = [&paths](const std::string& path) {
        for (std::size_t end = path.rfind('/'); end != std::string::npos && end > 0;
             end = path.rfind('/', end - 1)) {
            if (paths.contains(path.substr(0, end))) return true;
        }
        return false;
    };
    std::ranges::copy_if(paths, std::back_inserter(outermost),
                         [&](const std::string& path) { return !isInside(path); });
    return outermost;
}

}  // namespace dorvanel::desktop
