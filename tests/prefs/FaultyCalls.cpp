// SPDX-License-Identifier: MIT
#include "prefs/FaultyCalls.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>

namespace dorvanel::test {

FaultyCalls faultyCalls;

void FaultyCalls::start(Fault newFault, int at, int newError) {
    calls.clear();
    fault = newFault;
    error = newError;
    at_ = at;
    isRecording_ = true;
}

void FaultyCalls::stop() {
    isRecording_ = false;
}

bool FaultyCalls::meets(const std::string& call) {
    if (!isRecording_) return false;
    calls.push_back(call);
    if (fault == Fault::none || static_cast<int>(calls.size()) != at_) return false;
    if (fault == Fault::kill && call != "write") raise(SIGKILL);
    errno = error;
    return true;
}

}  // namespace dorvanel::test

using dorvanel::test::FaultyCalls;
using dorvanel::test::faultyCalls;

// The linker's --wrap sends every call of X to __wrap_X, and of __real_X to X.
// NOLINTBEGIN(bugprone-reserved-identifier): these names are the linker's.
extern "C" {
int __real_open(const char* path, int flags, ...);
ssize_t __real_write(int file, const void* bytes, size_t size);
int __real_fsync(int file);
int __real_fchmod(int file, mode_t mode);
int __real_rename(const char* from, const char* to);
int __real_flock(int file, int operation);

int __wrap_open(const char* path, int flags, ...) {
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    const char* name = (flags & O_CREAT) != 0       ? "create"
                       : (flags & O_DIRECTORY) != 0 ? "open folder"
                                                    : "open";
    return faultyCalls.meets(name) ? -1 : __real_open(path, flags, mode);
}

ssize_t __wrap_write(int file, const void* bytes, size_t size) {
    if (!faultyCalls.meets("write")) return __real_write(file, bytes, size);
    if (faultyCalls.fault == FaultyCalls::Fault::fail) return -1;
    const ssize_t written = __real_write(file, bytes, size / 2);
    if (faultyCalls.fault == FaultyCalls::Fault::kill) raise(SIGKILL);
    return written;
}

int __wrap_fsync(int file) {
    struct stat status {};
    const bool isFolder = fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
    return faultyCalls.meets(isFolder ? "flush folder" : "flush") ? -1 : __real_fsync(file);
}

int __wrap_fchmod(int file, mode_t mode) {
    return faultyCalls.meets("change mode") ? -1 : __real_fchmod(file, mode);
}

int __wrap_rename(const char* from, const char* to) {
    return faultyCalls.meets("rename") ? -1 : __real_rename(from, to);
}

int __wrap_flock(int file, int operation) {
    return faultyCalls.meets("lock") ? -1 : __real_flock(file, operation);
}
}
// NOLINTEND(bugprone-reserved-identifier)
