// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QObject>
#include <functional>

#include "ui/Menu.h"

namespace dorvanel::desktop {

/// Draws a menu of the program in a menu of the toolkit, and brings clicks back. What is drawn
/// follows the program's menu each time it is opened, after each click, and on `sync`.
class MenuView final : public QObject {
  public:
    enum class Items {
        commands,  ///< a click does something
        choices,   ///< a click ticks or unticks
    };
    /// A tool tip for an item; empty for none.
    using ToolTip = std::function<QString(const ui::MenuItem&)>;

    /// All outlive the view.
    MenuView(QMenu& view, const ui::Menu& menu, Items items, ToolTip toolTip = {});

    void sync();

  private:
    void addItem(ui::MenuItem& item);
    void syncStates();

    QMenu& view_;
    const ui::Menu& menu_;
    Items items_;
    ToolTip toolTip_;
    QList<QAction*> drawn_;  ///< in the order of the menu's items
};

}  // namespace dorvanel::desktop
