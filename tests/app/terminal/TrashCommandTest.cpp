// SPDX-License-Identifier: MIT
#include "app/terminal/TrashCommand.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "app/terminal/TestTerminal.h"
#include "prefs/PropertyListDefaults.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

/// The trash of a home of the test's own; no volume is looked at.
class TrashCommandTest : public ::testing::Test {
  protected:
    TrashCommandTest() {
        writeFile(file, "secret");
        writeFile(info, "[Trash Info]\n");
    }
    int trash(bool yes = false) {
        return static_cast<int>(terminal::shredTrash(console.terminal, {.yes = yes}, {}));
    }

    TemporaryHome home;
    const EnvironmentVariable data{"XDG_DATA_HOME", ""};
    const std::string file = home / ".local/share/Trash/files/x";
    const std::string info = home / ".local/share/Trash/info/x.trashinfo";
    TestTerminal console;
};

TEST_F(TrashCommandTest, ItAsksAndShredsWhatIsThere) {
    console.in.str("yes\n");
    EXPECT_EQ(trash(), 0);
    EXPECT_NE(console.err.str().find("Dorvanel Confirmation\nAre you sure you want to shred these "
                                     "items: 1 item in the trash (6 bytes) ?"),
              std::string::npos)
        << console.err.str();
    EXPECT_FALSE(fs::exists(file));
    EXPECT_FALSE(fs::exists(info));
    EXPECT_EQ(console.out.str(),
              "2 items: 2 files overwritten (19 bytes), 2 files and 0 folders removed\n");
}

TEST_F(TrashCommandTest, AfterANoNothingIsTouched) {
    console.in.str("no\n");
    EXPECT_EQ(trash(), 3);
    EXPECT_EQ(readFile(file), "secret");
    EXPECT_TRUE(fs::exists(info));
}

TEST_F(TrashCommandTest, ItDoesNotAskWhereNobodyWantsIt) {
    EXPECT_EQ(trash(true), 0);
    EXPECT_FALSE(fs::exists(file));
    writeFile(file, "secret");
    EXPECT_EQ(console.run({"prefs", "set", "ConfirmShredding", "NO"}), 0);
    EXPECT_EQ(trash(), 0);
    EXPECT_EQ(console.err.str(), "");
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(TrashCommandTest, OfAnEmptyTrashThereIsNothingToAsk) {
    fs::remove(file);
    fs::remove(info);
    EXPECT_EQ(trash(), 0);
    EXPECT_EQ(console.out.str(), "Nothing is in the trash\n");
    EXPECT_EQ(console.err.str(), "");
}

TEST_F(TrashCommandTest, WithPreferencesThatCannotBeReadNothingIsTouched) {
    writeFile(userDefaultsPath(), "<plist><dict>");
    EXPECT_EQ(trash(true), 2);
    EXPECT_EQ(readFile(file), "secret");
}

TEST_F(TrashCommandTest, ALinkInPlaceOfTheTrashIsNamedAndLeft) {
    fs::rename(home / ".local/share/Trash", home / "elsewhere");
    fs::create_directory_symlink(home / "elsewhere", home / ".local/share/Trash");
    EXPECT_EQ(trash(true), 1);
    EXPECT_NE(console.err.str().find("Trash: could not look into: is a link"), std::string::npos)
        << console.err.str();
    EXPECT_EQ(readFile(home / "elsewhere/files/x"), "secret");
}

}  // namespace
}  // namespace dorvanel::test
