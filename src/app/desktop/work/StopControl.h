// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QMainWindow>
#include <QObject>
#include <QPushButton>
#include <functional>
#include <memory>

#include "run/Activity.h"

namespace dorvanel::desktop {

/// The one button, and its command in the menu, that offers the way out of what goes on: Stop while
/// something is shredded, Cancel before anything is touched, and Go On when something was stopped
/// and nothing else has begun. Main thread.
class StopControl final : public QObject {
  public:
    struct Parts {
        std::function<void()> stop, cancel, goOn;
    };
    /// Null when a part is missing in `window`, which outlives the control.
    static std::unique_ptr<StopControl> create(QMainWindow& window, Parts parts);

    void show(Activity now);
    /// Whether there is something to go on with, until something else begins.
    void offerGoOn(bool canGoOn);
    /// Whether commands that shred something can be given: going on is one.
    void setCommandsEnabled(bool enabled);

  private:
    enum class Offer { nothing, stop, stopping, cancel, cancelling, goOn };

    explicit StopControl(Parts parts) : parts_(std::move(parts)) {}
    void act();
    void offer(Offer offer);

    Parts parts_;
    QMainWindow* window_ = nullptr;
    QPushButton* button_ = nullptr;
    QAction* action_ = nullptr;
    Activity activity_ = Activity::idle;
    Offer offer_ = Offer::nothing;
    bool canGoOn_ = false;
    bool commandsEnabled_ = false;
};

}  // namespace dorvanel::desktop
