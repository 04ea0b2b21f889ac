// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "log/ActivityLog.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {

/// Keeps the real Activity Log of the present HOME open while it lives, and reads it back without
/// the time stamps. For tests that link the engine.
class LogCapture {
  public:
    LogCapture() { restart(); }
    ~LogCapture() { kalvet_logger_close(); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// Empties the log.
    void restart() {
        kalvet_logger_close();
        kalvet_logger_open();
    }

    [[nodiscard]] std::vector<std::string> lines() const { return linesNow(); }

    /// The whole lines that the log holds at this moment, whoever opened it: another process may be
    /// in the middle of one.
    [[nodiscard]] static std::vector<std::string> linesNow() {
        constexpr std::size_t stampLength = 25;
        std::vector<std::string> lines;
        const std::string text = readFile(activityLogPath());
        std::size_t start = 0;
        for (std::size_t end = text.find('\n'); end != std::string::npos;
             end = text.find('\n', start)) {
            lines.push_back(text.substr(start + stampLength, end - start - stampLength));
            start = end + 1;
        }
        return lines;
    }
};

}  // namespace dorvanel::test
