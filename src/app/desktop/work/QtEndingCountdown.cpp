// SPDX-License-Identifier: MIT
#include "app/desktop/work/QtEndingCountdown.h"

#include <QAccessible>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "app/desktop/Words.h"
#include "app/desktop/work/WorkText.h"

namespace dorvanel::desktop {
namespace {

constexpr std::chrono::milliseconds lookInterval{100};

/// How much larger than the rest the countdown is written.
constexpr double textScale = 1.6;

}  // namespace

QtEndingCountdown::QtEndingCountdown(Parts parts) : parts_(std::move(parts)) {
    timer_.setInterval(lookInterval);
    connect(&timer_, &QTimer::timeout, this, &QtEndingCountdown::tick);
}

QtEndingCountdown::~QtEndingCountdown() {
    delete message_;
}

bool QtEndingCountdown::mayEnd(Ending ending) {
    std::unique_lock lock(mutex_);
    if (parts_.time.count() == 0) return !isStruck_;
    ending_ = ending;
    answer_.reset();
    wake_.post();
    answered_.wait(lock, [this] { return answer_ || isStruck_; });
    ending_ = Ending::none;
    wake_.post();
    return !isStruck_ && *answer_;
}

void QtEndingCountdown::strike() {
    {
        const std::lock_guard lock(mutex_);
        isStruck_ = true;
    }
    answered_.notify_all();
}

void QtEndingCountdown::cancel() {
    answer(false);
}

void QtEndingCountdown::answer(bool mayEnd) {
    {
        const std::lock_guard lock(mutex_);
        if (ending_ != Ending::none && !answer_) answer_ = mayEnd;
    }
    answered_.notify_all();
    end();
}

/// The worker has begun to wait, or waits no more.
void QtEndingCountdown::update() {
    {
        const std::lock_guard lock(mutex_);
        shownEnding_ = answer_ || isStruck_ ? Ending::none : ending_;
    }
    if (shownEnding_ == Ending::none) {
        end();
    } else if (message_ == nullptr) {
        begin();
    }
}

void QtEndingCountdown::begin() {
    end_ = parts_.clock.now() + parts_.time;
    shown_ = 0;
    parts_.bringUp();
    makeMessage();
    timer_.start();
    tick();
    message_->show();
    QAccessibleEvent said(text_, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void QtEndingCountdown::makeMessage() {
    message_ = new QDialog(&parts_.window);
    message_->setObjectName(QStringLiteral("endingCountdown"));
    message_->setWindowTitle(QStringLiteral("Dorvanel X"));
    message_->setWindowModality(Qt::WindowModal);
    connect(message_, &QDialog::rejected, this, [this] { answer(false); });

    text_ = new QLabel(message_);
    text_->setObjectName(QStringLiteral("countdownText"));
    text_->setWordWrap(true);
    QFont font = text_->font();
    if (font.pointSizeF() > 0) font.setPointSizeF(font.pointSizeF() * textScale);
    text_->setFont(font);
    auto* note = new QLabel(
        Words::tr("Shredding has ended. What is not saved in other programs may be lost."),
        message_);
    note->setObjectName(QStringLiteral("countdownNote"));
    note->setWordWrap(true);

    auto* buttons = new QDialogButtonBox(message_);
    auto* cancelButton = buttons->addButton(Words::tr("&Cancel"), QDialogButtonBox::RejectRole);
    cancelButton->setObjectName(QStringLiteral("cancelEndingButton"));
    auto* nowButton = buttons->addButton(endNowTextOf(shownEnding_), QDialogButtonBox::AcceptRole);
    nowButton->setObjectName(QStringLiteral("endNowButton"));
    nowButton->setAutoDefault(false);
    cancelButton->setDefault(true);
    connect(cancelButton, &QPushButton::clicked, this, [this] { answer(false); });
    connect(nowButton, &QPushButton::clicked, this, [this] { answer(true); });

    auto* layout = new QVBoxLayout(message_);
    layout->addWidget(text_);
    layout->addWidget(note);
    layout->addWidget(buttons);
    cancelButton->setFocus();
}

void QtEndingCountdown::tick() {
    const auto left = std::chrono::ceil<std::chrono::seconds>(end_ - parts_.clock.now());
    const int seconds = static_cast<int>(left.count());
    if (seconds <= 0) return answer(true);
    if (seconds == shown_) return;
    shown_ = seconds;
    const QString text = countdownTextOf(shownEnding_, seconds);
    text_->setText(text);
    parts_.tell(text);
}

void QtEndingCountdown::end() {
    timer_.stop();
    if (message_ == nullptr) return;
    // Not from within one of its own signals.
    message_->disconnect(this);
    message_->hide();
    message_->deleteLater();
    message_ = nullptr;
    parts_.tell({});
}

}  // namespace dorvanel::desktop
