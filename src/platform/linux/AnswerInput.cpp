// SPDX-License-Identifier: MIT
#include "platform/AnswerInput.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

#include "platform/linux/FileDescriptor.h"

namespace dorvanel::platform {
namespace {

class StandardInput final : public AnswerInput {
  public:
    explicit StandardInput(FileDescriptor interrupted) : interrupted_(std::move(interrupted)) {}

    void discardPending() override {
        // Fails where it is no terminal, and nothing is discarded.
        if (::tcflush(STDIN_FILENO, TCIFLUSH) == 0) pending_.clear();
    }

    Read readLine(std::string& line) override {
        line.clear();
        while (true) {
            const std::size_t end = pending_.find('\n');
            if (end != std::string::npos) {
                line = pending_.substr(0, end);
                pending_.erase(0, end + 1);
                return Read::line;
            }
            if (!waitForInput()) return Read::interrupted;
            std::array<char, 4096> bytes;
            const ssize_t got = ::read(STDIN_FILENO, bytes.data(), bytes.size());
            if (got > 0) {
                pending_.append(bytes.data(), static_cast<std::size_t>(got));
            } else if (got == 0 || (errno != EINTR && errno != EAGAIN)) {
                line = std::exchange(pending_, {});  // a last line that nobody ended
                return line.empty() ? Read::end : Read::line;
            }
        }
    }

    void interrupt() override { ::eventfd_write(interrupted_.get(), 1); }

  private:
    /// False when the read was interrupted instead.
    bool waitForInput() const {
        std::array<pollfd, 2> either{{{interrupted_.get(), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
        while (::poll(either.data(), either.size(), -1) < 0) {
            if (errno != EINTR && errno != EAGAIN) return true;  // let the read tell
        }
        return either[0].revents == 0;
    }

    FileDescriptor interrupted_;  ///< readable once somebody has interrupted, and from then on
    std::string pending_;         ///< read, but not asked for yet
};

}  // namespace

Result<std::unique_ptr<AnswerInput>> makeAnswerInput() {
    FileDescriptor interrupted(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!interrupted.isOpen()) return Error::fromErrno("read answers", {});
    return std::unique_ptr<AnswerInput>(std::make_unique<StandardInput>(std::move(interrupted)));
}

}  // namespace dorvanel::platform
