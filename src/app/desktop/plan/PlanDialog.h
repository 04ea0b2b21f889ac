// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

#include "app/desktop/plan/PlanModel.h"

namespace dorvanel::desktop {

/// The question whether what a plan holds is to be shredded, with the plan to look at. It says
/// "Looking…" until there is a plan. "Cancel" has the keyboard and is what Return and Escape mean.
/// Main thread.
class PlanDialog final : public QDialog {
  public:
    struct Texts {
        QString title;
        QString lead;     ///< above the plan
        QString nothing;  ///< in place of a plan that holds nothing
    };
    PlanDialog(QWidget& parent, const Texts& texts);

    /// Shows the plan, and lets it be carried out if there is anything in it.
    void showPlan(ShownPlan shown, PlanTree tree);
    /// Shows why there is no plan.
    void showTrouble(const QString& trouble);
    [[nodiscard]] PlanModel& model() { return model_; }

  private:
    QWidget* makeContents();
    void expandShortOnes();

    Texts texts_;
    PlanModel model_;
    QLabel* lead_ = nullptr;
    QWidget* busy_ = nullptr;
    QWidget* contents_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QTreeView* tree_ = nullptr;
    QLabel* notices_ = nullptr;
    QLabel* totals_ = nullptr;
    QPushButton* shred_ = nullptr;
    QPushButton* cancel_ = nullptr;
};

}  // namespace dorvanel::desktop
