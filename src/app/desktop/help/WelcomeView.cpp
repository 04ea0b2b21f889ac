// SPDX-License-Identifier: MIT
#include "app/desktop/help/WelcomeView.h"

#include <QAccessible>
#include <QScrollBar>

namespace dorvanel::desktop {

std::unique_ptr<WelcomeView> WelcomeView::create(const QWidget& window, Parts parts) {
    std::unique_ptr<WelcomeView> made(new WelcomeView(std::move(parts)));
    made->box_ = window.findChild<QWidget*>("welcomeBox");
    made->watch_ = window.findChild<QLabel*>("welcomeWatch");
    made->medium_ = window.findChild<QLabel*>("welcomeMedium");
    made->pages_ = window.findChild<QTabWidget*>("pages");
    made->page_ = window.findChild<QScrollArea*>("applicationsPage");
    auto* limits = window.findChild<QPushButton*>("welcomeLimitsButton");
    auto* dismissal = window.findChild<QPushButton*>("welcomeDismissButton");
    if (made->pages_ == nullptr) made->page_ = nullptr;
    if (made->box_ == nullptr || made->watch_ == nullptr || made->medium_ == nullptr ||
        limits == nullptr || dismissal == nullptr) {
        return nullptr;
    }
    connect(limits, &QPushButton::clicked, made.get(),
            [view = made.get()] { view->parts_.showLimits(); });
    connect(dismissal, &QPushButton::clicked, made.get(), &WelcomeView::dismiss);
    return made;
}

void WelcomeView::show() {
    watch_->setText(parts_.watchSentence());
    medium_->setText(parts_.mediumSentence());
    box_->show();
    if (page_ != nullptr) {
        pages_->setCurrentWidget(page_);
        page_->verticalScrollBar()->setValue(0);
    }
    QAccessibleEvent said(box_, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void WelcomeView::dismiss() {
    // What has the keyboard must not hand it on to a command that shreds.
    box_->window()->setFocus();
    box_->hide();
    parts_.dismissed();
}

}  // namespace dorvanel::desktop
