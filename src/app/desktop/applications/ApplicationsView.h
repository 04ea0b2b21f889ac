// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QWidget>
#include <functional>

#include "app/desktop/applications/ApplicationsModel.h"

namespace dorvanel::desktop {

/// Shows the applications of this computer with the boxes that choose their traces, the offer to
/// choose what is recommended, and what could not be found out. Any number of views share a model.
/// Main thread.
class ApplicationsView final : public QWidget {
  public:
    /// `model` outlives the view. `lookAgain` has everything counted again.
    ApplicationsView(ApplicationsModel& model, const std::function<void()>& lookAgain,
                     QWidget* parent = nullptr);

    /// The Tab key goes from `former` through the view's controls, in their order.
    void followInTabOrder(QWidget& former);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void addOffer();
    void addTree();
    void addNotes();
    void addLookAgain(const std::function<void()>& lookAgain);
    void showSummary();
    void showOffer();
    void makeRoomForNotes();

    ApplicationsModel& model_;
    QWidget* offerBox_ = nullptr;
    QLabel* offerText_ = nullptr;
    QPushButton* chooseButton_ = nullptr;
    QTreeView* tree_ = nullptr;
    QLabel* emptyText_ = nullptr;
    QLabel* unseenText_ = nullptr;
    QLabel* faultsText_ = nullptr;
    QLabel* countingText_ = nullptr;
    QPushButton* lookAgainButton_ = nullptr;
};

}  // namespace dorvanel::desktop
