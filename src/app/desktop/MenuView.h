// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QObject>
#include <functional>

#include "ui/Menu.h"

namespace dorvanel::desktop {

/// Draws a menu of the program in a menu of the toolkit, and brings clicks back. What is drawn
/// follows the program's menu each time it is opened, after each click, and on `sync`. A menu of
/// choices stays open while items are ticked with a click or the space key.
class MenuView final : public QObject {
  public:
    enum class Items {
        commands,  ///< a click does something
        choices,   ///< a click ticks or unticks
    };
    /// What is shown for an item; empty for its title.
    using Text = std::function<QString(const ui::MenuItem&)>;

    /// All outlive the view.
    MenuView(QMenu& view, const ui::Menu& menu, Items items, Text text = {});

    void sync();

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void addItem(ui::MenuItem& item);
    void syncStates();
    /// Ticks or unticks, where that can be done; the menu stays open.
    bool tick(QAction* action);

    QMenu& view_;
    const ui::Menu& menu_;
    Items items_;
    Text text_;
    QList<QAction*> drawn_;  ///< in the order of the menu's items
};

}  // namespace dorvanel::desktop
