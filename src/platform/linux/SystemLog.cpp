// SPDX-License-Identifier: MIT
#include "platform/SystemLog.h"

#include <syslog.h>

#include <string>

namespace dorvanel::platform {
namespace {

class SyslogLog final : public SystemLog {
  public:
    void log(std::string_view message) override {
        ::syslog(LOG_USER | LOG_ERR, "%s", std::string(message).c_str());
    }
};

}  // namespace

SystemLog& systemLog() {
    static SyslogLog log;
    return log;
}

}  // namespace dorvanel::platform
