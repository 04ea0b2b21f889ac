// SPDX-License-Identifier: MIT
#include "platform/CleaningCalls.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>

#include "support/Python.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using platform::CleaningStatus;
using testing::UnorderedElementsAre;

class CleaningCallsTest : public ::testing::Test {
  protected:
    ~CleaningCallsTest() override {
        for (const int descriptor : opened) calls->close(descriptor);
    }
    /// Closed at the end, where it was opened at all.
    int closed(int descriptor) {
        if (descriptor >= 0) opened.push_back(descriptor);
        return descriptor;
    }
    /// Whether another program can lock the byte.
    [[nodiscard]] std::string lockElsewhere(int byte) const {
        return python(folder.path(),
                      "import fcntl\nf = open('file', 'r+b')\n"
                      "try:\n"
                      "  fcntl.lockf(f, fcntl.LOCK_EX | fcntl.LOCK_NB, 1, " +
                          std::to_string(byte) +
                          ")\n"
                          "  print('locked')\n"
                          "except OSError:\n  print('refused')");
    }

    const TemporaryFolder folder;
    const std::unique_ptr<platform::CleaningCalls> calls = platform::makeCleaningCalls();
    std::vector<int> opened;
    const int place = closed(calls->openFolder(folder.path().c_str()));
};

TEST_F(CleaningCallsTest, LinksAreNotOpened) {
    writeFile(folder / "file");
    fs::create_symlink("file", folder / "link");
    EXPECT_EQ(calls->openForReading(place, "link"), -ELOOP);
    EXPECT_EQ(calls->openForChanging(place, "link"), -ELOOP);
    EXPECT_EQ(calls->createFile(place, "link"), -EEXIST);
    EXPECT_EQ(calls->openForReading(place, "gone"), -ENOENT);
    CleaningStatus status;
    EXPECT_EQ(calls->statusAt(place, "link", status), 0);
    EXPECT_EQ(status.kind, platform::EntryKind::link);
}

TEST_F(CleaningCallsTest, ReadingLeavesTheTimeOfTheLastAccess) {
    writeFile(folder / "file", "abc");
    const std::array<timespec, 2> longAgo{timespec{1, 0}, timespec{2, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, (folder / "file").c_str(), longAgo.data(), 0), 0);
    const int file = closed(calls->openForReading(place, "file"));
    std::array<char, 8> bytes{};
    EXPECT_EQ(calls->readAt(file, bytes.data(), bytes.size(), 1), 2);
    EXPECT_EQ(bytes[0], 'b');
    EXPECT_EQ(calls->readAt(file, bytes.data(), bytes.size(), 3), 0);
    struct stat found {};
    ASSERT_EQ(stat((folder / "file").c_str(), &found), 0);
    EXPECT_EQ(found.st_atim.tv_sec, 1);
}

TEST_F(CleaningCallsTest, ANewFileIsItsOwnersAlone) {
    const int file = closed(calls->createFile(place, "file"));
    EXPECT_EQ(calls->writeAt(file, "abcdef", 6, 0), 6);
    EXPECT_EQ(calls->truncate(file, 4), 0);
    EXPECT_EQ(calls->flush(file), 0);
    EXPECT_EQ(calls->flush(place), 0);
    CleaningStatus status;
    EXPECT_EQ(calls->status(file, status), 0);
    EXPECT_EQ(status.permissions, 0600U);
    EXPECT_EQ(status.size, 4U);
    EXPECT_EQ(status.links, 1U);
    EXPECT_EQ(status.owner, calls->effectiveUser());
    EXPECT_EQ(calls->changeMode(file, 0640), 0);
    EXPECT_EQ(calls->changeGroup(file, status.group), 0);
    EXPECT_EQ(calls->status(file, status), 0);
    EXPECT_EQ(status.permissions, 0640U);
    EXPECT_EQ(readFile(folder / "file"), "abcd");
}

TEST_F(CleaningCallsTest, NamesAreExchangedOrTakenButNeverReplaced) {
    writeFile(folder / "one", "1");
    writeFile(folder / "two", "2");
    EXPECT_EQ(calls->exchange(place, "one", "two"), 0);
    EXPECT_EQ(readFile(folder / "one"), "2");
    EXPECT_EQ(readFile(folder / "two"), "1");
    EXPECT_EQ(calls->exchange(place, "one", "gone"), -ENOENT);
    EXPECT_EQ(calls->rename(place, "one", "two"), -EEXIST);
    EXPECT_EQ(calls->rename(place, "one", "three"), 0);
    EXPECT_EQ(calls->removeFile(place, "two"), 0);
    std::vector<std::string> names{"x"};
    EXPECT_EQ(calls->readFolder(place, names), 0);
    EXPECT_THAT(names, UnorderedElementsAre("three"));
    EXPECT_EQ(calls->readFolder(place, names), 0);
    EXPECT_THAT(names, UnorderedElementsAre("three"));
}

TEST_F(CleaningCallsTest, ALockKeepsOthersOutUntilTheFileIsClosed) {
    writeFile(folder / "file", "abc");
    const int file = calls->openForChanging(place, "file");
    ASSERT_GE(file, 0);
    EXPECT_EQ(calls->lock(file, 100, 10), 0);
    EXPECT_EQ(lockElsewhere(109), "refused");
    EXPECT_EQ(lockElsewhere(110), "locked");
    // Another opening in this process is another's; and its end ends nothing of the first.
    const int again = calls->openForChanging(place, "file");
    EXPECT_EQ(calls->lock(again, 105, 1), -EAGAIN);
    calls->close(again);
    EXPECT_EQ(lockElsewhere(100), "refused");
    calls->close(file);
    EXPECT_EQ(lockElsewhere(100), "locked");
}

TEST_F(CleaningCallsTest, RandomBytesDiffer) {
    std::array<unsigned char, 16> one{};
    std::array<unsigned char, 16> other{};
    EXPECT_EQ(calls->randomBytes(one.data(), one.size()), 0);
    EXPECT_EQ(calls->randomBytes(other.data(), other.size()), 0);
    EXPECT_NE(one, other);
}

}  // namespace
}  // namespace dorvanel::test
