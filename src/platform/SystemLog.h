// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace dorvanel::platform {

/// The system's log, where a fault goes that no window can show. Any thread.
class SystemLog {
  public:
    virtual ~SystemLog() = default;
    /// One line; bytes, never read as a format.
    virtual void log(std::string_view message) = 0;
};

/// The log of this machine; lives as long as the process.
SystemLog& systemLog();

}  // namespace dorvanel::platform
