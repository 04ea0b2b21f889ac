// SPDX-License-Identifier: MIT
#include "platform/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

#include "platform/linux/FileDescriptor.h"

namespace dorvanel::platform {

Result<FolderLock> FolderLock::take(const std::string& folder) {
    auto descriptor = std::make_shared<FileDescriptor>(
        ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!descriptor->isOpen()) return Error::fromErrno("open", folder);
    int locked = 0;
    do {
        locked = ::flock(descriptor->get(), LOCK_EX);
    } while (locked != 0 && errno == EINTR);
    // EBADF: network file systems lock only what is open for writing, which a folder never is.
    const bool cannotLock = locked != 0 && (errno == EBADF || errno == ENOLCK ||
                                            errno == EOPNOTSUPP || errno == ENOSYS);
    if (locked != 0 && !cannotLock) return Error::fromErrno("lock", folder);
    return FolderLock(std::move(descriptor), locked == 0);
}

}  // namespace dorvanel::platform
