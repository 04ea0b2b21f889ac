// SPDX-License-Identifier: MIT
#include "platform/ProcessListing.h"

#include <poll.h>
#include <stdio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <future>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/linux/LoginName.h"

namespace dorvanel::platform {
namespace {

using Steady = std::chrono::steady_clock;

constexpr int kLineBuffer = 2048;

/// Commands that may hang at one time; with as many as this, no further one is started.
constexpr int kMostHanging = 4;

using HangingCount = std::shared_ptr<std::atomic<int>>;

/// Keeps signals that end this program from the commands it starts as long as it lives: Ctrl-C
/// reaches every program in the terminal, and a listing cut short by it would look as though all
/// applications had quit.
class QuitSignalsHeld {
  public:
    QuitSignalsHeld() {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : {SIGHUP, SIGINT, SIGTERM}) sigaddset(&signals, signal);
        pthread_sigmask(SIG_BLOCK, &signals, &former_);
    }
    ~QuitSignalsHeld() { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
    QuitSignalsHeld(const QuitSignalsHeld&) = delete;
    QuitSignalsHeld& operator=(const QuitSignalsHeld&) = delete;

  private:
    sigset_t former_{};
};

/// Where the lines come from: the command's pipe, until the time is up.
struct TimedPipe {
    FILE* pipe;
    Steady::time_point deadline;

    /// As read(); the time being up is an error, ETIMEDOUT.
    static ssize_t read(void* cookie, char* bytes, std::size_t size) {
        const auto* self = static_cast<TimedPipe*>(cookie);
        pollfd descriptor{fileno(self->pipe), POLLIN, 0};
        while (true) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(
                std::max(self->deadline - Steady::now(), Steady::duration::zero()));
            const int ready = ::poll(&descriptor, 1, static_cast<int>(left.count()));
            if (ready == 0) errno = ETIMEDOUT;
            if (ready == 0 || (ready < 0 && errno != EINTR)) return -1;
            if (ready < 0) continue;
            const ssize_t length = ::read(descriptor.fd, bytes, size);
            if (length >= 0 || errno != EINTR) return length;
        }
    }
};

/// Closes the pipe, which ends a command that still writes, and waits for the command, but no
/// longer than to the deadline: a thread does it, and goes on with it where the command hangs.
/// Whether the command ended in time, and by itself and well.
bool closePipe(FILE* pipe, Steady::time_point deadline, const HangingCount& hanging) {
    ++*hanging;
    auto closed = std::make_shared<std::promise<int>>();
    std::future<int> status = closed->get_future();
    try {
        std::thread([pipe, hanging, closed] {
            const int ended = ::pclose(pipe);
            --*hanging;
            closed->set_value(ended);
        }).detach();
    } catch (const std::system_error&) {
        return false;  // no thread to be had: the command stays unwaited for, and stays counted
    }
    return status.wait_until(deadline) == std::future_status::ready && status.get() == 0;
}

class PipeOutput final : public CommandOutput {
  public:
    PipeOutput(FILE* pipe, Steady::time_point deadline, HangingCount hanging)
        : source_{pipe, deadline}, hanging_(std::move(hanging)) {
        cookie_io_functions_t functions{};
        functions.read = TimedPipe::read;
        lines_ = ::fopencookie(&source_, "r", functions);
    }

    ~PipeOutput() override { PipeOutput::close(); }

    bool close() override {
        if (source_.pipe == nullptr) return false;
        const bool wasRead = lines_ != nullptr && feof(lines_) != 0 && ferror(lines_) == 0;
        if (lines_ != nullptr) std::fclose(lines_);
        lines_ = nullptr;
        FILE* pipe = std::exchange(source_.pipe, nullptr);
        return closePipe(pipe, source_.deadline, hanging_) && wasRead;
    }

    bool atEnd() const override {
        return lines_ == nullptr || feof(lines_) != 0 || ferror(lines_) != 0;
    }

    std::string readLine() override {
        std::array<char, kLineBuffer> buffer;
        buffer.front() = 0;
        if (lines_ == nullptr || std::fgets(buffer.data(), kLineBuffer, lines_) == nullptr) {
            return {};
        }
        return buffer.data();
    }

  private:
    TimedPipe source_;
    HangingCount hanging_;
    FILE* lines_ = nullptr;
};

class PopenListing final : public ProcessListing {
  public:
    explicit PopenListing(std::chrono::milliseconds timeLimit) : timeLimit_(timeLimit) {}

    std::unique_ptr<CommandOutput> open(const std::string& command) override {
        if (*hanging_ >= kMostHanging) return nullptr;
        const Steady::time_point deadline = Steady::now() + timeLimit_;
        const QuitSignalsHeld held;
        FILE* pipe = ::popen(command.c_str(), "re");  // "e": other programs we start do not get it
        if (pipe == nullptr) return nullptr;
        return std::make_unique<PipeOutput>(pipe, deadline, hanging_);
    }

    std::string userName() const override { return loginNameOrNumber(); }

  private:
    std::chrono::milliseconds timeLimit_;
    HangingCount hanging_ = std::make_shared<std::atomic<int>>(0);
};

}  // namespace

std::unique_ptr<ProcessListing> makeProcessListing(std::chrono::milliseconds timeLimit) {
    return std::make_unique<PopenListing>(timeLimit);
}

}  // namespace dorvanel::platform
