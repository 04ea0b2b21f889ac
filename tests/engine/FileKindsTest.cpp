// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <iostream>

#include "support/Disk.h"
#include "support/EngineFixture.h"
#include "support/PlainOverwrite.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// What becomes of entries that are no plain files with plain names.
class FileKindsTest : public EngineFixture {
  protected:
    FileKindsTest() { fs::create_directory(folder / "tree"); }

    const Outcome& shredTree() {
        const Outcome& outcome = shred({folder / "tree"});
        EXPECT_THAT(namesIn(folder.path()), IsEmpty());
        EXPECT_EQ(outcome.notRemoved, 0U);
        return outcome;
    }

    TemporaryFolder outside;
};

TEST_F(FileKindsTest, ALinkToAFileOutsideHasItsTargetOverwrittenAndGrownAndOnlyTheLinkGoes) {
    writeFile(outside / "target", recognisable(1000));
    setMode(outside / "target", 0400);
    fs::create_symlink(outside / "target", folder / "tree/link");
    const Outcome& outcome = shredTree();
    EXPECT_EQ(fs::file_size(outside / "target"), 2000U);
    EXPECT_EQ(readFile(outside / "target").find("Secret"), std::string::npos);
    EXPECT_EQ(modeOf(outside / "target"), 0777U);
    EXPECT_EQ(outcome.filesOverwritten, 1U);
    EXPECT_THAT(shreddingProgress.values, ElementsAre(0, 100, 0));
}

TEST_F(FileKindsTest, ALinkToAFolderGoesAndNothingInTheFolderIsOverwritten) {
    writeFile(outside / "inner/file", "untouched");
    setMode(outside / "inner", 0700);
    fs::create_symlink(outside / "inner", folder / "tree/link");
    shredTree();
    EXPECT_EQ(readFile(outside / "inner/file"), "untouched");
    EXPECT_EQ(modeOf(outside / "inner"), 0700U);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(FileKindsTest, ALinkToNothingAndALinkToItselfJustGo) {
    fs::create_symlink("nowhere", folder / "tree/dangling");
    fs::create_symlink("loop", folder / "tree/loop");
    const Outcome& outcome = shredTree();
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(outcome.filesRemoved, 2U);
    EXPECT_EQ(outcome.notOverwritten, 0U);
}

TEST_F(FileKindsTest, ARelativeLinkThatDanglesAfterTheMoveLeavesItsFormerTarget) {
    writeFile(outside / "x", "");
    writeFile(folder / "beside", "untouched");
    fs::create_symlink("../beside", folder / "tree/link");
    shred({folder / "tree"});
    EXPECT_EQ(readFile(folder / "beside"), "untouched");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("beside"));
}

TEST_F(FileKindsTest, AnItemThatIsALinkItselfGoesAndItsTargetIsOverwritten) {
    writeFile(outside / "target", recognisable(500));
    fs::create_symlink(outside / "target", folder / "item");
    const Outcome& outcome = shred({folder / "item"});
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("tree"));
    EXPECT_EQ(fs::file_size(outside / "target"), 1000U);
    EXPECT_EQ(outcome.filesRemoved, 1U);
}

TEST_F(FileKindsTest, AnItemThatIsALinkToAFolderGoesAloneAlsoWithATrailingSlash) {
    writeFile(outside / "file", "untouched");
    fs::create_symlink(outside.path(), folder / "item");
    const Outcome& outcome = shred({(folder / "item") + "/"});
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("tree"));
    EXPECT_EQ(readFile(outside / "file"), "untouched");
    EXPECT_EQ(outcome.notRemoved, 0U);
}

TEST_F(FileKindsTest, AnItemThatLeadsNowhereStaysAndIsCounted) {
    fs::create_symlink("nowhere", folder / "item");
    const Outcome& outcome = shred({folder / "item"});
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("item", "tree"));
    EXPECT_EQ(outcome.items, 0U);
    EXPECT_EQ(outcome.notRemoved, 1U);
    ASSERT_THAT(outcome.troubles, SizeIs(1));
    EXPECT_EQ(outcome.troubles[0].path, folder / "item");
}

