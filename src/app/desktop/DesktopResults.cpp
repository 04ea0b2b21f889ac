// SPDX-License-Identifier: MIT
#include <QAction>
#include <QApplication>

#include "app/desktop/Desktop.h"
#include "app/desktop/Words.h"
#include "app/desktop/results/RunResults.h"
#include "log/ActivityLog.h"
#include "run/ShreddingRun.h"

// What stays of the runs, and the program in the background: the page of the last runs, the
// Activity Log, and the icon in the status area.

namespace dorvanel::desktop {
namespace {

/// The items of a run by what they are, and whose. Nothing is measured: a run is not to wait.
Plan unmeasuredPlan(const std::vector<RunItem>& items) {
    Plan plan;
    for (const RunItem& item : items) plan.items.push_back(item.item);
    return plan;
}

}  // namespace

void Desktop::makeResults() {
    results_ = std::make_unique<RunResults>(RunResults::Parts{
        .window = window_->window(),
        .failures = window_->failures(),
        .clock = services_.clock,
        .bus = services_.sessionBus,
        .bringToFront = [this] { activate(); },
        .changed = [this] { showTrayStatus(); },
        .tryAgain = [this](const auto& left) { shredAgain(left); },
        .log = {.path = activityLogPath(),
                .isOn = [this] { return services_.preferencesInstance.boolForKey("ActivityLog"); },
                .showPreferences = [this] { panel_.showPanel(); }},
    });
    controller_->run().keepPlans(unmeasuredPlan);
    if (auto* showLog = window_->window().findChild<QAction*>("showLogAction")) {
        showLog->setShortcutContext(Qt::ApplicationShortcut);
        connect(showLog, &QAction::triggered, this, [this] { results_->showLog(); });
    }
}

void Desktop::runBegins(const std::vector<std::string>& items) {
    for (const auto& document : documents_) document->stopLooking();
    results_->begin(items);
    tellMedium(items);
}

void Desktop::showLastRuns() {
    results_->showList();
}

void Desktop::shredAgain(const std::vector<std::string>& left) {
    shredAfterQuestion(left, Words::tr("Shred What Is Left"), StartedBy::Door::again);
}

bool Desktop::isWatched() const {
    const QMainWindow& window = window_->window();
    return window.isVisible() && !window.isMinimized() && QApplication::activeWindow() != nullptr;
}

void Desktop::showTrayStatus() {
    if (tray_ == nullptr || results_ == nullptr) return;
    const int failures = results_->history().markedCount();
    if (controller_->isBusy()) {
        tray_->setStatus(Tray::State::working,
                         workTip_.isEmpty() ? Words::tr("at work") : workTip_);
    } else if (failures > 0) {
        tray_->setStatus(Tray::State::failure, Words::tr("%Ln run(s) failed", nullptr, failures));
    } else {
        tray_->setStatus(Tray::State::idle, isBrowserWatchOn() ? Words::tr("Browser Watch is on")
                                                               : Words::tr("ready"));
    }
    tray_->sync();
}

bool Desktop::isBrowserWatchOn() const {
    return services_.preferencesInstance.boolForKey("BrowserWatch");
}

void Desktop::setBrowserWatch(bool on) {
    Preferences& preferences = services_.preferencesInstance;
    preferences.displayedValues.insert_or_assign("BrowserWatch", Number::fromBool(on));
    if (const auto saved = preferences.commitDisplayedValues(); !saved) {
        tellFailure(Words::tr("The preferences could not be saved."),
                    QString::fromStdString(saved.error().message()));
    }
    panel_.reallyupdateUI();
    showTrayStatus();
}

void Desktop::startHidden() {
    if (tray_->isThere()) return;
    // A window that is nowhere could not be found again.
    isBehindIcon_ = true;
    window_->window().showMinimized();
}

}  // namespace dorvanel::desktop
