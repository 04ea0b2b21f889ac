// SPDX-License-Identifier: MIT
#include "platform/QuitSignals.h"

#include <sys/eventfd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <system_error>
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

constexpr std::array<int, 3> quitSignals{SIGINT, SIGTERM, SIGHUP};

class CaughtSignals final : public QuitSignals {
  public:
    /// Throws std::system_error where there is no thread to be had; no signal is caught then.
    CaughtSignals(FileDescriptor counter, std::function<void()> received)
        : counter_(std::move(counter)) {
        // The thread that waits for the count is not interrupted by what it waits for.
        sigset_t counted;
        sigset_t former;
        sigemptyset(&counted);
        for (const int signal : quitSignals) sigaddset(&counted, signal);
        pthread_sigmask(SIG_BLOCK, &counted, &former);
        try {
            thread_ = std::thread([this, received = std::move(received)] { tell(received); });
        } catch (const std::system_error&) {
            pthread_sigmask(SIG_SETMASK, &former, nullptr);
            throw;
        }
        gCounter = counter_.get();
        // A handler, not a mask: a mask is inherited by every program that we start.
        struct sigaction action {};
        action.sa_handler = countSignal;
        action.sa_flags = SA_RESTART;
        sigemptyset(&action.sa_mask);
        for (std::size_t i = 0; i < quitSignals.size(); ++i) {
            sigaction(quitSignals[i], nullptr, &former_[i]);
            // Who starts a program for longer than his terminal lasts has it ignore the hang-up.
            const bool isIgnored = quitSignals[i] == SIGHUP && former_[i].sa_handler == SIG_IGN;
            if (!isIgnored) sigaction(quitSignals[i], &action, nullptr);
        }
        pthread_sigmask(SIG_SETMASK, &former, nullptr);
    }

    ~CaughtSignals() override {
        for (std::size_t i = 0; i < quitSignals.size(); ++i) {
            if (told_) {
                std::signal(quitSignals[i], SIG_IGN);
            } else {
                sigaction(quitSignals[i], &former_[i], nullptr);
            }
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
    std::array<struct sigaction, quitSignals.size()> former_{};
    std::atomic<bool> done_ = false;
    std::atomic<bool> told_ = false;
    std::thread thread_;
};

}  // namespace

Result<std::unique_ptr<QuitSignals>> catchQuitSignals(std::function<void()> received) {
    FileDescriptor counter(::eventfd(0, EFD_CLOEXEC));
    if (!counter.isOpen()) return Error::fromErrno("catch signals", {});
    try {
        return std::unique_ptr<QuitSignals>(
            std::make_unique<CaughtSignals>(std::move(counter), std::move(received)));
    } catch (const std::system_error& error) {
        return Error{error.code().value(), "catch signals", {}, {}};
    }
}

}  // namespace dorvanel::platform
