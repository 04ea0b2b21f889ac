// SPDX-License-Identifier: MIT
#include "platform/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

#include "platform/linux/FileDescriptor.h"

namespace dorvanel::platform {

namespace {

/// Whether the folder was locked; a negated errno for a failure that is one. EBADF: network file
/// systems lock only what is open for writing, which a folder never is.
int lockFolder(int folder, int how) {
    int locked = 0;
    do {
        locked = ::flock(folder, how);
    } while (locked != 0 && errno == EINTR);
    if (locked == 0) return 1;
    const bool cannotLock =
        errno == EBADF || errno == ENOLCK || errno == EOPNOTSUPP || errno == ENOSYS;
    return cannotLock ? 0 : -errno;
}

int openFolder(const std::string& folder) {
    return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

}  // namespace

Result<FolderLock> FolderLock::take(const std::string& folder) {
    auto descriptor = std::make_shared<FileDescriptor>(openFolder(folder));
    if (!descriptor->isOpen()) return Error::fromErrno("open", folder);
    const int locked = lockFolder(descriptor->get(), LOCK_EX);
    if (locked < 0) return Error{-locked, "lock", folder, {}};
    return FolderLock(std::move(descriptor), locked == 1);
}

Result<std::optional<FolderLock>> FolderLock::takeIfFree(const std::string& folder) {
    auto descriptor = std::make_shared<FileDescriptor>(openFolder(folder));
    if (!descriptor->isOpen()) return Error::fromErrno("open", folder);
    const int locked = lockFolder(descriptor->get(), LOCK_EX | LOCK_NB);
    if (locked == -EWOULDBLOCK) return std::optional<FolderLock>();
    if (locked < 0) return Error{-locked, "lock", folder, {}};
    return std::optional(FolderLock(std::move(descriptor), locked == 1));
}

}  // namespace dorvanel::platform
