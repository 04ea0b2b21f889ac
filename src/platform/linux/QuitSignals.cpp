// SPDX-License-Identifier: MIT
#include "platform/QuitSignals.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

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

/// A pipe whose writing end is closed when it is over: a program that only looks writes nothing.
struct Ending {
    FileDescriptor reading;
    FileDescriptor writing;
};

class CaughtSignals final : public QuitSignals {
  public:
    /// Throws std::system_error where there is no thread to be had; no signal is caught then.
    CaughtSignals(FileDescriptor counter, Ending ending, std::function<void()> received)
        : counter_(std::move(counter)), ending_(std::move(ending)) {
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
        ending_.writing = FileDescriptor();
        thread_.join();
    }

  private:
    void tell(const std::function<void()>& received) {
        while (true) {
            std::array<pollfd, 2> waited{
                {{counter_.get(), POLLIN, 0}, {ending_.reading.get(), 0, 0}}};
            if (::poll(waited.data(), waited.size(), -1) < 0 && errno != EINTR) return;
            if (waited[1].revents != 0) return;
            if (waited[0].revents == 0) continue;
            eventfd_t count = 0;
            if (::eventfd_read(counter_.get(), &count) != 0 && errno != EINTR) return;
            told_ = true;
            for (; count > 0; --count) received();
        }
    }

    FileDescriptor counter_;
    Ending ending_;
    std::array<struct sigaction, quitSignals.size()> former_{};
    std::atomic<bool> told_ = false;
    std::thread thread_;
};

}  // namespace

Result<std::unique_ptr<QuitSignals>> catchQuitSignals(std::function<void()> received) {
    FileDescriptor counter(::eventfd(0, EFD_CLOEXEC));
    std::array<int, 2> ends{-1, -1};
    if (!counter.isOpen() || ::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return Error::fromErrno("catch signals", {});
    }
    Ending ending{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
    try {
        return std::unique_ptr<QuitSignals>(std::make_unique<CaughtSignals>(
            std::move(counter), std::move(ending), std::move(received)));
    } catch (const std::system_error& error) {
        return Error{error.code().value(), "catch signals", {}, {}};
    }
}

}  // namespace dorvanel::platform
