// SPDX-License-Identifier: MIT
#include "platform/LockProbe.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string_view>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/LockLink.h"
#include "platform/linux/ProcessFolder.h"

namespace dorvanel::platform {
namespace {

LockState stateByErrno() {
    return errno == ENOENT || errno == ENOTDIR ? LockState::free : LockState::unknown;
}

bool isThisHost(const std::string& host) {
    std::array<char, HOST_NAME_MAX + 1> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 && host == name.data();
}

bool lives(pid_t process) {
    const auto facts = ProcessFolder(process).facts();
    if (facts) return !facts.value().hasEnded && !facts.value().isKernels;
    // The folders of other people's processes may be hidden.
    return ::kill(process, 0) == 0 || errno != ESRCH;
}

LockState stateOfLink(const std::string& path) {
    std::array<char, PATH_MAX> text{};
    const ssize_t length = ::readlink(path.c_str(), text.data(), text.size());
    if (length < 0) return stateByErrno();
    const auto link = readLockLink({text.data(), static_cast<std::size_t>(length)});
    if (!link) return LockState::unknown;
    if (!link->host.empty() && !isThisHost(link->host)) return LockState::unknown;
    return lives(link->process) ? LockState::held : LockState::free;
}

LockState stateOfFile(const std::string& path) {
    // Nothing waits here: not for a FIFO that has taken the file's place, not for a lease.
    const FileDescriptor file(
        ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.isOpen()) return stateByErrno();
    struct stat status {};
    if (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return LockState::unknown;
    struct flock lock {};
    lock.l_type = F_WRLCK;  // in the way of which every lock is
    lock.l_whence = SEEK_SET;
    if (::fcntl(file.get(), F_GETLK, &lock) != 0) return LockState::unknown;
    return lock.l_type == F_UNLCK ? LockState::free : LockState::held;
}

class LinuxLockProbe final : public LockProbe {
  public:
    [[nodiscard]] LockState stateOf(const std::string& path) const override {
        struct stat status {};
        if (::lstat(path.c_str(), &status) != 0) return stateByErrno();
        if (S_ISLNK(status.st_mode)) return stateOfLink(path);
        // What is no file takes no lock, and opening it might be noticed.
        return S_ISREG(status.st_mode) ? stateOfFile(path) : LockState::free;
    }
};

}  // namespace

std::unique_ptr<LockProbe> makeLockProbe() {
    return std::make_unique<LinuxLockProbe>();
}

}  // namespace dorvanel::platform
