// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>

#include "platform/UserDefaults.h"
#include "ui/Window.h"

namespace dorvanel::desktop {

/// Centres a window on the screen that it is on, and makes it fit there. Where the window system
/// places windows by itself, nothing moves.
void centerOnScreen(QWidget& window);

/// Shows a window in front of the others, with the keyboard.
void bringToFront(QWidget& window);

/// Gives a window without menus the desktop's key for closing.
void closeByKey(QWidget& window);

/// The main window. Its frame is kept in the user's defaults under "NSWindow Frame NAME", as four
/// numbers: left, top, width, height.
class QtWindow final : public QObject, public ui::Window {
  public:
    /// Both outlive this object.
    QtWindow(QWidget& window, platform::UserDefaults& defaults);
    ~QtWindow() override;

    void setFrameAutosaveName(const std::string& name) override;
    void center() override;
    void makeKeyAndOrderFront() override;
    void beginSheet(const std::string& title, const std::string& message,
                    const std::string& defaultButton, const std::string& alternateButton,
                    const std::string& otherButton,
                    std::function<void(ui::SheetCode)> didDismiss) override;

    /// Saves a frame that has changed since it was last saved.
    void saveFrame();

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    [[nodiscard]] std::string key() const { return "NSWindow Frame " + frameName_; }

    QWidget& window_;
    platform::UserDefaults& defaults_;
    std::string frameName_;
    QPointer<QMessageBox> sheet_;  ///< the one on the window now
    QTimer saveTimer_;             ///< runs while a change waits to be saved
};

}  // namespace dorvanel::desktop
