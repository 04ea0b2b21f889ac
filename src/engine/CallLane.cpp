// SPDX-License-Identifier: MIT
#include "engine/CallLane.h"

namespace dorvanel {

bool CallLane::begin() {
    if (thread_ == nullptr) thread_ = platform::makeWorker();
    isEnding_ = isHalted_ = false;
    isOpen_ = static_cast<bool>(thread_->start([this] { work(); }));
    return isOpen_;
}

void CallLane::end() {
    if (!isOpen_) return;
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    thread_->wait();
    isOpen_ = false;
}

std::uint64_t CallLane::waiting() {
    const std::lock_guard lock(mutex_);
    return handed_ - made_;
}

void CallLane::give() {
    ++given_;
    {
        const std::lock_guard lock(mutex_);
        handed_ = given_;
    }
    changed_.notify_all();
}

LaneCalls& CallLane::take() {
    if (isOpen_) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return made_ > taken_; });
    }
    return ring_[taken_ % ring_.size()];
}

void CallLane::drop() {
    ring_[taken_ % ring_.size()].clear();
    ++taken_;
    {
        const std::lock_guard lock(mutex_);
        if (made_ < taken_) made_ = taken_;  // one that the thread was ended before
        // What halts the thread is the last list that it made, which may come after this one.
        if (made_ == taken_) isHalted_ = false;
    }
    changed_.notify_all();
}

void CallLane::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return isEnding_ || (made_ != handed_ && !isHalted_); });
        if (isEnding_) return;
        LaneCalls& list = ring_[made_ % ring_.size()];
        lock.unlock();
        list.make(system_);
        lock.lock();
        isHalted_ = list.calls.back().state != LaneCall::State::made;
        ++made_;
        changed_.notify_all();
    }
}

}  // namespace dorvanel
