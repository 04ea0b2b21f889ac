// SPDX-License-Identifier: MIT
#include "app/desktop/applications/ApplicationsOverview.h"

#include <QEvent>
#include <utility>

#include "watch/BrowserWatch.h"

namespace dorvanel::desktop {

ApplicationsOverview::ApplicationsOverview(QWidget& window, Parts parts)
    : window_(window),
      clock_(parts.clock),
      isWatching_(std::move(parts.isWatching)),
      model_({.defaults = parts.defaults, .tellFailure = std::move(parts.tellFailure)}),
      survey_(std::move(parts.survey), [this](const SurveyNews& news) { model_.take(news); }) {
    window_.installEventFilter(this);
    connect(&processesTimer_, &QTimer::timeout, this, &ApplicationsOverview::lookAtProcesses);
    processesTimer_.start(processesInterval);
    // As often as the watch itself looks whether it is to be on.
    connect(&watchTimer_, &QTimer::timeout, this, [this] { model_.setWatching(isWatching_()); });
    watchTimer_.start(BrowserWatch::kPollInterval);
}

void ApplicationsOverview::lookAgain() {
    if (isBusy_ || isEnded_) return;
    model_.setWatching(isWatching_());
    static_cast<void>(model_.readChoice());
    model_.setCounting(true);
    survey_.count();
}

void ApplicationsOverview::setBusy(bool isBusy) {
    if (isBusy_ == isBusy) return;
    isBusy_ = isBusy;
    if (isBusy_) {
        survey_.stop();
        model_.setCounting(false);
    } else if (isPainted_) {
        lookAgain();
    }
}

void ApplicationsOverview::end() {
    isEnded_ = true;
    processesTimer_.stop();
    watchTimer_.stop();
    survey_.stop();
    model_.setCounting(false);
}

void ApplicationsOverview::lookAtProcesses() {
    if (isBusy_ || isEnded_ || !window_.isVisible() || window_.isMinimized()) return;
    survey_.lookAtProcesses();
}

void ApplicationsOverview::windowCame() {
    const auto since = std::exchange(away_, std::nullopt);
    if (!isPainted_ || isBusy_ || isEnded_) return;
    if (since && clock_.now() - *since >= longAway) return lookAgain();
    model_.setWatching(isWatching_());
    if (model_.readChoice()) return lookAgain();
    lookAtProcesses();
}

void ApplicationsOverview::windowWent() {
    if (!away_) away_ = clock_.now();
}

bool ApplicationsOverview::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Paint:
            if (std::exchange(isPainted_, true)) break;
            // The picture comes first.
            QMetaObject::invokeMethod(
                this, [this] { lookAgain(); }, Qt::QueuedConnection);
            break;
        case QEvent::WindowActivate:
            windowCame();
            break;
        case QEvent::WindowDeactivate:
        case QEvent::Hide:
            windowWent();
            break;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace dorvanel::desktop
