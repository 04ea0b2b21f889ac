// SPDX-License-Identifier: MIT
#include "app/desktop/results/RunHistory.h"

#include <QFont>
#include <QIcon>
#include <QLocale>
#include <algorithm>
#include <utility>

#include "app/desktop/OutcomeText.h"
#include "app/desktop/Words.h"
#include "app/desktop/results/RunIcons.h"

namespace dorvanel::desktop {
namespace {

QString resultOf(const RunEntry& entry) {
    if (entry.failure.isEmpty()) return entry.message;
    //: The result of a run that failed; %1: what went wrong
    return entry.isMarked ? Words::tr("Failed: %1").arg(entry.failure)
                          : Words::tr("Failed, dismissed: %1").arg(entry.failure);
}

QIcon iconOf(const RunEntry& entry) {
    if (!entry.failure.isEmpty()) return failureIcon();
    return entry.report.result == RunResult::completed ? successIcon() : quietIcon();
}

QString textOf(const RunEntry& entry, int column) {
    switch (column) {
        case RunHistory::time:
            return QLocale().toString(entry.when().time(), QLocale::ShortFormat);
        case RunHistory::starter:
            return starterOf(entry);
        case RunHistory::subject:
            return subjectOf(entry);
        case RunHistory::result:
            return resultOf(entry);
        case RunHistory::duration:
            return durationOf(entry);
        default:
            return {};
    }
}

}  // namespace

quint64 RunHistory::add(RunEntry entry) {
    entry.number = ++last_;
    entry.message = messageOf(entry.report);
    entry.failure =
        entry.report.result == RunResult::notInitiated ? entry.message : failureOf(entry.report);
    entry.isMarked = !entry.failure.isEmpty();
    entry.report.outcome.perItem = {};
    beginInsertRows({}, 0, 0);
    entries_.push_front(std::move(entry));
    endInsertRows();
    if (entries_.size() > mostEntries) {
        const int last = static_cast<int>(entries_.size()) - 1;
        beginRemoveRows({}, last, last);
        entries_.pop_back();
        endRemoveRows();
    }
    onlyCountTheOldest();
    return last_;
}

void RunHistory::onlyCountTheOldest() {
    std::size_t items = 0;
    for (RunEntry& entry : entries_) {
        std::vector<PlanItem>& ofEntry = entry.report.plan.items;
        items += ofEntry.size();
        if (items <= mostItems || &entry == &entries_.front()) continue;
        const std::size_t gone =
            std::erase_if(ofEntry, [](const PlanItem& item) { return !hasTroubles(item); });
        ofEntry.shrink_to_fit();
        entry.onlyCounted += gone;
        items -= gone;
    }
}

void RunHistory::dismiss(quint64 number) {
    const QModelIndex index = indexOf(number);
    if (!index.isValid()) return;
    RunEntry& entry = entries_[static_cast<std::size_t>(index.row())];
    if (!entry.isMarked) return;
    entry.isMarked = false;
    emit dataChanged(index, index.siblingAtColumn(columns - 1));
}

int RunHistory::markedCount() const {
    return static_cast<int>(
        std::ranges::count_if(entries_, [](const RunEntry& entry) { return entry.isMarked; }));
}

QModelIndex RunHistory::indexOf(quint64 number) const {
    const auto found = std::ranges::find(entries_, number, &RunEntry::number);
    if (found == entries_.end()) return {};
    return index(static_cast<int>(found - entries_.begin()), 0);
}

const RunEntry* RunHistory::find(quint64 number) const {
    return at(indexOf(number));
}

const RunEntry* RunHistory::at(const QModelIndex& index) const {
    return index.isValid() ? &entries_[static_cast<std::size_t>(index.row())] : nullptr;
}

int RunHistory::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

int RunHistory::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns;
}

QVariant RunHistory::data(const QModelIndex& index, int role) const {
    const RunEntry* entry = at(index);
    if (entry == nullptr) return {};
    switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:
        case Qt::AccessibleTextRole:
            return textOf(*entry, index.column());
        case Qt::DecorationRole:
            return index.column() == result ? QVariant(iconOf(*entry)) : QVariant();
        case Qt::FontRole:
            if (entry->isMarked) {
                QFont bold;
                bold.setBold(true);
                return bold;
            }
            return {};
        default:
            return {};
    }
}

QVariant RunHistory::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    switch (section) {
        case time:
            return Words::tr("Time");
        case starter:
            return Words::tr("Started by");
        case subject:
            return Words::tr("What");
        case result:
            return Words::tr("Result");
        case duration:
            return Words::tr("Duration");
        default:
            return {};
    }
}

}  // namespace dorvanel::desktop
