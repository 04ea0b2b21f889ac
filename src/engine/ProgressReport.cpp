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
    showIfDue();
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
}

}  // namespace dorvanel
