// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QObject>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeView>
#include <functional>
#include <memory>

#include "app/desktop/results/RunHistory.h"

namespace dorvanel::desktop {

/// The page "Last Runs" of the main window: the history as a list, with its title marked while a
/// failure has not been dismissed. Main thread.
class ResultsView final : public QObject {
  public:
    /// Null when a part is missing in `window`, which outlives the view as `history` does.
    /// `showDetails` and `dismiss` are given the number of a run.
    static std::unique_ptr<ResultsView> create(QWidget& window, RunHistory& history,
                                               const std::function<void(quint64)>& showDetails,
                                               const std::function<void(quint64)>& dismiss);

    /// Brings the page to the front of the window.
    void open();
    void select(quint64 number);

  private:
    explicit ResultsView(RunHistory& history) : history_(history) {}
    void makeList(QWidget& page);
    QPushButton* makeButton(QWidget& page, const char* name, const QString& text,
                            const QString& tip, const std::function<void(quint64)>& pressed);
    [[nodiscard]] const RunEntry* selected() const;
    void follow();

    RunHistory& history_;
    QTabWidget* pages_ = nullptr;
    QWidget* page_ = nullptr;
    QTreeView* list_ = nullptr;
    QLabel* nothing_ = nullptr;
    QPushButton* details_ = nullptr;
    QPushButton* dismiss_ = nullptr;
};

}  // namespace dorvanel::desktop
