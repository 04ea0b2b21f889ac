// SPDX-License-Identifier: MIT
#include "app/desktop/files/DocumentModel.h"

#include <QApplication>
#include <QIcon>
#include <QMimeData>
#include <QMimeDatabase>
#include <QStyle>
#include <QUrl>
#include <algorithm>

#include "app/desktop/Bytes.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

using Kind = FileFacts::Kind;

QIcon iconFor(const std::string& file, Kind kind) {
    const QStyle& style = *QApplication::style();
    if (kind == Kind::folder) {
        return QIcon::fromTheme(QStringLiteral("folder"), style.standardIcon(QStyle::SP_DirIcon));
    }
    if (kind == Kind::link) {
        return QIcon::fromTheme(QStringLiteral("inode-symlink"),
                                style.standardIcon(QStyle::SP_FileLinkIcon));
    }
    // By its name alone: what is in it is nobody's business here.
    const QMimeType type = QMimeDatabase().mimeTypeForFile(QString::fromStdString(file),
                                                           QMimeDatabase::MatchExtension);
    const QIcon plain = style.standardIcon(QStyle::SP_FileIcon);
    return QIcon::fromTheme(type.iconName(), QIcon::fromTheme(type.genericIconName(), plain));
}

}  // namespace

DocumentModel::DocumentModel(std::vector<std::string> files, QObject* parent)
    : QAbstractTableModel(parent),
      files_(std::move(files)),
      facts_(files_.size()),
      wereThere_(files_.size()) {}

void DocumentModel::setFacts(std::size_t row, const FileFacts& facts) {
    facts_[row] = facts;
    if (facts.kind != Kind::missing && facts.kind != Kind::unknown) wereThere_[row] = true;
    const int line = static_cast<int>(row);
    emit dataChanged(index(line, pathColumn), index(line, sizeColumn));
}

std::size_t DocumentModel::missing() const {
    return static_cast<std::size_t>(std::ranges::count(facts_, Kind::missing, &FileFacts::kind));
}

bool DocumentModel::isMissing(int row) const {
    return facts_[static_cast<std::size_t>(row)].kind == Kind::missing;
}

int DocumentModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(files_.size());
}

int DocumentModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns;
}

QString DocumentModel::pathText(std::size_t row) const {
    const QString path = displayText(files_[row]);
    return facts_[row].kind == Kind::missing ? Words::tr("%1 (not there)").arg(path) : path;
}

QString DocumentModel::sizeText(std::size_t row) const {
    const FileFacts& facts = facts_[row];
    if (facts.kind == Kind::missing) return wereThere_[row] ? Words::tr("gone") : QString();
    if (facts.kind == Kind::folder && !facts.isCounted) return QStringLiteral("…");
    if (!facts.isCounted) return {};
    QString size = sizeWords(facts.bytes);
    if (facts.kind != Kind::folder) return size;
    return Words::tr("%n file(s), %1", nullptr, asNumber(facts.files)).arg(size);
}

QVariant DocumentModel::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || row >= files_.size()) return {};
    const bool isPath = index.column() == pathColumn;
    switch (role) {
        case Qt::DisplayRole:
            return isPath ? pathText(row) : sizeText(row);
        case Qt::ToolTipRole:
            return displayText(files_[row]);
        case Qt::DecorationRole:
            return isPath ? iconFor(files_[row], facts_[row].kind) : QVariant();
        case Qt::TextAlignmentRole:
            return isPath ? QVariant() : QVariant(Qt::AlignRight | Qt::AlignVCenter);
        default:
            return {};
    }
}

QVariant DocumentModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return section == pathColumn ? Words::tr("File or folder") : Words::tr("Size");
}

Qt::ItemFlags DocumentModel::flags(const QModelIndex& index) const {
    if (!index.isValid() || isMissing(index.row())) return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled |
           Qt::ItemNeverHasChildren;
}

QMimeData* DocumentModel::mimeData(const QModelIndexList& indexes) const {
    QList<QUrl> urls;
    for (const QModelIndex& index : indexes) {
        if (index.column() != pathColumn) continue;
        urls << QUrl(urlOfPath(files_[static_cast<std::size_t>(index.row())]));
    }
    if (urls.isEmpty()) return nullptr;
    auto* data = new QMimeData;
    data->setUrls(urls);
    return data;
}

}  // namespace dorvanel::desktop
