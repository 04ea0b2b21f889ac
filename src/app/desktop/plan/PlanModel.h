// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemModel>
#include <QString>
#include <string>

#include "app/desktop/plan/PlanTree.h"
#include "app/desktop/plan/ShownPlan.h"

namespace dorvanel::desktop {

/// A plan as a tree: applications, kinds of traces or folders, items, and the notes of each item;
/// last what is passed over. Asks the plan for each cell that is drawn, and copies nothing of it.
/// Main thread.
class PlanModel final : public QAbstractItemModel {
  public:
    enum Column { nameColumn, filesColumn, sizeColumn, columns };

    using QAbstractItemModel::QAbstractItemModel;

    /// Shows a plan, whose whole tree somebody has made, on whatever thread.
    void show(ShownPlan shown, PlanTree tree);
    /// Shows only what holds this text in its path, its kind or the name of its application.
    void setFilter(const QString& filter);
    [[nodiscard]] const Plan& plan() const { return *shown_.plan; }
    /// Whether a row is one that is better shown closed at first: it has very many in it.
    [[nodiscard]] bool isLong(const QModelIndex& index) const;

    [[nodiscard]] QModelIndex index(int row, int column,
                                    const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& = {}) const override { return columns; }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

  private:
    /// What a row is: told by its index.
    enum class Row : quintptr { group, kindOrSkip, item, note };

    static Row rowOf(const QModelIndex& index);
    /// The group, kind or item that the index lies in, by number.
    static std::size_t within(const QModelIndex& index);
    [[nodiscard]] const PlanTree::Group& groupOf(const QModelIndex& index) const;
    [[nodiscard]] const PlanTree::Kind& kindOf(const QModelIndex& index) const;
    [[nodiscard]] const PlanItem& itemOf(const QModelIndex& index) const;
    [[nodiscard]] bool isSkip(const QModelIndex& index) const;
    [[nodiscard]] QString nameOf(const QModelIndex& index) const;
    [[nodiscard]] QString filesOf(const QModelIndex& index) const;
    [[nodiscard]] QString sizeOf(const QModelIndex& index) const;
    [[nodiscard]] QString wholeTextOf(const QModelIndex& index) const;
    [[nodiscard]] QVariant iconOf(const QModelIndex& index) const;
    [[nodiscard]] QString applicationName(const std::string& application) const;

    ShownPlan shown_;
    PlanTree tree_;
};

}  // namespace dorvanel::desktop
