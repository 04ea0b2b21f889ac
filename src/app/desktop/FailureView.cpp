// SPDX-License-Identifier: MIT
#include "app/desktop/FailureView.h"

#include <QAccessible>
#include <QMessageBox>
#include <QStringList>
#include <algorithm>
#include <utility>

#include "app/desktop/Elision.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

/// A program that nobody looks at for weeks keeps so many of its failures.
constexpr std::size_t keptFailures = 100;

QString sentenceOf(const Failure& failure) {
    //: %1: a time of day, %2: what went wrong
    return Words::tr("%1: %2", "failure").arg(failure.when, failure.message);
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
    if (failures_.empty()) return show();
    const quint64 run = failures_.front().run;
    failures_.pop_front();
    show();
    if (run != 0 && runDismissed_) runDismissed_(run);
}

void FailureView::dismissRun(quint64 run) {
    std::erase_if(failures_, [run](const Failure& failure) { return failure.run == run; });
    show();
}

void FailureView::leadTo(std::function<bool(quint64, const QString&)> show,
                         std::function<void(quint64)> dismissed) {
    showRun_ = std::move(show);
    runDismissed_ = std::move(dismissed);
}

void FailureView::show() {
    // What has the keyboard must not hand it on to a command that shreds.
    if (failures_.empty() && box_->isAncestorOf(box_->window()->focusWidget())) {
        box_->window()->setFocus();
    }
    box_->setVisible(!failures_.empty());
    if (failures_.empty()) return;
    const QString text = sentenceOf(failures_.front());
    const std::size_t older = failures_.size() - 1;
    const QString more =
        older == 1 ? Words::tr("(One older failure is in the details.)")
                   : Words::tr("(%Ln older failures are in the details.)", nullptr, int(older));
    showCut(*text_, older == 0 ? text : text + u' ' + more);
}

QString FailureView::message() const {
    return failures_.empty() ? QString() : failures_.front().message;
}

QString FailureView::allDetails() const {
    return detailsFrom(0);
}

QString FailureView::detailsFrom(std::size_t first) const {
    QStringList parts;
    for (std::size_t i = first; i < failures_.size(); ++i) {
        const Failure& failure = failures_[i];
        parts << sentenceOf(failure) +
                     (failure.details.isEmpty() ? QString() : u'\n' + failure.details);
    }
    return parts.join(QStringLiteral("\n\n"));
}

void FailureView::showDetails() {
    if (failures_.empty()) return;
    const quint64 run = failures_.front().run;
    if (run != 0 && showRun_ && showRun_(run, detailsFrom(1))) return;
    auto* box = new QMessageBox(QMessageBox::Information, Words::tr("Dorvanel X"), text_->text(),
                                QMessageBox::Close, box_->window());
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
