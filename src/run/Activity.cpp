// SPDX-License-Identifier: MIT
#include "run/Activity.h"

namespace dorvanel {

bool ActivityState::begin(Activity step) {
    return change(Activity::idle, step);
}

bool ActivityState::goOn(Activity step) {
    Activity from = now_;
    do {
        if (from == Activity::givenUp) return false;
    } while (!now_.compare_exchange_weak(from, step));
    if (changed_) changed_(step);
    // A quit request that came just before the change has only looked at the step before.
    return !quitting_ || !change(step, Activity::givenUp);
}

void ActivityState::end() {
    const Activity former = now_.exchange(Activity::idle);
    if (former != Activity::idle && changed_) changed_(Activity::idle);
}

void ActivityState::giveUp() {
    quitting_ = true;
    for (const Activity step :
         {Activity::asking, Activity::waitingForApplications, Activity::collecting}) {
        if (change(step, Activity::givenUp)) return;
    }
}

bool ActivityState::cancel() {
    return change(Activity::waitingForApplications, Activity::givenUp) ||
           change(Activity::collecting, Activity::givenUp);
}

bool ActivityState::change(Activity from, Activity to) {
    if (!now_.compare_exchange_strong(from, to)) return false;
    if (changed_) changed_(to);
    return true;
}

}  // namespace dorvanel
