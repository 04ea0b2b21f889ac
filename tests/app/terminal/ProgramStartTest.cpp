// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <regex>
#include <sstream>

#include "log/ActivityLog.h"
#include "prefs/PropertyListDefaults.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// The program itself, started in ways that a shell would not.
class ProgramStartTest : public ::testing::Test {
  protected:
    /// How the program ended, as waitpid has it; `prepare` is called in its process before it.
    /// Standard output and error go to the files "out" and "err" of the home folder.
    int start(
        const Words& words, const std::function<void()>& prepare = [] {}) {
        std::vector<char*> arguments{const_cast<char*>(DORVANEL_PROGRAM)};
        for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        const std::string out = home / "out";
        const std::string err = home / "err";
        const pid_t child = fork();
        if (child == 0) {
            constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC;
            dup2(open("/dev/null", O_RDONLY), 0);
            dup2(open(out.c_str(), flags, 0666), 1);
            dup2(open(err.c_str(), flags, 0666), 2);
            prepare();
            for (int descriptor = 3; descriptor < 20; ++descriptor) close(descriptor);
            execv(arguments[0], arguments.data());
            _exit(126);
        }
        int status = -1;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return status;
    }
    static int exited(int status) { return WIFEXITED(status) ? WEXITSTATUS(status) : -1; }
    [[nodiscard]] std::string err() const { return readFile(home / "err"); }

    TemporaryHome home;
};

TEST_F(ProgramStartTest, NothingForeignGetsIntoTheActivityLogWhereDescriptorsWereClosed) {
    ASSERT_EQ(exited(start({"prefs", "set", "ActivityLog", "YES"})), 0);
    ASSERT_EQ(exited(start({"prefs", "set", "ShredHistory", "YES"})), 0);
    for (int kept = 0; kept < 8; ++kept) {
        start({"run"}, [&] {
            for (int descriptor = 0; descriptor <= 2; ++descriptor) {
                if ((kept >> descriptor & 1) == 0) close(descriptor);
            }
        });
        const std::string log = readFile(activityLogPath());
        EXPECT_NE(log, "");
        std::istringstream lines(log);
        for (std::string line; std::getline(lines, line);) {
            EXPECT_TRUE(std::regex_search(
                line, std::regex("^[A-Z][a-z]{2} [A-Z][a-z]{2} [ 0-9]\\d \\d\\d:\\d\\d:")))
                << line;
        }
    }
}

TEST_F(ProgramStartTest, AReaderThatHasGoneIsAFailureAndNoSignal) {
    int pipe[2];
    ASSERT_EQ(pipe2(pipe, O_CLOEXEC), 0);
    close(pipe[0]);
    const int status = start({"prefs"}, [&] {
        signal(SIGPIPE, SIG_DFL);
        dup2(pipe[1], 1);
    });
    close(pipe[1]);
    EXPECT_EQ(exited(status), 1);
    EXPECT_EQ(err(), "dorvanel: the output could not be written\n");
}

TEST_F(ProgramStartTest, ALimitOfFileSizesIsAFailureAndNoSignal) {
    const int status = start({"prefs", "set", "NSA", "YES"}, [] {
        signal(SIGXFSZ, SIG_DFL);
        const rlimit limit{100, 100};  // bytes: less than any property list
        setrlimit(RLIMIT_FSIZE, &limit);
    });
    EXPECT_EQ(exited(status), 1);
    EXPECT_FALSE(fs::exists(userDefaultsPath()));
}

TEST_F(ProgramStartTest, TooLittleMemoryIsToldAndNeverAnAbort) {
    const auto startWithin = [this](rlim_t kibibytes, const Words& words) {
        return start(words, [kibibytes] {
            const rlimit limit{kibibytes << 10, kibibytes << 10};
            setrlimit(RLIMIT_AS, &limit);
        });
    };
    rlim_t enough = 4 << 10;  // for the program alone; its libraries load with no less
    constexpr rlim_t most = 400 << 10;
    while (enough < most && exited(startWithin(enough, {"--version"})) != 0) enough += 512;
    if (enough >= most) {
        std::puts("not run: this build needs more memory than a limit can name");
        return;
    }
    Words words = {"prefs", "get"};
    words.resize(20000, std::string(60, 'x'));
    enough += 3 << 10;  // the words as the system hands them over
    bool wasTold = false;
    int status = 0;
    for (int i = 0; i < 80 && exited(status) != 2; ++i, enough += 256) {
        status = startWithin(enough, words);
        ASSERT_TRUE(WIFEXITED(status)) << enough << " KiB: " << err();
        wasTold = wasTold || (exited(status) == 1 && err() == "dorvanel: out of memory\n");
    }
    EXPECT_EQ(exited(status), 2) << "bad usage, with memory to tell it";
    EXPECT_TRUE(wasTold);
}

