// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QIcon>
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
    /// What the icon says.
    enum class State { idle, working, failure };

    struct Parts {
        /// Whether there is a status area now; empty where there never is one.
        std::function<bool()> isAvailable;
        ui::Menu& commands;
        std::function<void()> show, quit;
        /// The status area, and the icon with it, has gone.
        std::function<void()> gone;
        std::function<void()> showPreferences, showLastRuns;
        std::function<bool()> isWatching;       ///< the preference "BrowserWatch"
        std::function<void(bool)> setWatching;  ///< sets it
    };
    explicit Tray(Parts parts) : parts_(std::move(parts)) {}

    /// Makes the icon or lets it go, as there is a status area now or is none. Not from within a
    /// command of the icon's menu.
    void check();
    /// Whether the commands of the menu can be chosen.
    void setCommandsEnabled(bool enabled);
    /// What the icon shows, and its tip says in words after the program's name; kept while there
    /// is no icon.
    void setStatus(State state, const QString& text);
    /// Brings the ticks of the menu up to date, which otherwise happens when it is opened.
    void sync();

    [[nodiscard]] bool isThere() const { return icon_ != nullptr; }
    [[nodiscard]] State state() const { return state_; }
    [[nodiscard]] QString toolTip() const;
    /// The icon's menu; null where there is no icon.
    [[nodiscard]] QMenu* menu() const { return isThere() ? menu_.get() : nullptr; }

    /// The program's icon with the theme's emblem for the state.
    static QIcon iconFor(State state);

  private:
    void makeMenu();
    void makeIcon();

    Parts parts_;
    State state_ = State::idle;
    QString status_;
    std::unique_ptr<QMenu> menu_;
    std::unique_ptr<QMenu> commands_;
    std::unique_ptr<MenuView> view_;
    QAction* watching_ = nullptr;
    std::unique_ptr<QSystemTrayIcon> icon_;
};

}  // namespace dorvanel::desktop
