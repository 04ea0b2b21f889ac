// SPDX-License-Identifier: MIT
#include "platform/StandardStreams.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace dorvanel::platform {

bool isTerminal(StandardStream stream) {
    return ::isatty(static_cast<int>(stream)) == 1;
}

int columnsOfTerminal(StandardStream stream) {
    winsize size{};
    return ::ioctl(static_cast<int>(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace dorvanel::platform
