// SPDX-License-Identifier: MIT
#include "platform/QuitWait.h"

#include <condition_variable>
#include <mutex>

namespace dorvanel::platform {
namespace {

class SleepingWait final : public QuitWait {
  public:
    bool wait(std::chrono::microseconds time) override {
        std::unique_lock lock(mutex_);
        return !wake_.wait_for(lock, time, [this] { return cancelled_; });
    }

    void cancel() override {
        {
            const std::lock_guard lock(mutex_);
            cancelled_ = true;
        }
        wake_.notify_all();
    }

    void renew() override {
        const std::lock_guard lock(mutex_);
        cancelled_ = false;
    }

  private:
    std::mutex mutex_;
    std::condition_variable wake_;
    bool cancelled_ = false;
};

}  // namespace

std::unique_ptr<QuitWait> makeQuitWait() {
    return std::make_unique<SleepingWait>();
}

}  // namespace dorvanel::platform