TEST_F(ProgramStartTest, RootInAnothersHomeWorksAsThatPersonButForShred) {
    if (geteuid() != 0) {
        GTEST_LOG_(INFO) << "not run: only root works in other people's homes";
        return;
    }
    constexpr uid_t nobody = 65534;
    const TemporaryFolder roots;
    writeFile(roots / "secret", "root's own");
    writeFile(roots / "folder/file", "root's own");
    ASSERT_EQ(chmod(roots.path().c_str(), 0700), 0);
    ASSERT_EQ(exited(start({"prefs", "set", "ActivityLog", "YES"})), 0);
    fs::create_directories(home / "Library/Caches");
    fs::create_symlink(roots / "secret", activityLogPath());
    fs::create_directory_symlink(roots / "folder", home / "Library/Caches/Safari");
    const auto giveAway = [&] {
        ASSERT_EQ(lchown(home.path().c_str(), nobody, nobody), 0);
        for (const auto& entry : fs::recursive_directory_iterator(home.path())) {
            ASSERT_EQ(lchown(entry.path().c_str(), nobody, nobody), 0);
        }
    };
    giveAway();
    start({"run", "--yes"});
    EXPECT_EQ(readFile(roots / "secret"), "root's own");
    EXPECT_EQ(readFile(roots / "folder/file"), "root's own");

    fs::remove(userDefaultsPath());
    fs::create_symlink(roots / "secret", userDefaultsPath());
    giveAway();
    for (const Words& words : {Words{"prefs", "list"}, Words{"prefs", "set", "NSA", "YES"},
                               Words{"apps"}, Words{"profiles"}, Words{"prefs", "revert"}}) {
        EXPECT_EQ(exited(start(words)), 1) << testing::PrintToString(words) << err();
        EXPECT_NE(err().find("Permission denied"), std::string::npos) << err();
    }
    EXPECT_EQ(readFile(roots / "secret"), "root's own");
    EXPECT_FALSE(fs::exists(roots / "secret (damaged 1)"));

    fs::remove(userDefaultsPath());
    ASSERT_EQ(exited(start({"prefs", "set", "NSA", "YES"})), 0) << err();
    struct stat status {};
    ASSERT_EQ(stat(userDefaultsPath().c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, nobody);

    ASSERT_EQ(exited(start({"shred", roots / "folder"})), 0) << err();
    EXPECT_FALSE(fs::exists(roots / "folder")) << "shredded with the rights of root";
}

TEST_F(ProgramStartTest, RootWritesNothingOfWhatItShredsIntoAnothersHome) {
    if (geteuid() != 0) {
        GTEST_LOG_(INFO) << "not run: only root works in other people's homes";
        return;
    }
    constexpr uid_t nobody = 65534;
    const TemporaryFolder roots;
    writeFile(roots / "one");
    writeFile(roots / "two");
    fs::create_directory(roots / "list");
    ASSERT_EQ(lchown(home.path().c_str(), nobody, nobody), 0);
    ASSERT_EQ(exited(start({"shred", roots / "one"})), 0) << err();
    EXPECT_NE(err().find("\"dorvanel recover\" will not know"), std::string::npos) << err();
    EXPECT_FALSE(fs::exists(home / ".local"));
    fs::create_directory_symlink(roots / "list", home / ".local");
    ASSERT_EQ(exited(start({"shred", roots / "two"})), 0) << err();
    EXPECT_TRUE(fs::is_empty(roots / "list")) << "no link of somebody else is followed";
}

}  // namespace
}  // namespace dorvanel::test
