// SPDX-License-Identifier: MIT
#include "app/desktop/work/StopControl.h"

#include <QIcon>
#include <QKeySequence>

#include "app/desktop/Words.h"

namespace dorvanel::desktop {

std::unique_ptr<StopControl> StopControl::create(QMainWindow& window, Parts parts) {
    std::unique_ptr<StopControl> made(new StopControl(std::move(parts)));
    made->window_ = &window;
    made->button_ = window.findChild<QPushButton*>("stopButton");
    made->action_ = window.findChild<QAction*>("stopAction");
    if (made->button_ == nullptr || made->action_ == nullptr) return nullptr;
    made->action_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Period));
    made->action_->setShortcutContext(Qt::ApplicationShortcut);
    connect(made->button_, &QPushButton::clicked, made->action_, &QAction::trigger);
    connect(made->action_, &QAction::triggered, made.get(), &StopControl::act);
    made->offer(Offer::nothing);
    return made;
}

void StopControl::act() {
    switch (offer_) {
        case Offer::stop:
            offer(Offer::stopping);
            return parts_.stop();
        case Offer::cancel:
            offer(Offer::cancelling);
            return parts_.cancel();
        case Offer::goOn:
            return parts_.goOn();
        default:
            return;
    }
}

void StopControl::show(Activity now) {
    const bool isNew = now != activity_;
    activity_ = now;
    switch (now) {
        case Activity::waitingForApplications:
        case Activity::collecting:
            if (isNew) offer(Offer::cancel);
            break;
        case Activity::shredding:
            if (isNew) offer(Offer::stop);
            break;
        case Activity::idle:
            return offer(canGoOn_ ? Offer::goOn : Offer::nothing);
        default:
            offer(Offer::nothing);
    }
    canGoOn_ = false;
}

void StopControl::offerGoOn(bool canGoOn) {
    canGoOn_ = canGoOn;
    show(activity_);
}

void StopControl::setCommandsEnabled(bool enabled) {
    commandsEnabled_ = enabled;
    if (offer_ == Offer::goOn) offer(offer_);
}

void StopControl::offer(Offer offer) {
    offer_ = offer;
    QString text = Words::tr("S&top");
    QString tip =
        Words::tr("Ends the shredding after the block at hand; what is left can be finished");
    const char* icon = "process-stop";
    bool isEnabled = offer == Offer::stop || offer == Offer::cancel;
    if (offer == Offer::cancel || offer == Offer::cancelling) {
        text = Words::tr("&Cancel");
        tip = Words::tr("Gives it up before anything is shredded");
        icon = "dialog-cancel";
    } else if (offer == Offer::goOn) {
        text = Words::tr("&Go On");
        tip = Words::tr("Shreds what the stop has left");
        icon = "media-playback-start";
        isEnabled = commandsEnabled_;
    }
    // A button that goes or is dimmed hands the keyboard on, and Go On shreds.
    const bool keepsKeyboard = isEnabled && offer != Offer::goOn;
    if (!keepsKeyboard && window_->focusWidget() == button_) window_->setFocus();
    button_->setText(text);
    button_->setToolTip(tip);
    button_->setAccessibleDescription(tip);
    button_->setIcon(QIcon::fromTheme(QLatin1String(icon)));
    button_->setEnabled(isEnabled);
    button_->setVisible(offer != Offer::nothing);
    action_->setText(text);
    action_->setEnabled(isEnabled);
}

}  // namespace dorvanel::desktop
