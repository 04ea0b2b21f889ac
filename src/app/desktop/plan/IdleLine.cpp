// SPDX-License-Identifier: MIT
#include "app/desktop/plan/IdleLine.h"

#include <chrono>
#include <utility>

#include "app/RunLook.h"
#include "app/desktop/plan/PlanWords.h"

namespace dorvanel::desktop {

IdleLine::IdleLine(Looker& looker, LookServices& services, Parts parts)
    : looker_(looker), services_(services), parts_(std::move(parts)) {
    timer_.setInterval(std::chrono::seconds(1));
    connect(&timer_, &QTimer::timeout, this, &IdleLine::beat);
}

void IdleLine::forget() {
    isDue_ = true;
    makeRoom();
    parts_.show({});
}

void IdleLine::makeRoom() {
    if (isLooking_) looker_.stop();
}

void IdleLine::beat() {
    RunChoice choice = parts_.choice();
    const bool stoodStill = seen_ == choice;
    if (!stoodStill) {
        const bool isFirst = !seen_.has_value();
        seen_ = std::move(choice);
        forget();
        if (!isFirst) parts_.choiceChanged();
        return;
    }
    if (isDue_ && seen_->areKnown && parts_.isIdle() && !looker_.isAtWork()) look();
}

void IdleLine::look() {
    isDue_ = false;
    isLooking_ = true;
    const auto words = std::make_shared<QString>();
    looker_.start(
        [words, choice = *seen_, &services = services_](const Looker::Stop& stop) {
            *words = idleWords(lookAtRun(choice, services, LookDepth::sizes, stop).plan);
        },
        [this, words](bool isWhole) {
            isLooking_ = false;
            if (!isWhole) {
                isDue_ = true;
            } else if (!isDue_) {
                parts_.show(*words);
            }
        });
}

}  // namespace dorvanel::desktop
