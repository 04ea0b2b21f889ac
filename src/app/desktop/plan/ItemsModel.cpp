// SPDX-License-Identifier: MIT
#include "app/desktop/plan/ItemsModel.h"

#include <QIcon>
#include <QStringList>
#include <algorithm>
#include <utility>

#include "app/desktop/Bytes.h"
#include "app/desktop/Words.h"
#include "app/desktop/plan/PlanWords.h"
#include "base/PathComponents.h"

namespace dorvanel::desktop {
namespace {

std::uint32_t bitOf(PlanNote::Kind kind) {
    return 1U << static_cast<unsigned>(kind);
}

std::string fileName(const std::string& path) {
    const std::string trimmed(withoutTrailingSlashes(path));
    const std::size_t slash = trimmed.rfind('/');
    return slash == std::string::npos ? trimmed : trimmed.substr(slash + 1);
}

}  // namespace

std::uint32_t noteBits(const PlanItem& item) {
    std::uint32_t bits = 0;
    for (const PlanNote& note : item.notes) bits |= bitOf(note.kind);
    return bits;
}

void ItemsModel::showPaths(std::shared_ptr<const Paths> paths) {
    beginResetModel();
    paths_ = std::move(paths);
    items_.reset();
    known_.clear();
    endResetModel();
}

void ItemsModel::showItems(std::shared_ptr<const Items> items) {
    beginResetModel();
    items_ = std::move(items);
    paths_.reset();
    known_.assign(items_->size(), {});
    endResetModel();
}

void ItemsModel::add(const std::vector<ItemFinding>& findings) {
    std::size_t first = known_.size(), last = 0;
    for (const ItemFinding& found : findings) {
        if (found.row >= known_.size()) continue;
        known_[found.row] = {found.files, found.bytes, found.notes, true};
        first = std::min<std::size_t>(first, found.row);
        last = std::max<std::size_t>(last, found.row);
    }
    if (first > last || first == known_.size()) return;
    emit dataChanged(index(static_cast<int>(first), sizeColumn),
                     index(static_cast<int>(last), notesColumn));
}

void ItemsModel::setComplete() {
    isComplete_ = true;
    if (rowCount() > 0) emit dataChanged(index(0, sizeColumn), index(rowCount() - 1, sizeColumn));
}

int ItemsModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid()) return 0;
    if (items_ != nullptr) return static_cast<int>(items_->size());
    return paths_ == nullptr ? 0 : static_cast<int>(paths_->size());
}

const std::string& ItemsModel::pathOf(std::size_t row) const {
    return items_ != nullptr ? (*items_)[row].path : (*paths_)[row];
}

QVariant ItemsModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const auto row = static_cast<std::size_t>(index.row());
    switch (role) {
        case Qt::DisplayRole:
            if (index.column() == sizeColumn) return sizeOf(row);
            return index.column() == notesColumn ? notesOf(row)
                                                 : displayText(fileName(pathOf(row)));
        case Qt::ToolTipRole:
            return index.column() == notesColumn ? notesOf(row) : displayText(pathOf(row));
        case Qt::DecorationRole:
            return index.column() == nameColumn ? iconOf(row) : QVariant();
        case Qt::TextAlignmentRole:
            if (index.column() != sizeColumn) return {};
            return QVariant::fromValue(Qt::Alignment(Qt::AlignTrailing | Qt::AlignVCenter));
        default:
            return {};
    }
}

QVariant ItemsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) {
        if (section != sizeColumn) return {};
        return QVariant::fromValue(Qt::Alignment(Qt::AlignTrailing | Qt::AlignVCenter));
    }
    if (role != Qt::DisplayRole) return {};
    if (section == sizeColumn) return Words::tr("Size");
    return section == notesColumn ? Words::tr("To know") : Words::tr("Name");
}

QString ItemsModel::sizeOf(std::size_t row) const {
    if (row >= known_.size()) return QStringLiteral("…");
    const Known& known = known_[row];
    if (known.isFound) return sizeWords(known.bytes);
    return isComplete_ ? QString() : QStringLiteral("…");
}

QString ItemsModel::notesOf(std::size_t row) const {
    if (row >= known_.size()) return {};
    const auto has = [notes = known_[row].notes](PlanNote::Kind kind) {
        return (notes & bitOf(kind)) != 0;
    };
    QStringList notes;
    const bool isFolder = (*items_)[row].status.kind == platform::EntryKind::folder;
    if (has(PlanNote::Kind::link)) {
        notes << (isFolder ? Words::tr("Links in it lead to files that go too")
                           : Words::tr("A link: where it leads goes too"));
    }
    if (has(PlanNote::Kind::hardLink)) notes << Words::tr("Other names show what is written");
    if (has(PlanNote::Kind::medium)) notes << Words::tr("Old contents may survive on the medium");
    if (has(PlanNote::Kind::shared)) notes << Words::tr("Shared with a snapshot or a copy");
    if (has(PlanNote::Kind::unreadable)) notes << Words::tr("Cannot be read or overwritten");
    if (has(PlanNote::Kind::open)) notes << Words::tr("Open in another program");
    return notes.join(QStringLiteral("; "));
}

QVariant ItemsModel::iconOf(std::size_t row) const {
    const auto icon = [](const char* name, const char* other) {
        return QIcon::fromTheme(QLatin1String(name), QIcon::fromTheme(QLatin1String(other)));
    };
    if (items_ == nullptr) return icon("text-x-generic", "unknown");
    switch ((*items_)[row].status.kind) {
        case platform::EntryKind::folder:
            return icon("folder", "inode-directory");
        case platform::EntryKind::link:
            return icon("emblem-symbolic-link", "inode-symlink");
        default:
            return icon("text-x-generic", "unknown");
    }
}

}  // namespace dorvanel::desktop
