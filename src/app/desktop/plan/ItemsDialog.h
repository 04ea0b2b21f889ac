// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

#include "app/desktop/plan/ItemsModel.h"

namespace dorvanel::desktop {

/// The question whether items are to be shredded that somebody has dropped, with a list of them,
/// however long. "Shred" can be pressed once they have been checked; "Cancel" has the keyboard and
/// is what Return and Escape mean. Main thread.
class ItemsDialog final : public QDialog {
  public:
    ItemsDialog(QWidget& parent, std::shared_ptr<const ItemsModel::Paths> paths);

    /// The items have been checked: all of them may be shredded.
    void showChecked(std::shared_ptr<const ItemsModel::Items> items);
    /// More is known of the items.
    void add(const std::vector<ItemFinding>& findings);
    /// All is known; `notices` are what the notes come to.
    void showComplete(const QStringList& notices);
    [[nodiscard]] ItemsModel& model() { return model_; }

  private:
    void showTotals();
    void makeTable();

    ItemsModel model_;
    QLabel* question_ = nullptr;
    QWidget* busy_ = nullptr;
    QTableView* table_ = nullptr;
    QLabel* totals_ = nullptr;
    QLabel* notices_ = nullptr;
    QPushButton* shred_ = nullptr;
    std::uint64_t files_ = 0;
    std::uint64_t bytes_ = 0;
    bool isComplete_ = false;
};

}  // namespace dorvanel::desktop
