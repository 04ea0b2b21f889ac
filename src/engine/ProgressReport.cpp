// SPDX-License-Identifier: MIT
#include "engine/ProgressReport.h"

namespace dorvanel {

void ProgressReport::showNow(double percent) {
    percent_ = percent;
    percentPending_ = true;
    flush();
}

void ProgressReport::showNow(std::string_view name) {
    name_ = name;
    namePending_ = true;
    flush();
}

void ProgressReport::setName(std::string_view name) {
    name_ = name;
    namePending_ = true;
}

void ProgressReport::setPercent(double percent) {
    percent_ = percent;
    percentPending_ = true;
    state_.phase = ui::WorkPhase::overwriting;
    statePending_ = true;
    showIfDue();
}

void ProgressReport::setItem(std::size_t number, std::size_t count, const std::string& path) {
    if (work_ == nullptr) return;
    state_.item = number;
    state_.items = count;
    state_.path = path;
    statePending_ = true;
}

void ProgressReport::setBytes(std::uint64_t done, std::uint64_t total) {
    state_.done = done;
    state_.total = total;
    statePending_ = true;
}

void ProgressReport::enter(ui::WorkPhase phase) {
    if (phase == ui::WorkPhase::none) state_ = {};
    state_.phase = phase;
    statePending_ = true;
    flush();
}

void ProgressReport::showIfDue() {
    const auto now = clock_.now();
    if (last_ && now - *last_ >= interval) eager_ = afterSlowBlock;
    last_ = now;
    if (now < due_ && eager_ == 0) return;
    if (eager_ > 0) --eager_;
    due_ = now + interval;
    show();
}

void ProgressReport::flush() {
    last_.reset();
    show();
}

void ProgressReport::show() {
    if (namePending_) {
        fileName_.setStringValue(name_);
        fileName_.display();
        namePending_ = false;
    }
    if (percentPending_) {
        shreddingProgress_.setDoubleValue(percent_);
        shreddingProgress_.display();
        percentPending_ = false;
    }
    if (statePending_ && work_ != nullptr) work_->show(state_);
    statePending_ = false;
}

}  // namespace dorvanel
