// SPDX-License-Identifier: MIT
#include "platform/PollLoop.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <atomic>
#include <deque>
#include <mutex>
#include <vector>

#include "platform/linux/FileDescriptor.h"

namespace dorvanel::platform {
namespace {

using ui::RunLoop;
using ui::Timer;
using Steady = std::chrono::steady_clock;

struct RepeatingTimer final : Timer {
    RepeatingTimer(std::chrono::milliseconds every, Steady::time_point now, RunLoop::Fire what)
        : interval(every), due(now + every), fire(std::move(what)) {}

    void invalidate() override { valid = false; }

    void fireAt(Steady::time_point now) {
        due += ((now - due) / interval + 1) * interval;
        fire(*this);
    }

    const Steady::duration interval;
    Steady::time_point due;
    const RunLoop::Fire fire;
    bool valid = true;
};

class PollingRunLoop final : public RunLoop {
  public:
    PollingRunLoop(FileDescriptor wake, const Clock& clock)
        : wake_(std::move(wake)), clock_(clock) {}

    std::shared_ptr<Timer> scheduleRepeatingTimer(std::chrono::milliseconds interval,
                                                  Fire fire) override {
        return timers_.emplace_back(
            std::make_shared<RepeatingTimer>(interval, clock_.now(), std::move(fire)));
    }

    void run() override {
        while (!stopped_) {
            sleepUntilDue();
            runPosted();
            fireDue();
        }
        stopped_ = false;
    }

    void stop() override {
        stopped_ = true;
        wake();
    }

    void performOnMainThread(std::function<void()> work) override {
        {
            const std::lock_guard lock(mutex_);
            posted_.push_back(std::move(work));
        }
        wake();
    }

  private:
    using Timers = std::vector<std::shared_ptr<RepeatingTimer>>;

    static bool isEarlier(const Timers::value_type& one, const Timers::value_type& other) {
        return one->due < other->due;
    }

    void wake() { ::eventfd_write(wake_.get(), 1); }

    void sleepUntilDue() {
        using std::chrono::seconds;
        pollfd descriptor{wake_.get(), POLLIN, 0};
        timespec limit{};
        if (!timers_.empty()) {
            const auto first = std::min_element(timers_.begin(), timers_.end(), isEarlier);
            const auto left = std::max((*first)->due - clock_.now(), Steady::duration::zero());
            const auto whole = std::chrono::duration_cast<seconds>(left);
            limit = {whole.count(), std::chrono::nanoseconds(left - whole).count()};
        }
        // Woken by a signal, the loop comes round once for nothing.
        if (::ppoll(&descriptor, 1, timers_.empty() ? nullptr : &limit, nullptr) > 0) {
            eventfd_t ignored = 0;
            ::eventfd_read(wake_.get(), &ignored);
        }
    }

    /// What the works post comes after the timers: the one cannot starve the other.
    void runPosted() {
        std::unique_lock lock(mutex_);
        for (std::size_t left = posted_.size(); left > 0 && !stopped_; --left) {
            const std::function<void()> work = std::move(posted_.front());
            posted_.pop_front();
            lock.unlock();
            work();
            lock.lock();
        }
        if (!posted_.empty()) wake();
    }

    void fireDue() {
        Timers timers = timers_;  // firing may schedule and invalidate
        std::stable_sort(timers.begin(), timers.end(), isEarlier);
        const Steady::time_point now = clock_.now();
        for (const auto& timer : timers) {
            if (!stopped_ && timer->valid && timer->due <= now) timer->fireAt(now);
        }
        std::erase_if(timers_, [](const auto& timer) { return !timer->valid; });
    }

    FileDescriptor wake_;
    const Clock& clock_;
    std::atomic<bool> stopped_ = false;
    std::mutex mutex_;
    std::deque<std::function<void()>> posted_;
    Timers timers_;
};

}  // namespace

Result<std::unique_ptr<RunLoop>> makeRunLoop(const Clock& clock) {
    FileDescriptor wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!wake.isOpen()) return Error::fromErrno("make a main loop", {});
    return std::unique_ptr<RunLoop>(std::make_unique<PollingRunLoop>(std::move(wake), clock));
}

}  // namespace dorvanel::platform
