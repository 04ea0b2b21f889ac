// SPDX-License-Identifier: MIT
#include "app/desktop/plan/PlanModel.h"

#include <QIcon>
#include <algorithm>
#include <utility>

#include "app/desktop/Bytes.h"
#include "app/desktop/Words.h"
#include "app/desktop/plan/PlanWords.h"

namespace dorvanel::desktop {
namespace {

using What = PlanTree::Group::What;

/// More rows than this in one place are a list of their own, and hide the rest.
constexpr std::size_t manyRows = 200;

constexpr unsigned rowBits = 2;

std::string fileName(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash + 1 < path.size() ? path.substr(slash + 1) : path;  // npos + 1 is 0
}

}  // namespace

void PlanModel::show(ShownPlan shown, PlanTree tree) {
    beginResetModel();
    shown_ = std::move(shown);
    tree_ = std::move(tree);
    endResetModel();
}

void PlanModel::setFilter(const QString& filter) {
    beginResetModel();
    tree_ = PlanTree(shown_, filter.toStdString());
    endResetModel();
}

bool PlanModel::isLong(const QModelIndex& index) const {
    return rowOf(index) == Row::item || static_cast<std::size_t>(rowCount(index)) > manyRows;
}

PlanModel::Row PlanModel::rowOf(const QModelIndex& index) {
    return static_cast<Row>(index.internalId() & ((1U << rowBits) - 1));
}

std::size_t PlanModel::within(const QModelIndex& index) {
    return index.internalId() >> rowBits;
}

const PlanTree::Group& PlanModel::groupOf(const QModelIndex& index) const {
    return rowOf(index) == Row::group ? tree_.groups[static_cast<std::size_t>(index.row())]
                                      : tree_.groups[within(index)];
}

const PlanTree::Kind& PlanModel::kindOf(const QModelIndex& index) const {
    return tree_.kinds[groupOf(index).kinds[static_cast<std::size_t>(index.row())]];
}

const PlanItem& PlanModel::itemOf(const QModelIndex& index) const {
    if (rowOf(index) == Row::note) return shown_.plan->items[within(index)];
    return shown_.plan
        ->items[tree_.kinds[within(index)].items[static_cast<std::size_t>(index.row())]];
}

bool PlanModel::isSkip(const QModelIndex& index) const {
    return rowOf(index) == Row::kindOrSkip && groupOf(index).what == What::skipped;
}

QModelIndex PlanModel::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || column < 0 || column >= columns || row >= rowCount(parent)) return {};
    const auto made = [&](Row kind, std::size_t within) {
        return createIndex(row, column, static_cast<quintptr>(kind) | within << rowBits);
    };
    if (!parent.isValid()) return made(Row::group, 0);
    const auto at = static_cast<std::size_t>(parent.row());
    switch (rowOf(parent)) {
        case Row::group:
            return made(Row::kindOrSkip, at);
        case Row::kindOrSkip:
            return made(Row::item, groupOf(parent).kinds[at]);
        case Row::item:
            return made(Row::note, tree_.kinds[within(parent)].items[at]);
        case Row::note:
            break;
    }
    return {};
}

QModelIndex PlanModel::parent(const QModelIndex& index) const {
    if (!index.isValid()) return {};
    const auto made = [this](std::size_t row, Row kind, std::size_t within) {
        return createIndex(static_cast<int>(row), 0,
                           static_cast<quintptr>(kind) | within << rowBits);
    };
    switch (rowOf(index)) {
        case Row::group:
            break;
        case Row::kindOrSkip:
            return made(within(index), Row::group, 0);
        case Row::item:
            return made(tree_.rowOfKind[within(index)], Row::kindOrSkip,
                        tree_.groupOfKind[within(index)]);
        case Row::note: {
            const PlanTree::Place& place = tree_.places[within(index)];
            return made(place.row, Row::item, place.kind);
        }
    }
    return {};
}

int PlanModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) return static_cast<int>(tree_.groups.size());
    if (parent.column() != 0) return 0;
    switch (rowOf(parent)) {
        case Row::group: {
            const PlanTree::Group& group = groupOf(parent);
            return static_cast<int>(group.what == What::skipped ? group.skipped.size()
                                                                : group.kinds.size());
        }
        case Row::kindOrSkip:
            return isSkip(parent) ? 0 : static_cast<int>(kindOf(parent).items.size());
        case Row::item:
            return static_cast<int>(itemOf(parent).notes.size());
        case Row::note:
            break;
    }
    return 0;
}

QVariant PlanModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    switch (role) {
        case Qt::DisplayRole:
            if (index.column() == filesColumn) return filesOf(index);
            return index.column() == sizeColumn ? sizeOf(index) : nameOf(index);
        case Qt::AccessibleDescriptionRole: {
            const bool hasNotes = rowOf(index) == Row::item && !itemOf(index).notes.empty();
            return hasNotes ? Words::tr("There is something to know of it.") : QString();
        }
        case Qt::ToolTipRole:
            return index.column() == nameColumn ? wholeTextOf(index) : QVariant();
        case Qt::DecorationRole:
            return index.column() == nameColumn ? iconOf(index) : QVariant();
        case Qt::TextAlignmentRole:
            if (index.column() == nameColumn) return {};
            return QVariant::fromValue(Qt::Alignment(Qt::AlignTrailing | Qt::AlignVCenter));
        default:
            return {};
    }
}

