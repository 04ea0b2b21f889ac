// SPDX-License-Identifier: MIT
#pragma once

namespace dorvanel::platform {

/// The system's beep. Main thread.
class SystemSound {
  public:
    virtual ~SystemSound() = default;
    virtual void beep() = 0;
};

/// BEL on standard error where that is a terminal, else nothing; lives as long as the process.
SystemSound& terminalSound();

}  // namespace dorvanel::platform
