// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QObject>
#include <QTabWidget>

namespace dorvanel::desktop {

/// The search of the preferences panel: while there is a word in its field, a list of the controls
/// that say it, on whatever page, takes the place of the pages. One that is chosen is shown on its
/// page and has the keyboard. Main thread.
class PanelSearch final : public QObject {
  public:
    /// All of them outlive the search.
    PanelSearch(QLineEdit& field, QListWidget& results, QTabWidget& pages);

    /// Empties the field: the pages are there again.
    void clear();
    /// Shows a control of a page, and gives it the keyboard.
    void reveal(QWidget& control);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void search(const QString& text);
    void addMatches(QWidget& page, const QString& pageTitle, const QStringList& words);
    void choose(const QListWidgetItem* item);

    QLineEdit& field_;
    QListWidget& results_;
    QTabWidget& pages_;
    QList<QWidget*> found_;  ///< in the order of the list
};

}  // namespace dorvanel::desktop
