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

void ProgressReport::setPercent(double percent) {
    percent_ = percent;
    percentPending_ = true;
    showIfDue();
}

void ProgressReport::setName(std::string_view name) {
    name_ = name;
    namePending_ = true;
    showIfDue();
}

void ProgressReport::showIfDue() {
    const auto now = clock_.now();
    if (now < due_) return;
    due_ = now + interval;
    flush();
}

void ProgressReport::flush() {
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
