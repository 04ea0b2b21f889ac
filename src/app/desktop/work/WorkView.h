// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>

#include "app/WorkEstimate.h"
#include "app/desktop/work/LauncherEntry.h"
#include "app/desktop/work/QtWorkProgress.h"
#include "platform/Clock.h"

namespace dorvanel::desktop {

/// How far a shredding is, while one is at work: under the bar, in the title of the window, on the
/// icon in the status area and in the dock. Looks four times a second. Main thread.
class WorkView final : public QObject {
  public:
    /// All of them outlive the view.
    struct Parts {
        QMainWindow& window;
        const platform::Clock& clock;
        /// What the icon in the status area says, beside the program's name; "" for nothing.
        std::function<void(const QString&)> showTip;
        LauncherEntry* launcher;  ///< null: there is none
    };
    /// Null when a part is missing in the window.
    static std::unique_ptr<WorkView> create(Parts parts);

    /// The worker tells it how far it is.
    ui::WorkProgress& progress() { return progress_; }

    /// A shredding is at work, or is none any more.
    void setWorking(bool isWorking);
    /// What the status area and the dock say until the next "": a countdown.
    void setCountdown(const QString& text);
    /// Shows what there is to show now.
    void refresh();

  private:
    explicit WorkView(Parts parts);
    void showItem(const ui::WorkState& state);
    void showOutside(int percent);

    Parts parts_;
    QtWorkProgress progress_;
    WorkEstimate estimate_;
    QLabel* text_ = nullptr;
    QLabel* item_ = nullptr;
    QString title_;  ///< of the window while nothing goes on
    QString countdown_;
    bool isWorking_ = false;
    QTimer timer_;
};

}  // namespace dorvanel::desktop
