// SPDX-License-Identifier: MIT
#include "platform/OpenFiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

std::string holdersOf(const platform::OpenFiles& files, const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return files.holdersOf(status.st_dev, status.st_ino);
}

class OpenFilesTest : public ::testing::Test {
  protected:
    /// A shell that has the file open once it has said so, until it is told to end.
    static std::unique_ptr<ChildProcess> reader(const std::string& path) {
        auto shell = std::make_unique<ChildProcess>(std::vector<std::string>{
            "/bin/sh", "-c", "exec 7<'" + path + "'; echo open; exec sleep 1000"});
        EXPECT_EQ(shell->readLine(), "open");
        return shell;
    }

    TemporaryFolder folder;
    std::unique_ptr<platform::OpenFiles> files = platform::makeOpenFiles();
};

TEST_F(OpenFilesTest, SaysWhoHasAFileOpen) {
    writeFile(folder / "open", "x");
    writeFile(folder / "shut", "x");
    const auto first = reader(folder / "open");
    EXPECT_TRUE(files->empty()) << "it has not looked";
    files->look();
    EXPECT_FALSE(files->empty());
    const std::string holders = holdersOf(*files, folder / "open");
    const std::string number = "(" + std::to_string(first->pid()) + ")";
    EXPECT_TRUE(holders == "sleep " + number || holders == "sh " + number) << holders;
    EXPECT_EQ(holdersOf(*files, folder / "shut"), "");
}

TEST_F(OpenFilesTest, ThisProcessDoesNotCount) {
    writeFile(folder / "own", "x");
    const std::ifstream own(folder / "own");
    files->look();
    EXPECT_EQ(holdersOf(*files, folder / "own"), "");
}

TEST_F(OpenFilesTest, OfManyHoldersSomeAreNamed) {
    writeFile(folder / "open", "x");
    std::vector<std::unique_ptr<ChildProcess>> readers;
    for (int i = 0; i < 5; ++i) readers.push_back(reader(folder / "open"));
    files->look();
    EXPECT_TRUE(holdersOf(*files, folder / "open").ends_with(" and 2 more"))
        << holdersOf(*files, folder / "open");
}

}  // namespace
}  // namespace dorvanel::test
