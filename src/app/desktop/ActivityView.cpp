// SPDX-License-Identifier: MIT
#include "app/desktop/ActivityView.h"

#include <utility>

namespace dorvanel::desktop {
namespace {

constexpr std::chrono::seconds refusalStays{5};

QString ready() {
    return QStringLiteral("Ready.");
}

}  // namespace

ActivityView::ActivityView(Parts parts) : parts_(std::move(parts)), result_(ready()) {
    refusalTimer_.setSingleShot(true);
    refusalTimer_.setInterval(refusalStays);
    connect(&refusalTimer_, &QTimer::timeout, this, [this] {
        refusal_.clear();
        update();
    });
    pauseTimer_.setSingleShot(true);
    pauseTimer_.setInterval(pause);
    connect(&pauseTimer_, &QTimer::timeout, this, [this] { parts_.setCommandsEnabled(true); });
}

void ActivityView::show(Activity now) {
    // How an older request ended is no news beside one that has begun.
    if (activity_ == Activity::idle && now != Activity::idle) result_ = ready();
    activity_ = now;
    update();
}

void ActivityView::setAsking(bool asking) {
    asking_ = asking;
    update();
}

void ActivityView::showResult(const QString& result) {
    result_ = result;
    update();
}

void ActivityView::showRefusal(const QString& refusal) {
    refusal_ = refusal;
    refusalTimer_.start();
    update();
}

void ActivityView::setQuitDeferred() {
    quitDeferred_ = true;
    update();
}

bool ActivityView::isBusy() const {
    return activity_ != Activity::idle || asking_ || quitDeferred_;
}

QString ActivityView::message() const {
    if (quitDeferred_) return QStringLiteral("Dorvanel quits when shredding has ended.");
    if (!refusal_.isEmpty()) return refusal_;
    switch (activity_) {
        case Activity::asking:
            return QStringLiteral("Waiting for your answer…");
        case Activity::waitingForApplications:
            return QStringLiteral("Waiting for browsers and mail programs to quit…");
        case Activity::collecting:
            return QStringLiteral("Looking for what is to be shredded…");
        case Activity::shredding:
        case Activity::ending:
            return QStringLiteral("Shredding…");
        case Activity::givenUp:
            return QStringLiteral("Given up. Nothing was shredded.");
        case Activity::idle:
            break;
    }
    return asking_ ? QStringLiteral("Waiting for your answer…") : result_;
}

void ActivityView::update() {
    if (!isBusy()) refusal_.clear();  // what it waited for is over
    parts_.showMessage(message());
    if (isBusy()) {
        pauseTimer_.stop();
        parts_.setCommandsEnabled(false);
    } else if (!pauseTimer_.isActive()) {
        pauseTimer_.start();
    }
}

}  // namespace dorvanel::desktop
