// SPDX-License-Identifier: MIT
#include "platform/ProgramEnds.h"

// Said outside, as the header of some C libraries does not say it for C++.
extern "C" {
#include <sys/pidfd.h>
}
#include <poll.h>
#include <sys/eventfd.h>

#include <cerrno>
#include <chrono>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/Worker.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/ProcessFolder.h"

namespace dorvanel::platform {
namespace {

constexpr std::chrono::milliseconds kPauseAfterTrouble(100);

/// A descriptor is closed when neither the list nor the thread, which may be waiting for it at the
/// moment, has it any more.
using Pidfd = std::shared_ptr<const FileDescriptor>;

bool hasEnded(const FileDescriptor& pidfd) {
    pollfd descriptor{pidfd.get(), POLLIN, 0};
    return ::poll(&descriptor, 1, 0) > 0;
}

/// What the main thread and the thread that waits have in common.
class Waiting {
  public:
    explicit Waiting(FileDescriptor wake) : wake_(std::move(wake)) {}

    [[nodiscard]] bool isFollowed(const ProcessIdentity& process) const {
        const std::lock_guard lock(mutex_);
        return followed_.contains(process);
    }
    [[nodiscard]] bool isFull() const {
        const std::lock_guard lock(mutex_);
        return followed_.size() >= kMostFollowedPrograms;
    }
    void add(const ProcessIdentity& process, FileDescriptor pidfd) {
        {
            const std::lock_guard lock(mutex_);
            followed_[process] = std::make_shared<const FileDescriptor>(std::move(pidfd));
        }
        wake();
    }
    void remove(const ProcessIdentity& process) {
        {
            const std::lock_guard lock(mutex_);
            std::erase(ended_, process);
            if (followed_.erase(process) == 0) return;
        }
        wake();
    }
    void stop() {
        {
            const std::lock_guard lock(mutex_);
            stopped_ = true;
        }
        wake();
    }
    /// Those that have ended since the last call.
    std::vector<ProcessIdentity> takeEnded() {
        const std::lock_guard lock(mutex_);
        return std::exchange(ended_, {});
    }

    /// Waits until processes have ended, which are then no longer followed; false when it was
    /// stopped instead. Called on the thread that waits.
    bool waitForEnds() {
        while (true) {
            std::vector<std::pair<ProcessIdentity, Pidfd>> looked;
            {
                const std::lock_guard lock(mutex_);
                if (stopped_) return false;
                looked.assign(followed_.begin(), followed_.end());
            }
            std::vector<pollfd> descriptors{{wake_.get(), POLLIN, 0}};
            for (const auto& [process, pidfd] : looked) {
                descriptors.push_back({pidfd->get(), POLLIN, 0});
            }
            if (::poll(descriptors.data(), descriptors.size(), -1) < 0) {
                // Without memory there is nothing to do but to try again, not too often.
                if (errno != EINTR) std::this_thread::sleep_for(kPauseAfterTrouble);
                continue;
            }
            if (descriptors.front().revents != 0) {
                eventfd_t ignored = 0;
                ::eventfd_read(wake_.get(), &ignored);
            }
            bool found = false;
            const std::lock_guard lock(mutex_);
            for (std::size_t i = 0; i < looked.size(); ++i) {
                if (descriptors[i + 1].revents == 0) continue;
                if (followed_.erase(looked[i].first) == 0) continue;
                ended_.push_back(looked[i].first);
                found = true;
            }
            if (found) return true;
        }
    }

  private:
    void wake() const { ::eventfd_write(wake_.get(), 1); }

    const FileDescriptor wake_;
    mutable std::mutex mutex_;
    std::map<ProcessIdentity, Pidfd> followed_;
    std::vector<ProcessIdentity> ended_;  ///< and not yet told
    bool stopped_ = false;
};

class PidfdProgramEnds final : public ProgramEnds {
  public:
    explicit PidfdProgramEnds(ui::RunLoop& runLoop) : runLoop_(runLoop) {}
    ~PidfdProgramEnds() override {
        if (waiting_ == nullptr) return;
        waiting_->stop();
        worker_->wait();
    }

    void tell(Ended ended) override { *ended_ = std::move(ended); }

    Following follow(const ProcessIdentity& process) override {
        if (!start()) return Following::refused;
        if (waiting_->isFollowed(process)) return Following::yes;
        if (waiting_->isFull()) return Following::refused;
        FileDescriptor pidfd(::pidfd_open(process.pid, 0));
        if (!pidfd.isOpen()) return errno == ESRCH ? Following::ended : Following::refused;
        // Read last: that it started when the one in question did shows that the number had not
        // been given to another process when the pidfd was opened.
        const auto facts = ProcessFolder(process.pid).facts();
        if (!facts && facts.error().code != ENOENT && facts.error().code != ESRCH)
            return Following::refused;
        if (!facts || facts.value().startTime != process.started || hasEnded(pidfd))
            return Following::ended;
        waiting_->add(process, std::move(pidfd));
        return Following::yes;
    }

    void unfollow(const ProcessIdentity& process) override {
        if (waiting_ != nullptr) waiting_->remove(process);
    }

  private:
    /// Has the thread wait, unless it does already.
    bool start() {
        if (waiting_ != nullptr) return true;
        FileDescriptor wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
        if (!wake.isOpen()) return false;
        const auto waiting = std::make_shared<Waiting>(std::move(wake));
        // What is posted may come round when this object has gone.
        const auto deliver = [waiting, owner = std::weak_ptr<Ended>(ended_)] {
            const std::vector<ProcessIdentity> processes = waiting->takeEnded();
            const std::shared_ptr<Ended> listener = owner.lock();
            if (processes.empty() || listener == nullptr || !*listener) return;
            const Ended ended = *listener;  // which may be replaced while it is called
            ended(processes);
        };
        const auto started = worker_->start([waiting, deliver, &runLoop = runLoop_] {
            while (waiting->waitForEnds()) runLoop.performOnMainThread(deliver);
        });
        if (started) waiting_ = waiting;
        return started.ok();
    }

    ui::RunLoop& runLoop_;
    const std::shared_ptr<Ended> ended_ = std::make_shared<Ended>();
    std::shared_ptr<Waiting> waiting_;  ///< null: nothing was followed yet
    const std::unique_ptr<Worker> worker_ = makeWorker();
};

}  // namespace

std::unique_ptr<ProgramEnds> makeProgramEnds(ui::RunLoop& runLoop) {
    return std::make_unique<PidfdProgramEnds>(runLoop);
}

}  // namespace dorvanel::platform
