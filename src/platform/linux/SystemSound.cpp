// SPDX-License-Identifier: MIT
#include "platform/SystemSound.h"

#include <unistd.h>

namespace dorvanel::platform {
namespace {

class Bell final : public SystemSound {
  public:
    void beep() override {
        if (::isatty(STDERR_FILENO) == 0) return;
        // A beep that cannot be heard is nobody's concern.
        [[maybe_unused]] const ssize_t ignored = ::write(STDERR_FILENO, "\a", 1);
    }
};

}  // namespace

SystemSound& terminalSound() {
    static Bell bell;
    return bell;
}

}  // namespace dorvanel::platform
