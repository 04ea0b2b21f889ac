// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>
#include <QLabel>

namespace dorvanel::desktop {

/// Lies over a window's contents while files are dragged over it, and says what letting go of them
/// would do, or why it would do nothing. Takes neither the mouse nor the keyboard. Main thread.
class DropOverlay final : public QFrame {
  public:
    /// A child of `window`, hidden at first.
    explicit DropOverlay(QWidget& window);

    /// What a drop would do; `takes`: whether it would do anything.
    void say(const QString& text, bool takes);
    [[nodiscard]] QString text() const { return text_->text(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void cover();

    QWidget& window_;
    QLabel* icon_;
    QLabel* text_;
};

}  // namespace dorvanel::desktop
