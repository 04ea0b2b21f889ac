// SPDX-License-Identifier: MIT
#include "app/desktop/FailureView.h"

#include <QAccessible>
#include <QMessageBox>
#include <QStringList>
#include <algorithm>
#include <utility>

#include "app/desktop/Elision.h"

namespace dorvanel::desktop {
namespace {

/// A program that nobody looks at for weeks keeps so many of its failures.
constexpr std::size_t keptFailures = 100;

QString sentenceOf(const Failure& failure) {
    return QStringLiteral("%1: %2").arg(failure.when, failure.message);
}

}  // namespace

std::unique_ptr<FailureView> FailureView::create(QWidget& window) {
    std::unique_ptr<FailureView> made(new FailureView);
    made->box_ = window.findChild<QWidget*>("failureBox");
    made->text_ = window.findChild<QLabel*>("failureMessage");
    made->dismissButton_ = window.findChild<QPushButton*>("dismissButton");
    auto* details = window.findChild<QPushButton*>("detailsButton");
    if (made->box_ == nullptr || made->text_ == nullptr || made->dismissButton_ == nullptr ||
        details == nullptr) {
        return nullptr;
    }
    connect(made->dismissButton_, &QPushButton::clicked, made.get(), &FailureView::dismiss);
    connect(details, &QPushButton::clicked, made.get(), &FailureView::showDetails);
    made->show();
    return made;
}

void FailureView::add(Failure failure) {
    std::erase_if(failures_, [&failure](const Failure& older) {
        return older.message == failure.message && older.details == failure.details;
    });
    failures_.push_front(std::move(failure));
    if (failures_.size() > keptFailures) failures_.pop_back();
    show();
    QAccessibleEvent said(text_, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void FailureView::dismiss() {
    if (!failures_.empty()) failures_.pop_front();
    show();
}

void FailureView::show() {
    // What has the keyboard must not hand it on to a command that shreds.
    if (failures_.empty() && box_->isAncestorOf(box_->window()->focusWidget())) {
        box_->window()->setFocus();
    }
    box_->setVisible(!failures_.empty());
    if (failures_.empty()) return;
    QString text = sentenceOf(failures_.front());
    const std::size_t older = failures_.size() - 1;
    if (older == 1) text += QStringLiteral(" (One older failure is in the details.)");
    if (older > 1) text += QStringLiteral(" (%1 older failures are in the details.)").arg(older);
    showCut(*text_, text);
}

QString FailureView::message() const {
    return failures_.empty() ? QString() : failures_.front().message;
}

QString FailureView::allDetails() const {
    QStringList parts;
    for (const Failure& failure : failures_) {
        parts << sentenceOf(failure) +
                     (failure.details.isEmpty() ? QString() : u'\n' + failure.details);
    }
    return parts.join(QStringLiteral("\n\n"));
}

void FailureView::showDetails() {
    if (failures_.empty()) return;
    auto* box = new QMessageBox(QMessageBox::Information, QStringLiteral("Dorvanel X"),
                                text_->text(), QMessageBox::Close, box_->window());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setDetailedText(allDetails());
    // They were asked for: they are not hidden behind another button.
    for (QAbstractButton* button : box->buttons()) {
        if (box->buttonRole(button) == QMessageBox::ActionRole) button->click();
    }
    box->open();
}

}  // namespace dorvanel::desktop