TEST_F(FileKindsTest, AFileWithTwoNamesShowsTheOverwrittenBytesByTheOtherOne) {
    writeFile(folder / "tree/a", recognisable(5000));
    setMode(folder / "tree/a", 0600);
    hardLink(folder / "tree/a", outside / "b");
    shredTree();
    EXPECT_EQ(fs::file_size(outside / "b"), 10000U);
    EXPECT_EQ(readFile(outside / "b").find("Secret"), std::string::npos);
    EXPECT_EQ(modeOf(outside / "b"), 0777U);
}

TEST_F(FileKindsTest, TwoNamesInOneTreeAreOverwrittenOneAfterTheOther) {
    writeFile(folder / "tree/a", recognisable(100));
    hardLink(folder / "tree/a", folder / "tree/b");
    EXPECT_EQ(shredTree().filesOverwritten, 2U);
    EXPECT_EQ(system.callsOf("writeAt").back().offset, 200U);
}

TEST_F(FileKindsTest, NobodyWaitsForAPipe) {
    ASSERT_EQ(mkfifo((folder / "tree/pipe").c_str(), 0600), 0);
    EXPECT_EQ(shredTree().filesRemoved, 1U);
    EXPECT_THAT(system.callsOf("writeAt"), IsEmpty());
    EXPECT_THAT(log.lines(), SizeIs(1)) << "taken in hand like an empty file";
}

TEST_F(FileKindsTest, NobodyWaitsForAPipeBehindALink) {
    ASSERT_EQ(mkfifo((outside / "pipe").c_str(), 0600), 0);
    fs::create_symlink(outside / "pipe", folder / "tree/link");
    shredTree();
    EXPECT_TRUE(fs::is_fifo(outside / "pipe"));
}

