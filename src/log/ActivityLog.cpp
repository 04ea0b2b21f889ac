// SPDX-License-Identifier: MIT
#include "log/ActivityLog.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <mutex>

#include "platform/LogFile.h"

namespace dorvanel {
namespace {

std::FILE* gLog = nullptr;
/// A run that is asked for while another works starts the log afresh under the worker's hands.
std::mutex gLogMutex;
/// Why the last opening failed.
std::optional<Error> gTrouble;
/// How many silences this thread is in.
thread_local int gSilences = 0;

}  // namespace

std::string activityLogPath() {
    const char* home = std::getenv("HOME");
    return home == nullptr ? std::string() : std::string(home) + "/Library/Logs/Dorvanel X Log.txt";
}

void kalvet_logger_open() {
    const std::lock_guard lock(gLogMutex);
    const std::string path = activityLogPath();
    if (gLog != nullptr) return;
    ::tzset();  // the person may have travelled since the last run
    gTrouble.reset();
    if (path.empty()) {
        gTrouble = Error{0, "open the Activity Log", {}, "HOME is not set"};
        return;
    }
    const Result<std::FILE*> opened = platform::openLogFile(path);
    if (opened) {
        gLog = opened.value();
    } else {
        gTrouble = opened.error();
    }
}

std::optional<Error> activityLogTrouble() {
    const std::lock_guard lock(gLogMutex);
    return gTrouble;
}

LogSilence::LogSilence() {
    ++gSilences;
}

LogSilence::~LogSilence() {
    --gSilences;
}

std::string onOneLine(std::string_view name) {
    std::string line(name);
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return line;
}

void kalvet_logger(std::string_view message) {
    if (gSilences > 0) return;
    const std::lock_guard lock(gLogMutex);
    if (gLog == nullptr) return;
    const std::time_t now = std::time(nullptr);
    char stamp[26];  // the length that ctime_r asks for: 24 characters, newline, terminator
    if (ctime_r(&now, stamp) == nullptr) return;
    stamp[24] = ' ';
    std::fwrite(stamp, 1, 25, gLog);
    std::fwrite(message.data(), 1, message.size(), gLog);
    std::fputc('\n', gLog);
    std::fflush(gLog);
}

void kalvet_logger_close() {
    const std::lock_guard lock(gLogMutex);
    if (gLog == nullptr) return;
    std::fclose(gLog);
    gLog = nullptr;
}

void kalvet_debugger_open() {}
void kalvet_debugger(std::string_view) {}
void kalvet_debugger_close() {}

}  // namespace dorvanel
