// SPDX-License-Identifier: MIT
#include <QCoreApplication>

#include "app/desktop/Desktop.h"
#include "app/desktop/work/WorkText.h"
#include "run/ShreddingRun.h"

// What the window shows and offers while something goes on, and how it is stopped.

namespace dorvanel::desktop {

bool Desktop::makeWork() {
    QMainWindow& window = window_->window();
    work_ = WorkPanel::create({
        .view = {.window = window,
                 .clock = services_.clock,
                 .showTip =
                     [this](const QString& text) {
                         workTip_ = text;
                         showTrayStatus();
                     },
                 .launcher = services_.launcher},
        .stop = {.stop =
                     [this] {
                         activity_->setStopping();
                         controller_->run().stop();
                     },
                 .cancel =
                     [this] {
                         activity_->setCancelled();
                         controller_->run().cancel();
                     },
                 .goOn = [this] { goOn(); }},
        .countdown = {.window = window,
                      .clock = services_.clock,
                      .time = services_.countdown,
                      .bringUp = [this] { activate(); },
                      .tell =
                          [this](const QString& text) {
                              activity_->showCountdown(text);
                              work_->view().setCountdown(text);
                          }},
    });
    if (work_ == nullptr) return false;
    // Who has seen what is left, and takes the message away, lets it be.
    if (auto* dismiss = window.findChild<QPushButton*>("dismissButton")) {
        connect(dismiss, &QPushButton::clicked, this, [this] {
            if (window_->failures().count() == 0) work_->offerGoOn(false);
        });
    }
    return true;
}

void Desktop::goOn() {
    if (!refuses()) controller_->run().goOn();
}

void Desktop::showActivity(Activity now) {
    activity_->show(now);
    work_->show(now);
    plansFollow(now);
    showTrayStatus();
    followActivity(now);
}

void Desktop::stillCollecting() {
    if (!work_->isDue()) return;
    // As in the wait for applications: the window is drawn, Cancel and Quit work, no timer fires.
    const QtRunLoop::Hold hold(loop_);
    QCoreApplication::processEvents();
}

void Desktop::tellStop(const RunReport& report) {
    work_->offerGoOn(report.canGoOn && !controller_->isQuitting());
    const QString text = stopTextOf(report);
    if (!text.isEmpty()) activity_->showResult(text);
}

}  // namespace dorvanel::desktop
