// SPDX-License-Identifier: MIT
#include "app/desktop/work/WorkPanel.h"

#include <utility>

namespace dorvanel::desktop {
namespace {

constexpr qint64 betweenLooks = 50;  // milliseconds

}  // namespace

std::unique_ptr<WorkPanel> WorkPanel::create(Parts parts) {
    std::unique_ptr<WorkPanel> made(new WorkPanel);
    made->view_ = WorkView::create(parts.view);
    made->stop_ = StopControl::create(parts.view.window, std::move(parts.stop));
    if (made->view_ == nullptr || made->stop_ == nullptr) return nullptr;
    made->countdown_ = std::make_unique<QtEndingCountdown>(std::move(parts.countdown));
    return made;
}

void WorkPanel::show(Activity now) {
    stop_->show(now);
    view_->setWorking(now == Activity::shredding);
}

bool WorkPanel::isDue() {
    if (lookedAfter_.isValid() && !lookedAfter_.hasExpired(betweenLooks)) return false;
    lookedAfter_.start();
    return true;
}

}  // namespace dorvanel::desktop
