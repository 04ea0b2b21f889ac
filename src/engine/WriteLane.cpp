// SPDX-License-Identifier: MIT
#include "engine/WriteLane.h"

#include <new>
#include <utility>

namespace dorvanel {

bool WriteLane::begin(int file) {
    end();
    try {
        memory_ = BlockPasses::memory();
        for (BlockPasses& block : ring_) block.contents.reserve(BlockPasses::most);
        if (thread_ == nullptr) thread_ = platform::makeWorker();
        file_ = file;
        given_ = done_ = 0;
        isEnding_ = false;
        result_ = {};
        isOpen_ = static_cast<bool>(thread_->start([this] { work(); }));
    } catch (const std::bad_alloc&) {
        isOpen_ = false;
    }
    return isOpen_;
}

bool WriteLane::take(BlockPasses& block) {
    {
        const std::lock_guard lock(mutex_);
        if (given_ - done_ == depth) return false;
        std::swap(ring_[given_ % depth], block);
        ++given_;
    }
    changed_.notify_all();
    return true;
}

WriteLane::Result WriteLane::end() {
    if (!isOpen_) return {};
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    thread_->wait();
    isOpen_ = false;
    return std::exchange(result_, {});
}

void WriteLane::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return done_ != given_ || isEnding_; });
        if (done_ == given_) return;
        BlockPasses& block = ring_[done_ % depth];
        lock.unlock();
        const BlockWritten written = block.write(system_, file_, memory_);
        lock.lock();
        result_.bytes += written.bytes;
        if (result_.code == 0 && written.code != 0) {
            result_.code = written.code;
            result_.offset = block.offset;
        }
        ++done_;
    }
}

}  // namespace dorvanel
