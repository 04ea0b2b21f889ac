// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>
#include <string>
#include <vector>

#include "app/desktop/files/FileSurvey.h"

namespace dorvanel::desktop {

/// The files of a document, in the order in which they were handed over: each with its icon, its
/// path and its size. What is not there can be neither chosen nor dragged. Main thread.
class DocumentModel final : public QAbstractTableModel {
  public:
    enum Column { pathColumn, sizeColumn, columns };

    /// `files` are absolute paths in bytes.
    explicit DocumentModel(std::vector<std::string> files, QObject* parent = nullptr);

    [[nodiscard]] const std::vector<std::string>& files() const { return files_; }
    /// What is known of a file now.
    void setFacts(std::size_t row, const FileFacts& facts);
    /// How many are known not to be there.
    [[nodiscard]] std::size_t missing() const;
    [[nodiscard]] bool isMissing(int row) const;
    /// Whether anything is known of a file.
    [[nodiscard]] bool isLookedAt(std::size_t row) const {
        return facts_[row].kind != FileFacts::Kind::unknown;
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;
    [[nodiscard]] Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

  private:
    [[nodiscard]] QString pathText(std::size_t row) const;
    [[nodiscard]] QString sizeText(std::size_t row) const;

    std::vector<std::string> files_;
    std::vector<FileFacts> facts_;  ///< of each file
    std::vector<bool> wereThere_;   ///< of each file: whether it was seen
};

}  // namespace dorvanel::desktop
