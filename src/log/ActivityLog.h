// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Result.h"

namespace dorvanel {

/// The Activity Log: one file of dated lines, "HOME/Library/Logs/Dorvanel X Log.txt". Closed at
/// first; while closed every message is dropped. One handle for the process; any thread may call,
/// and each line is written whole.

/// Opens the log if it is closed: creates or empties the file and lets everybody read and write
/// it (0777). An open log stays as it is. A failure, or HOME unset, leaves it closed, and
/// `activityLogTrouble` tells why: what is no regular file, or leads to what is somebody else's, is
/// left alone. Never waits. The times of the lines are those of the time zone at this moment.
void kalvet_logger_open();

/// Why the last opening of a closed log failed; nothing where it did not. Any thread.
std::optional<Error> activityLogTrouble();

/// Writes "Www Mmm dd hh:mm:ss yyyy MESSAGE\n" and flushes. The message is bytes, written as they
/// are; an empty one makes a separator line.
void kalvet_logger(std::string_view message);

/// While one lives, what its thread writes to the log is dropped, whether the log is open or not:
/// who only looks takes the steps of a run and has nothing to tell.
class LogSilence {
  public:
    LogSilence();
    ~LogSilence();
    LogSilence(const LogSilence&) = delete;
    LogSilence& operator=(const LogSilence&) = delete;
};

/// A name for the log, which anybody may have chosen: a blank stands for each line break in it, so
/// that it forges no line.
std::string onOneLine(std::string_view name);

/// Closes the log if it is open.
void kalvet_logger_close();

/// The debug trace: hooks that do nothing in this build.
void kalvet_debugger_open();
void kalvet_debugger(std::string_view message);
void kalvet_debugger_close();

/// Where the log is, or would be; empty when HOME is unset.
std::string activityLogPath();

}  // namespace dorvanel
