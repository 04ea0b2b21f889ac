// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QObject>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QWidget>
#include <functional>
#include <memory>

namespace dorvanel::desktop {

/// The first minutes: a box on the main window's first page that says what is shredded, what starts
/// by itself, and what overwriting cannot promise here. It asks nothing and takes no keyboard. Main
/// thread.
class WelcomeView final : public QObject {
  public:
    struct Parts {
        // The sentences are asked for each time the box is shown.

        std::function<QString()> watchSentence;   ///< what starts by itself
        std::function<QString()> mediumSentence;  ///< what overwriting can promise on these disks
        std::function<void()> showLimits;         ///< the page of the help about that
        std::function<void()> dismissed;          ///< somebody has read it
    };
    /// Null where the window has no place for it.
    static std::unique_ptr<WelcomeView> create(const QWidget& window, Parts parts);

    void show();

  private:
    explicit WelcomeView(Parts parts) : parts_(std::move(parts)) {}
    void dismiss();

    Parts parts_;
    QWidget* box_ = nullptr;
    QTabWidget* pages_ = nullptr;  ///< of the window; null where it has none
    QScrollArea* page_ = nullptr;  ///< the one that the box is on
    QLabel* watch_ = nullptr;
    QLabel* medium_ = nullptr;
};

}  // namespace dorvanel::desktop
