// SPDX-License-Identifier: MIT

// The system's calls as the linker knows them are wrapped here (see the CMake list): each fails the
// first time as if a signal had come.
#include <dirent.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cerrno>
#include <set>
#include <string>

#include "platform/SystemCalls.h"
#include "support/TemporaryFolder.h"

namespace {

bool interrupting = false;
std::set<std::string> interrupted;

/// Whether this call is to be interrupted: the first of its name, while that is wanted.
bool comesSignal(const char* call) {
    if (!interrupting || !interrupted.insert(call).second) return false;
    errno = EINTR;
    return true;
}

}  // namespace

// `CALL(type, name, (parameters), (arguments))`
#define CALL(type, name, parameters, arguments)                   \
    extern "C" type __real_##name parameters;                     \
    extern "C" type __wrap_##name parameters;                     \
    extern "C" type __wrap_##name parameters {                    \
        return comesSignal(#name) ? -1 : __real_##name arguments; \
    }

CALL(int, openat, (int folder, const char* path, int flags), (folder, path, flags))
CALL(int, statx, (int folder, const char* path, int flags, unsigned mask, struct statx* status),
     (folder, path, flags, mask, status))
CALL(int, faccessat, (int folder, const char* path, int mode, int flags),
     (folder, path, mode, flags))
CALL(int, fchmod, (int file, mode_t mode), (file, mode))
CALL(int, fchmodat, (int folder, const char* path, mode_t mode, int flags),
     (folder, path, mode, flags))
CALL(ssize_t, readlinkat, (int folder, const char* path, char* text, size_t size),
     (folder, path, text, size))
CALL(int, fstatvfs, (int file, struct statvfs* status), (file, status))
CALL(ssize_t, getdents64, (int folder, void* buffer, size_t size), (folder, buffer, size))
CALL(int, mkdirat, (int folder, const char* path, mode_t mode), (folder, path, mode))
CALL(int, renameat2,
     (int folder, const char* path, int newFolder, const char* newPath, unsigned flags),
     (folder, path, newFolder, newPath, flags))
CALL(int, unlinkat, (int folder, const char* path, int flags), (folder, path, flags))
CALL(ssize_t, pwrite, (int file, const void* data, size_t size, off_t offset),
     (file, data, size, offset))
CALL(int, fdatasync, (int file), (file))
CALL(int, syncfs, (int file), (file))
CALL(int, fstatfs, (int file, struct statfs* status), (file, status))

namespace dorvanel::platform {
namespace {

using Links = SystemCalls::Links;

TEST(InterruptedCallsTest, EveryCallIsMadeAgainAfterASignal) {
    const test::TemporaryFolder place;
    test::writeFile(place / "file", "contents");
    const auto system = makeSystemCalls();
    FileStatus status;
    FolderListing listing;
    interrupting = true;

    const int folder = system->openFolder(SystemCalls::workingFolder, place.path().c_str());
    ASSERT_GE(folder, 0);
    EXPECT_EQ(system->readFolder(folder, listing), 0);
    EXPECT_EQ(listing.size(), 1U);
    EXPECT_EQ(system->statusAt(folder, "file", Links::stay, status), 0);
    EXPECT_EQ(system->canReadAndWrite(folder, "file"), 0);
    const int reference = system->openReference(folder, "file", Links::stay);
    ASSERT_GE(reference, 0);
    EXPECT_EQ(system->changeMode(reference, 0600), 0);
    EXPECT_EQ(system->changeModeAt(folder, "file", 0600), 0);
    const int file = system->openFile(folder, "file", Links::stay);
    ASSERT_GE(file, 0);
    interrupted.erase("statx");
    EXPECT_EQ(system->status(file, status), 0);
    EXPECT_GE(system->allowsDevices(file), 0);
    EXPECT_EQ(system->writeAt(file, "new", 3, 0), 3);
    EXPECT_EQ(system->flushFile(file), 0);
    EXPECT_EQ(system->flushFileSystem(file), 0);
    EXPECT_GE(system->livesInMemory(file), 0);
    EXPECT_EQ(system->makeFolder(folder, "inner", 0700), 0);
    EXPECT_EQ(system->rename(folder, "file", folder, "other"), 0);
    EXPECT_EQ(system->removeFile(folder, "other"), 0);
    ASSERT_EQ(symlinkat("target", folder, "link"), 0);
    std::string text;
    EXPECT_EQ(system->readLink(folder, "link", text), 0);
    EXPECT_EQ(text, "target");
    interrupted.erase("unlinkat");
    EXPECT_EQ(system->removeFolder(folder, "inner"), 0);

    interrupting = false;
    for (const int each : {file, reference, folder}) EXPECT_EQ(system->close(each), 0);
    const std::set<std::string> all{"openat",     "statx",    "faccessat",  "fchmod",  "fchmodat",
                                    "readlinkat", "fstatvfs", "getdents64", "mkdirat", "renameat2",
                                    "unlinkat",   "pwrite",   "fdatasync",  "syncfs",  "fstatfs"};
    EXPECT_EQ(interrupted, all) << "calls that were interrupted";
}

}  // namespace
}  // namespace dorvanel::platform
