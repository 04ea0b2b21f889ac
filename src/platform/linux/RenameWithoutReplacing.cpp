// SPDX-License-Identifier: MIT
#include "platform/linux/RenameWithoutReplacing.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>

#include <cerrno>

namespace dorvanel::platform {

int renameWithoutReplacing(int fromFolder, const char* from, int toFolder, const char* to) {
    if (::renameat2(fromFolder, from, toFolder, to, RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return -1;
    struct stat found {};
    if (::fstatat(toFolder, to, &found, AT_SYMLINK_NOFOLLOW) == 0) {
        errno = EEXIST;
        return -1;
    }
    return errno == ENOENT ? ::renameat(fromFolder, from, toFolder, to) : -1;
}

}  // namespace dorvanel::platform
