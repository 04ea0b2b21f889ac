// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>
#include <functional>
#include <memory>

#include "app/desktop/MenuView.h"
#include "ui/Menu.h"

namespace dorvanel::desktop {

/// The icon in the status area and its menu, which stands in for the Dock's. It is there while
/// there is a status area. Main thread.
class Tray final {
  public:
    struct Parts {
        /// Whether there is a status area now; empty where there never is one.
        std::function<bool()> isAvailable;
        ui::Menu& commands;
        std::function<void()> show, quit;
        /// The status area, and the icon with it, has gone.
        std::function<void()> gone;
    };
    explicit Tray(Parts parts) : parts_(std::move(parts)) {}

    /// Makes the icon or lets it go, as there is a status area now or is none. Not from within a
    /// command of the icon's menu.
    void check();
    /// Whether the commands of the menu can be chosen.
    void setCommandsEnabled(bool enabled);

    [[nodiscard]] bool isThere() const { return icon_ != nullptr; }
    /// The icon's menu; null where there is no icon.
    [[nodiscard]] QMenu* menu() const { return isThere() ? menu_.get() : nullptr; }

  private:
    void makeMenu();
    void makeIcon();

    Parts parts_;
    std::unique_ptr<QMenu> menu_;
    std::unique_ptr<QMenu> commands_;
    std::unique_ptr<MenuView> view_;
    std::unique_ptr<QSystemTrayIcon> icon_;
};

}  // namespace dorvanel::desktop
