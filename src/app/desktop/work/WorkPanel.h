// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <memory>

#include "app/desktop/work/QtEndingCountdown.h"
#include "app/desktop/work/StopControl.h"
#include "app/desktop/work/WorkView.h"

namespace dorvanel::desktop {

/// What the window shows and offers while something goes on: how far it is, the way out, and the
/// countdown before an ending. Main thread.
class WorkPanel final {
  public:
    struct Parts {
        WorkView::Parts view;
        StopControl::Parts stop;
        QtEndingCountdown::Parts countdown;
    };
    /// Null when a part is missing in the window.
    static std::unique_ptr<WorkPanel> create(Parts parts);

    void show(Activity now);
    /// Whether commands that shred something can be given.
    void setCommandsEnabled(bool enabled) { stop_->setCommandsEnabled(enabled); }
    void offerGoOn(bool canGoOn) { stop_->offerGoOn(canGoOn); }
    /// Whether it is time to look after the window again, when somebody keeps the main thread.
    [[nodiscard]] bool isDue();

    [[nodiscard]] WorkView& view() { return *view_; }
    [[nodiscard]] QtEndingCountdown& countdown() { return *countdown_; }

  private:
    WorkPanel() = default;

    std::unique_ptr<WorkView> view_;
    std::unique_ptr<StopControl> stop_;
    std::unique_ptr<QtEndingCountdown> countdown_;
    QElapsedTimer lookedAfter_;
};

}  // namespace dorvanel::desktop
