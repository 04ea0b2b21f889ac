// SPDX-License-Identifier: MIT
#include "app/desktop/results/RunResults.h"

#include <utility>

#include "app/desktop/QtWindow.h"

namespace dorvanel::desktop {

RunResults::RunResults(Parts parts)
    : parts_(std::move(parts)),
      view_(ResultsView::create(
          parts_.window, history_, [this](quint64 run) { showRun(run); },
          [this](quint64 run) { dismiss(run); })),
      notifier_(parts_.bus, [this](quint64 run) {
          parts_.bringToFront();
          showRun(run);
      }) {
    parts_.failures.leadTo(
        [this](quint64 run, const QString& older) { return showDetails(run, older); },
        [this](quint64 run) {
            history_.dismiss(run);
            parts_.changed();
        });
}

void RunResults::begin(const std::vector<std::string>& items) {
    began_ = parts_.clock.time();
    given_ = items;
}

quint64 RunResults::add(const RunReport& report) {
    RunEntry entry{.ended = parts_.clock.time(), .report = report};
    const bool isBegun = report.result == RunResult::completed && began_ != 0;
    entry.started = isBegun ? began_ : entry.ended;
    if (isBegun) {
        entry.given = std::exchange(given_, {});
        began_ = 0;
    }
    const quint64 number = history_.add(std::move(entry));
    if (view_ != nullptr) view_->select(number);
    return number;
}

void RunResults::notify(quint64 run, const RunReport& report) {
    const RunEntry* entry = history_.find(run);
    const QString message = quietMessageOf(report);
    if (entry == nullptr || (message.isEmpty() && entry->failure.isEmpty())) return;
    notifier_.tell(run, message, entry->failure);
}

bool RunResults::showDetails(quint64 run, const QString& older) {
    const RunEntry* entry = history_.find(run);
    if (entry == nullptr) return false;
    if (view_ != nullptr) view_->select(run);
    if (details_ != nullptr) details_->close();
    details_ = new RunDetails(parts_.window, *entry, older, parts_.bus, parts_.tryAgain);
    details_->show();
    bringToFront(*details_);
    return true;
}

void RunResults::showList() {
    parts_.bringToFront();
    if (view_ != nullptr) view_->open();
}

void RunResults::dismiss(quint64 run) {
    history_.dismiss(run);
    parts_.failures.dismissRun(run);
    parts_.changed();
}

void RunResults::showLog() {
    if (log_ == nullptr) {
        log_ = new LogDialog(parts_.window, parts_.log);
        log_->setAttribute(Qt::WA_DeleteOnClose);
    }
    log_->reload();
    bringToFront(*log_);
}

}  // namespace dorvanel::desktop
