// SPDX-License-Identifier: MIT
#pragma once

#include <sys/stat.h>

#include <cerrno>

#include "platform/FolderListing.h"

namespace dorvanel::platform {

/// What a call returns, or the negated errno. Made again as long as a signal interrupts it: on
/// network and user-space file systems any call may be.
template <typename Call>
auto called(Call call) {
    auto returned = call();
    while (returned < 0 && errno == EINTR) returned = call();
    return returned < 0 ? -errno : returned;
}

inline EntryKind kindOfMode(mode_t mode) {
    if (S_ISREG(mode)) return EntryKind::regular;
    if (S_ISDIR(mode)) return EntryKind::folder;
    if (S_ISLNK(mode)) return EntryKind::link;
    if (S_ISSOCK(mode)) return EntryKind::socket;
    return S_ISFIFO(mode) ? EntryKind::fifo : EntryKind::device;
}

}  // namespace dorvanel::platform
