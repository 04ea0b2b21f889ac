// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>

#include "app/terminal/TestTerminal.h"
#include "support/FakeMedium.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using Kind = platform::Medium::Kind;

class MediumTextTest : public ::testing::Test {
  protected:
    MediumTextTest() { console.terminal.medium = &medium; }

    TemporaryHome home;
    FakeMedium medium;
    TestTerminal console;
};

TEST_F(MediumTextTest, ShredSaysItOnceInOneLineAndShredsAllTheSame) {
    const TemporaryFolder work;
    const std::string folder = std::filesystem::canonical(work.path());
    for (const char* name : {"one", "two", "three"}) {
        writeFile(work / name, "contents");
    }
    medium.media[folder + "/one"] = {Kind::network, "nfs"};  // and so is all on its device
    EXPECT_EQ(console.run({"shred", work / "one", work / "two", work / "three"}), 0);
    EXPECT_EQ(console.err.str(),
              "dorvanel: overwriting in place may not reach the old contents of \"" + folder +
                  "/one\" and 2 more (nfs network mount)\n");
    EXPECT_TRUE(std::filesystem::is_empty(work.path()));
}

TEST_F(MediumTextTest, NothingIsSaidOfWhatIsRefused) {
    const TemporaryFolder work;
    const std::string folder = std::filesystem::canonical(work.path());
    writeFile(work / "one", "contents");
    medium.media[folder + "/one"] = {Kind::network, "nfs"};
    EXPECT_EQ(console.run({"shred", work / "one", work / "missing"}), 2);
    EXPECT_EQ(console.err.str().find("overwriting in place"), std::string::npos);
}

TEST_F(MediumTextTest, ARunSaysItOfWhatItFound) {
    const std::string caches = home / "Library/Caches/Safari";
    writeFile(caches + "/entry", "contents");
    medium.media[caches] = {Kind::solidState, ""};
    EXPECT_EQ(console.run({"run", "--yes"}), 0);
    EXPECT_NE(console.err.str().find("may not reach the old contents of \"" + caches +
                                     "\" (solid-state drive)\n"),
              std::string::npos)
        << console.err.str();
}

}  // namespace
}  // namespace dorvanel::test
