// SPDX-License-Identifier: MIT
#include "app/desktop/ActivityView.h"

#include <utility>

#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

constexpr std::chrono::seconds refusalStays{5};
constexpr std::chrono::minutes resultStays{1};

QString ready() {
    return Words::tr("Ready.");
}

}  // namespace

ActivityView::ActivityView(Parts parts) : parts_(std::move(parts)) {
    refusalTimer_.setSingleShot(true);
    refusalTimer_.setInterval(refusalStays);
    connect(&refusalTimer_, &QTimer::timeout, this, [this] {
        refusal_.clear();
        update();
    });
    resultTimer_.setSingleShot(true);
    resultTimer_.setInterval(resultStays);
    connect(&resultTimer_, &QTimer::timeout, this, &ActivityView::forgetResult);
    pauseTimer_.setSingleShot(true);
    pauseTimer_.setInterval(pause);
    connect(&pauseTimer_, &QTimer::timeout, this, [this] { parts_.setCommandsEnabled(true); });
}

void ActivityView::show(Activity now) {
    // How an older request ended is no news beside one that has begun.
    if (activity_ == Activity::idle && now != Activity::idle) result_.clear();
    if (now == Activity::idle) isStopping_ = isCancelled_ = false;
    activity_ = now;
    update();
}

void ActivityView::setAsking(bool asking) {
    asking_ = asking;
    if (asking) result_.clear();
    update();
}

void ActivityView::showResult(const QString& result) {
    result_ = result;
    resultTimer_.start();
    update();
}

void ActivityView::forgetResult() {
    if (result_.isEmpty()) return;
    result_.clear();
    update();
}

void ActivityView::setIdleLine(const QString& line) {
    if (idleLine_ == line) return;
    idleLine_ = line;
    if (!isBusy() && result_.isEmpty() && refusal_.isEmpty()) parts_.showMessage(message());
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

void ActivityView::setStopping() {
    isStopping_ = true;
    update();
}

void ActivityView::setCancelled() {
    isCancelled_ = true;
    update();
}

void ActivityView::showCountdown(const QString& countdown) {
    countdown_ = countdown;
    update();
}

bool ActivityView::isBusy() const {
    return activity_ != Activity::idle || asking_ || quitDeferred_;
}

QString ActivityView::message() const {
    if (quitDeferred_) return Words::tr("Dorvanel quits when shredding has ended.");
    if (!refusal_.isEmpty()) return refusal_;
    if (!countdown_.isEmpty()) return countdown_;
    switch (activity_) {
        case Activity::asking:
            return Words::tr("Waiting for your answer…");
        case Activity::waitingForApplications:
            return Words::tr("Waiting for browsers and mail programs to quit…");
        case Activity::collecting:
            return Words::tr("Looking for what is to be shredded…");
        case Activity::shredding:
            if (isStopping_) return Words::tr("Stopping after the block at hand…");
            return Words::tr("Shredding…");
        case Activity::ending:
            return Words::tr("Shredding…");
        case Activity::givenUp:
            if (isCancelled_) return Words::tr("Cancelled. Nothing was shredded.");
            return Words::tr("Given up. Nothing was shredded.");
        case Activity::idle:
            break;
    }
    if (asking_) return Words::tr("Waiting for your answer…");
    if (!result_.isEmpty()) return result_;
    return idleLine_.isEmpty() ? ready() : idleLine_;
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
