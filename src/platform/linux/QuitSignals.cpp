#include "platform/QuitSignals.h"

#include <sys/eventfd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <thread>

#include "platform/linux/FileDescriptor.h"

namespace dorvanel::platform {
namespace {

/// Where the handler counts: a handler is given nothing but the signal's number.
std::atomic<int> gCounter = -1;

void countSignal(int) {
    const int before = errno;
    // eventfd_write() is not on the list of calls that a handler may make; write() is.
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t ignored = ::write(gCounter, &one, sizeof one);
    errno = before;
}

class CaughtSignals final : public QuitSignals {
  public:
    CaughtSignals(FileDescriptor counter, std::function<void()> received)
        : counter_(std::move(counter)) {
        gCounter = counter_.get();
        // A handler, not a mask: a mask is inherited by every program that we start.
        struct sigaction action {};
        action.sa_handler = countSignal;
        action.sa_flags = SA_RESTART;
        sigemptyset(&action.sa_mask);
        sigaction(SIGINT, &action, &formerInterrupt_);
        sigaction(SIGTERM, &action, &formerTerminate_);
        // The thread that waits for the count is not interrupted by what it waits for.
        sigset_t counted;
        sigset_t former;
        sigemptyset(&counted);
        sigaddset(&counted, SIGINT);
        sigaddset(&counted, SIGTERM);
        pthread_sigmask(SIG_BLOCK, &counted, &former);
        thread_ = std::thread([this, received = std::move(received)] { tell(received); });
        pthread_sigmask(SIG_SETMASK, &former, nullptr);
    }

    ~CaughtSignals() override {
        if (told_) {
            std::signal(SIGINT, SIG_IGN);
            std::signal(SIGTERM, SIG_IGN);
        } else {
            sigaction(SIGINT, &formerInterrupt_, nullptr);
            sigaction(SIGTERM, &formerTerminate_, nullptr);
        }
        gCounter = -1;
        done_ = true;
        ::eventfd_write(counter_.get(), 1);
        thread_.join();
    }

  private:
    void tell(const std::function<void()>& received) {
        while (true) {
            eventfd_t count = 0;
            if (::eventfd_read(counter_.get(), &count) != 0 && errno != EINTR) return;
            if (done_) return;
            told_ = true;
            for (; count > 0; --count) received();
        }
    }

    FileDescriptor counter_;
    struct sigaction formerInterrupt_ {};
    struct sigaction formerTerminate_ {};
    std::atomic<bool> done_ = false;
    std::atomic<bool> told_ = false;
    std::thread thread_;
};

}  // namespace

std::unique_ptr<QuitSignals> catchQuitSignals(std::function<void()> received) {
    FileDescriptor counter(::eventfd(0, EFD_CLOEXEC));
    if (!counter.isOpen()) return nullptr;
    return std::make_unique<CaughtSignals>(std::move(counter), std::move(received));
}

}  // namespace dorvanel::platform