TEST_F(FileKindsTest, ASocketIsRemovedUnopened) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, (folder / "tree/s").c_str(), sizeof address.sun_path - 1);
    const int server = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(server, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(shredTree().filesRemoved, 1U);
    close(server);
    EXPECT_THAT(system.callsOf("openFile"), IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(FileKindsTest, DeviceNodesAreRemovedAndNothingIsWrittenToThem) {
    // The devices that anybody may write to: nothing is lost even if this test should fail.
    const std::string null = folder / "tree/null";
    const std::string full = folder / "tree/full";
    if (mknod(null.c_str(), S_IFCHR | 0666, makedev(1, 3)) != 0 ||
        mknod(full.c_str(), S_IFCHR | 0666, makedev(1, 7)) != 0) {
        std::cout << "not run: device nodes cannot be made here\n";
        return;
    }
    EXPECT_EQ(shredTree().filesRemoved, 2U);
    EXPECT_THAT(system.callsOf("writeAt"), IsEmpty());
    EXPECT_THAT(system.callsOf("openFile"), IsEmpty());
    EXPECT_THAT(log.lines(), SizeIs(2));
}

TEST_F(FileKindsTest, ALinkToADeviceDoesNotWriteToIt) {
    fs::create_symlink("/dev/full", folder / "tree/full");
    if (isRoot()) {  // the link's target gets the permissions 0777: try a node of our own instead
        fs::remove(folder / "tree/full");
        if (mknod((outside / "full").c_str(), S_IFCHR | 0666, makedev(1, 7)) != 0) {
            std::cout << "not run: device nodes cannot be made here\n";
            return;
        }
        fs::create_symlink(outside / "full", folder / "tree/full");
    }
    shredTree();
    EXPECT_THAT(system.callsOf("writeAt"), IsEmpty());
}

TEST_F(FileKindsTest, AnyBytesCanBeAName) {
    const std::vector<std::string> names{
        "\xFF\xFE not UTF-8",  "-rf", "two\nlines", "\"quoted\" 'too'",
        "100% %s %n",          " ",   "\t",         "\\",
        std::string(255, 'x'), "*",   "\x01"};
    for (const std::string& name : names) {
        writeFile(folder / ("tree/" + name), recognisable(10));
        writeFile(folder / ("tree/folder " + name.substr(0, 240) + "/" + name), recognisable(10));
    }
    const Outcome& outcome = shredTree();
    EXPECT_EQ(outcome.filesOverwritten, 2 * names.size());
    EXPECT_EQ(outcome.filesRemoved, 2 * names.size());
}

TEST_F(FileKindsTest, ItemsOfAnyNameAreShreddedWithoutDisturbingTheLog) {
    std::vector<std::string> items;
    for (const char* name : {"\xC3\x28", "-x", "new\nline", "%s%n", "quo\"te"}) {
        items.push_back(folder / name);
        writeFile(items.back(), "x");
    }
    shred(items);
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("tree"));
    for (const std::string& line : log.lines()) {
        EXPECT_EQ(line.find_first_not_of(
                      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"),
                  std::string::npos);
    }
    EXPECT_THAT(log.lines(), SizeIs(5));
}

TEST_F(FileKindsTest, ASparseFileIsWrittenInItsWholeLength) {
    writeFile(folder / "tree/sparse", "x");
    fs::resize_file(folder / "tree/sparse", 1 << 20);
    hardLink(folder / "tree/sparse", outside / "same");
    EXPECT_EQ(shredTree().bytesOverwritten, 1U << 20);
    const std::string contents = readFile(outside / "same");
    EXPECT_EQ(contents.size(), (1U << 20) + 131072);
    EXPECT_EQ(contents.find(std::string(100, '\0')), std::string::npos);
}

TEST_F(FileKindsTest, ARunningProgramIsRemovedUnshreddedAndCounted) {
    fs::copy_file("/bin/sleep", folder / "tree/program");
    const std::string path = folder / "tree/program";
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    const pid_t child = fork();
    if (child == 0) {
        execl(path.c_str(), "sleep", "60", nullptr);
        _exit(1);
    }
    close(ends[1]);
    char nothing;
    EXPECT_EQ(read(ends[0], &nothing, 1), 0) << "the pipe closes when the program runs";
    close(ends[0]);

    const Outcome& outcome = shredTree();
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_EQ(outcome.notOverwritten, 1U);
    EXPECT_EQ(outcome.filesRemoved, 1U);
    ASSERT_THAT(outcome.troubles, SizeIs(1));
    EXPECT_EQ(outcome.troubles[0].code, ETXTBSY);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(FileKindsTest, AFileSystemThatTellsNoKindsIsAskedForThem) {
    writeFile(folder / "tree/sub/file", recognisable(100));
    writeFile(outside / "target", recognisable(100));
    fs::create_symlink(outside / "target", folder / "tree/link");
    ASSERT_EQ(mkfifo((folder / "tree/pipe").c_str(), 0600), 0);
    faulty.listingTellsNoKinds = true;
    const Outcome& outcome = shredTree();
    EXPECT_EQ(outcome.filesOverwritten, 2U);
    EXPECT_EQ(outcome.filesRemoved, 3U);
    EXPECT_EQ(outcome.foldersRemoved, 2U);
    EXPECT_EQ(outcome.notOverwritten, 0U);
}

TEST_F(FileKindsTest, AFileWhoseKindCannotBeLearnedIsOverwrittenAllTheSame) {
    writeFile(folder / "item/file", recognisable(100));
    hardLink(folder / "item/file", outside / "same");
    faulty.listingTellsNoKinds = true;
    faulty.failAlways("statusAt", EIO, linesOf(plainOverwrite({}, {"n2"})[0], "name")[1]);
    const Outcome& outcome = shred({folder / "item"});
    EXPECT_EQ(faulty.failed, 2) << "in the second pass over the names, and in the removal";
    EXPECT_EQ(readFile(outside / "same").find("Secret"), std::string::npos);
    EXPECT_EQ(outcome.filesOverwritten, 1U);
    EXPECT_EQ(outcome.filesRemoved, 1U);
}

}  // namespace
}  // namespace dorvanel::test