QVariant PlanModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole && section != nameColumn) {
        return QVariant::fromValue(Qt::Alignment(Qt::AlignTrailing | Qt::AlignVCenter));
    }
    if (role != Qt::DisplayRole) return {};
    if (section == filesColumn) return Words::tr("Files");
    return section == sizeColumn ? Words::tr("Size") : Words::tr("Name");
}

QString PlanModel::applicationName(const std::string& application) const {
    const auto found = shown_.names.find(application);
    return displayText(found == shown_.names.end() ? application : found->second);
}

QString PlanModel::nameOf(const QModelIndex& index) const {
    switch (rowOf(index)) {
        case Row::group:
            switch (groupOf(index).what) {
                case What::application:
                    return applicationName(groupOf(index).application);
                case What::mentions:
                    return Words::tr("Remembered by the desktop");
                case What::skipped:
                    return Words::tr("Passed over");
                case What::files:
                    break;
            }
            return Words::tr("Files and folders");
        case Row::kindOrSkip: {
            if (!isSkip(index)) {
                const PlanTree::Kind& kind = kindOf(index);
                return kind.isFolder ? pathWords(kind.name, shown_.home) : traceWords(kind.name);
            }
            const std::uint32_t number =
                groupOf(index).skipped[static_cast<std::size_t>(index.row())];
            const PlanSkip& skip = shown_.plan->skipped[number];
            const QString name = skip.path.empty() ? applicationName(skip.application)
                                                   : pathWords(skip.path, shown_.home);
            return Words::tr("%1: %2").arg(name, reasonWords(skip));
        }
        case Row::item: {
            const std::string& path = itemOf(index).path;
            return tree_.kinds[within(index)].isFolder ? displayText(fileName(path))
                                                       : pathWords(path, shown_.home);
        }
        case Row::note:
            break;
    }
    const PlanItem& item = itemOf(index);
    const PlanNote& note = item.notes[static_cast<std::size_t>(index.row())];
    QString words = noteWords(note, shown_.home);
    if (note.path == item.path) return words;
    return Words::tr("%1: %2").arg(pathWords(note.path, shown_.home), words);
}

QString PlanModel::filesOf(const QModelIndex& index) const {
    const auto counted = [](std::uint64_t files) {
        return files == 0 ? QString() : Words::tr("%n file(s)", nullptr, asNumber(files));
    };
    switch (rowOf(index)) {
        case Row::group:
            return counted(groupOf(index).files);
        case Row::kindOrSkip:
            return isSkip(index) ? QString() : counted(kindOf(index).files);
        case Row::item:
            return countWords(itemOf(index));
        case Row::note:
            break;
    }
    return {};
}

QString PlanModel::sizeOf(const QModelIndex& index) const {
    const auto sized = [](std::uint64_t files, std::uint64_t bytes) {
        return files == 0 ? QString() : sizeWords(bytes);
    };
    switch (rowOf(index)) {
        case Row::group:
            return sized(groupOf(index).files, groupOf(index).bytes);
        case Row::kindOrSkip:
            return isSkip(index) ? QString() : sized(kindOf(index).files, kindOf(index).bytes);
        case Row::item:
            return amountWords(itemOf(index));
        case Row::note:
            break;
    }
    return {};
}

/// What there is no room for.
QString PlanModel::wholeTextOf(const QModelIndex& index) const {
    if (rowOf(index) == Row::item) return displayText(itemOf(index).path);
    return nameOf(index);
}

QVariant PlanModel::iconOf(const QModelIndex& index) const {
    const auto icon = [](const char* name, const char* other) {
        return QIcon::fromTheme(QLatin1String(name), QIcon::fromTheme(QLatin1String(other)));
    };
    switch (rowOf(index)) {
        case Row::group:
            switch (groupOf(index).what) {
                case What::application:
                    return icon("application-x-executable", "system-run");
                case What::mentions:
                    return icon("document-open-recent", "user-desktop");
                case What::skipped:
                    return icon("dialog-information", "help-about");
                case What::files:
                    return icon("user-home", "folder");
            }
            return {};
        case Row::kindOrSkip:
            return isSkip(index) || !kindOf(index).isFolder ? QVariant() : icon("folder", "inode");
        case Row::item: {
            const PlanItem& item = itemOf(index);
            if (!item.notes.empty()) return icon("dialog-warning", "emblem-important");
            return item.folders > 0 ? icon("folder", "inode-directory")
                                    : icon("text-x-generic", "unknown");
        }
        case Row::note:
            break;
    }
    return icon("dialog-information", "help-about");
}

}  // namespace dorvanel::desktop
