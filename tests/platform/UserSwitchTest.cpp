// SPDX-License-Identifier: MIT
#include "platform/UserSwitch.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "platform/FileManager.h"
#include "platform/LogFile.h"
#include "prefs/DefaultsFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
constexpr uid_t nobody = 65534;

/// A home folder of somebody else, as root meets it.
class UserSwitchTest : public DefaultsFixture {
  protected:
    void SetUp() override {
        if (geteuid() != 0) GTEST_SKIP() << "not run: only root works in other people's homes";
        giveAway();
    }
    void giveAway() const {
        ASSERT_EQ(chown(home.path().c_str(), nobody, nobody), 0);
        for (const auto& entry : fs::recursive_directory_iterator(home.path())) {
            ASSERT_EQ(lchown(entry.path().c_str(), nobody, nobody), 0);
        }
    }
    /// What `body` returned in a process of its own.
    static int inChild(const std::function<int()>& body) {
        const pid_t child = fork();
        if (child == 0) _exit(body());
        int status = -1;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    [[nodiscard]] std::string logPath() const { return home / "Library/Logs/log"; }
};

TEST_F(UserSwitchTest, RootBecomesTheOwnerOfTheHomeForGood) {
    EXPECT_TRUE(platform::isRootInAnothersHome());
    const int result = inChild([&] {
        if (!platform::becomeOwnerOfHome()) return 2;
        uid_t real = 0;
        uid_t effective = 0;
        uid_t saved = 0;
        if (getresuid(&real, &effective, &saved) != 0) return 3;
        if (real != nobody || effective != nobody || saved != nobody) return 4;
        gid_t groups[1] = {0};
        if (getgroups(1, groups) > 1 || getgid() == 0 || getgid() != getegid()) return 5;
        if (setuid(0) == 0) return 6;
        if (std::string(getenv("USER")) != "nobody") return 7;
        if (std::string(getenv("LOGNAME")) != "nobody") return 8;
        if (platform::homeDirectory() != home.path()) return 9;
        return platform::isRootInAnothersHome() ? 10 : 0;
    });
    EXPECT_EQ(result, 0);
}

TEST_F(UserSwitchTest, AnOwnerWithoutAnAccountHasNoGroupOfRoots) {
    ASSERT_EQ(chown(home.path().c_str(), 54321, 0), 0);
    const int result = inChild([&] {
        if (!platform::becomeOwnerOfHome()) return 2;
        if (getuid() != 54321 || getgid() == 0) return 3;
        gid_t groups[2] = {};
        return getgroups(2, groups) == 1 && groups[0] == getgid() ? 0 : 4;
    });
    EXPECT_EQ(result, 0);
}

TEST_F(UserSwitchTest, InItsOwnHomeRootStaysRoot) {
    ASSERT_EQ(chown(home.path().c_str(), 0, 0), 0);
    EXPECT_FALSE(platform::isRootInAnothersHome());
    EXPECT_EQ(inChild([] { return platform::becomeOwnerOfHome() && getuid() == 0 ? 0 : 2; }), 0);
}

TEST_F(UserSwitchTest, AHomeWhoseOwnerCannotBeToldIsNotTakenForRoots) {
    fs::create_symlink("loop", home / "loop");
    setenv("HOME", (home / "loop").c_str(), 1);
    EXPECT_TRUE(platform::isRootInAnothersHome());
    EXPECT_EQ(inChild([] { return platform::becomeOwnerOfHome() ? 2 : 0; }), 0);
    setenv("HOME", (home / "missing").c_str(), 1);
    EXPECT_FALSE(platform::isRootInAnothersHome());
}

TEST_F(UserSwitchTest, RootReadsNoPreferencesThroughALinkOfSomebodyElse) {
    writeFile(home / "secret", "not for this user");
    fs::create_symlink(home / "secret", path());
    EXPECT_FALSE(open()->isKnown());
    EXPECT_EQ(reports,
              std::vector<std::string>{
                  path() + ": open: root follows no link in the home folder of somebody else"});

    fs::remove(path());
    store("{'ShredHistory': True}");
    EXPECT_TRUE(open()->boolForKey("ShredHistory"));

    fs::rename(home / "Library", home / "Moved");
    fs::create_directory_symlink("Moved", home / "Library");
    EXPECT_FALSE(open()->isKnown()) << "a link on the way to it";
}

TEST_F(UserSwitchTest, RootWritesNoLogThroughALinkOfSomebodyElse) {
    const std::string secret = home / "elsewhere/log";
    writeFile(secret, "kept");
    ASSERT_EQ(chmod(secret.c_str(), 0600), 0);
    const auto isRefused = [&] {
        const auto opened = platform::openLogFile(logPath());
        if (opened) std::fclose(opened.value());
        struct stat status {};
        EXPECT_EQ(stat(secret.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, 0600U);
        EXPECT_EQ(readFile(secret), "kept");
        return !opened;
    };
    fs::create_symlink(secret, logPath());
    EXPECT_TRUE(isRefused());

    fs::remove(logPath());
    fs::remove(home / "Library/Logs");
    fs::create_directory_symlink(home / "elsewhere", home / "Library/Logs");
    EXPECT_TRUE(isRefused()) << "a link on the way to it";
}

}  // namespace
}  // namespace dorvanel::test
