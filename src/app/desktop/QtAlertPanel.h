// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>
#include <QWidget>
#include <functional>
#include <string>
#include <utility>

#include "app/desktop/QtRunLoop.h"
#include "ui/AlertPanel.h"
#include "ui/Window.h"

namespace dorvanel::desktop {

/// What an alert or a sheet says. An empty alternate or other button is not shown.
struct AlertText {
    std::string title, message, defaultButton, alternateButton, otherButton;
    /// The message with nothing cut short, for its tool tip and assistive technology; empty where
    /// that is the message.
    std::string whole = {};
};

/// How much room a name has in the message of an alert, in pixels.
inline constexpr int alertNameWidth = 330;

/// A message box of that text on `parent`. The window's close button and Escape stand for the
/// button titled "Cancel" or "No", else for the default one.
QMessageBox* makeAlert(QWidget* parent, const AlertText& text);

/// The button that ended the box.
ui::AlertButton clickedButton(const QMessageBox& box);

/// Modal alerts over the main window. While one is up, the timers stand still.
class QtAlertPanel final : public ui::AlertPanel {
  public:
    /// Told when an alert comes up and when it has gone.
    using Asking = std::function<void(bool)>;

    /// `parent` and `loop` outlive the panel.
    QtAlertPanel(QWidget& parent, QtRunLoop& loop, Asking asking)
        : parent_(parent), loop_(loop), asking_(std::move(asking)) {}

    ui::AlertButton runAlertPanel(const std::string& title, const std::string& message,
                                  const std::string& defaultButton,
                                  const std::string& alternateButton,
                                  const std::string& otherButton) override;
    ui::AlertButton ask(const AlertText& text);

  private:
    QWidget& parent_;
    QtRunLoop& loop_;
    Asking asking_;
};

}  // namespace dorvanel::desktop
