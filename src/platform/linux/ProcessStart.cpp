// SPDX-License-Identifier: MIT
#include "platform/ProcessStart.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace dorvanel::platform {

void prepareProcess() {
    // In this order: a new descriptor gets the lowest number that is free.
    for (int descriptor = 0; descriptor <= 2; ++descriptor) {
        if (::fcntl(descriptor, F_GETFD) != -1) continue;
        // A folder takes the number as well where there is no /dev/null: writing to it fails.
        if (::open("/dev/null", O_RDWR) < 0) static_cast<void>(::open("/", O_RDONLY | O_DIRECTORY));
    }
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace dorvanel::platform
