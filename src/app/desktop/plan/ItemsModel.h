// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/HeldItem.h"
#include "engine/Plan.h"

namespace dorvanel::desktop {

/// What was found out of one item of a list.
struct ItemFinding {
    std::uint32_t row = 0;
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;
    std::uint32_t notes = 0;  ///< a bit for each kind of note
};

/// The items that somebody wants to have shredded, one a row: the name, how large it is and what
/// there is to say of it, as far as that is known yet. A row costs what is known of it, no text and
/// no widget. Main thread.
class ItemsModel final : public QAbstractTableModel {
  public:
    enum Column { nameColumn, sizeColumn, notesColumn, columns };
    using Paths = std::vector<std::string>;
    using Items = std::vector<HeldItem>;

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows paths of which nothing is known.
    void showPaths(std::shared_ptr<const Paths> paths);
    /// Shows items that were looked at, in place of the paths.
    void showItems(std::shared_ptr<const Items> items);
    /// Shows what was found out of some items.
    void add(const std::vector<ItemFinding>& findings);
    /// All is found out: of rows that nobody has found anything of there is nothing to say.
    void setComplete();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& = {}) const override { return columns; }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

  private:
    struct Known {
        std::uint64_t files = 0;
        std::uint64_t bytes = 0;
        std::uint32_t notes = 0;
        bool isFound = false;
    };

    [[nodiscard]] const std::string& pathOf(std::size_t row) const;
    [[nodiscard]] QString sizeOf(std::size_t row) const;
    [[nodiscard]] QString notesOf(std::size_t row) const;
    [[nodiscard]] QVariant iconOf(std::size_t row) const;

    std::shared_ptr<const Paths> paths_;
    std::shared_ptr<const Items> items_;
    std::vector<Known> known_;
    bool isComplete_ = false;
};

/// The kinds of notes of an item, a bit for each.
std::uint32_t noteBits(const PlanItem& item);

}  // namespace dorvanel::desktop
