// SPDX-License-Identifier: MIT
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "targets/CollectorTest.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

/// Lets one kind of call fail and remembers every change in order.
class FailingFiles final : public platform::FileManager {
  public:
    bool fileExistsAtPath(const std::string& path) const override {
        return platform::defaultFileManager().fileExistsAtPath(path);
    }
    bool isDirectoryAtPath(const std::string& path) const override {
        return platform::defaultFileManager().isDirectoryAtPath(path);
    }
    Lines directoryContentsAtPath(const std::string& path) const override {
        return platform::defaultFileManager().directoryContentsAtPath(path);
    }
    bool movePath(const std::string& from, const std::string& to) override {
        calls.push_back("move " + name(from) + " " + name(to));
        return !movesFail && platform::defaultFileManager().movePath(from, to);
    }
    bool copyPath(const std::string& from, const std::string& to) override {
        calls.push_back("copy " + name(from) + " " + name(to));
        return !copiesFail && platform::defaultFileManager().copyPath(from, to);
    }

    bool movesFail = false;
    bool copiesFail = false;
    Lines calls;

  private:
    static std::string name(const std::string& path) { return fs::path(path).filename(); }
};

class MailsmithTest : public CollectorTest {
  protected:
    MailsmithTest() { turnOn({"ShredMailsmithSpam"}); }

    Lines runMailsmith() {
        Collectors(shredList, preferences, files, defaults, clock).Mailsmith21();
        return log.lines();
    }

    FailingFiles files;
    const std::string mail = home / "Mail/Mailsmith User Data/Mail/";
    const std::string skipTrash = "Skip: ~/Mail/Mailsmith User Data/Mail/Deleted Mail";
};

TEST_F(MailsmithTest, TheSwapLeavesACopyOfTheTemplateAndTakesTheOldSpam) {
    sample.addMailsmith(true);
    const std::string spam = readFile(mail + "(spam)/Messages");
    EXPECT_THAT(runMailsmith(),
                ElementsAre("Mailsmith", skipTrash,
                            "Shred: ~/Mail/Mailsmith User Data/Mail/(dorvanelspam)", separator));
    EXPECT_THAT(files.calls, ElementsAre("move (spam) (dorvanelspam)", "copy (dorvanelx) (spam)"));
    EXPECT_THAT(shredList, ElementsAre(mail + "(dorvanelspam)"));
    EXPECT_EQ(readFile(mail + "(dorvanelspam)/Messages"), spam);
    EXPECT_TRUE(fs::exists(mail + "(spam)/Index"));
    EXPECT_FALSE(fs::exists(mail + "(spam)/Messages"));
    EXPECT_TRUE(fs::exists(mail + "(dorvanelx)/Index"));
}

TEST_F(MailsmithTest, WithoutTheTemplateTheSpamIsNeverMoved) {
    sample.addMailsmith(false);
    EXPECT_THAT(
        runMailsmith(),
        ElementsAre("Mailsmith", skipTrash,
                    "Skip: ~/Mail/Mailsmith User Data/Mail/(dorvanelx) not found", separator));
    EXPECT_THAT(files.calls, IsEmpty());
    EXPECT_THAT(shredList, IsEmpty());
    EXPECT_TRUE(fs::exists(mail + "(spam)/Messages"));
}

TEST_F(MailsmithTest, AFailedMoveTakesWhatAnEarlierRunMayHaveParked) {
    sample.addMailsmith(true);
    files.movesFail = true;
    EXPECT_THAT(
        runMailsmith(),
        ElementsAre("Mailsmith", skipTrash,
                    "Skip: ~/Mail/Mailsmith User Data/Mail/(spam) -- move (spam) failed",
                    "Shred: ~/Mail/Mailsmith User Data/Mail/(dorvanelspam) -- an old file may be "
                    "present",
                    separator));
    EXPECT_THAT(shredList, ElementsAre(mail + "(dorvanelspam)"));
    EXPECT_THAT(files.calls, ElementsAre("move (spam) (dorvanelspam)"));
    EXPECT_TRUE(fs::exists(mail + "(spam)/Messages"));
}

TEST_F(MailsmithTest, AParkedMailboxThatIsStillThereMakesTheMoveFail) {
    sample.addMailsmith(true);
    writeFile(mail + "(dorvanelspam)/Messages", "of the run before");
    EXPECT_EQ(runMailsmith().at(2),
              "Skip: ~/Mail/Mailsmith User Data/Mail/(spam) -- move (spam) failed");
    EXPECT_EQ(readFile(mail + "(dorvanelspam)/Messages"), "of the run before");
}

TEST_F(MailsmithTest, AMissingSpamMailboxMakesTheMoveFail) {
    sample.addMailsmith(true);
    fs::remove_all(mail + "(spam)");
    EXPECT_EQ(runMailsmith().at(2),
              "Skip: ~/Mail/Mailsmith User Data/Mail/(spam) -- move (spam) failed");
    EXPECT_FALSE(fs::exists(mail + "(spam)"));
}

TEST_F(MailsmithTest, AFailedCopyPutsTheSpamBackAndTakesNothing) {
    sample.addMailsmith(true);
    files.copiesFail = true;
    EXPECT_THAT(
        runMailsmith(),
        ElementsAre("Mailsmith", skipTrash,
                    "Skip: ~/Mail/Mailsmith User Data/Mail/(dorvanelspam) -- copy (dorvanelx) "
                    "failed",
                    separator));
    EXPECT_THAT(files.calls, ElementsAre("move (spam) (dorvanelspam)", "copy (dorvanelx) (spam)",
                                         "move (dorvanelspam) (spam)"));
    EXPECT_THAT(shredList, IsEmpty());
    EXPECT_TRUE(fs::exists(mail + "(spam)/Messages"));
    EXPECT_FALSE(fs::exists(mail + "(dorvanelspam)"));
}

TEST_F(MailsmithTest, WithTheSpamOffNothingIsLookedForOrMoved) {
    preferences.values.clear();
    EXPECT_THAT(runMailsmith(),
                ElementsAre("Mailsmith", skipTrash,
                            "Skip: ~/Mail/Mailsmith User Data/Mail/(spam) -- not selected in "
                            "preferences",
                            separator));
    EXPECT_THAT(files.calls, IsEmpty());
}

TEST_F(MailsmithTest, ATemplateThatItsOwnerMayNotWriteIsCopiedWithItsMode) {
    sample.addMailsmith(true);
    fs::permissions(mail + "(dorvanelx)", fs::perms(0555));
    // An ordinary user's process: root may write every folder.
    const uid_t user = geteuid() == 0 ? 65534 : geteuid();
    ASSERT_EQ(chown(home.path().c_str(), user, getegid()), 0);
    for (const auto& entry : fs::recursive_directory_iterator(home.path())) {
        ASSERT_EQ(lchown(entry.path().c_str(), user, getegid()), 0);
    }
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && setuid(user) != 0) _exit(2);
        runMailsmith();
        _exit(shredList == Lines{mail + "(dorvanelspam)"} ? 0 : 3);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(fs::exists(mail + "(spam)/Index"));
    EXPECT_EQ(fs::status(mail + "(spam)").permissions(), fs::perms(0555));
}

}  // namespace
}  // namespace dorvanel::test
