// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "realfs/TracedRun.h"
#include "support/SampleHome.h"
#include "support/SampleProfiles.h"
#include "support/TemporaryFolder.h"

// What a preview asks of the system, call by call.

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

/// Calls that change something on a disk, or bring it there.
const std::set<long> changingCalls = {
    SYS_pwrite64,  SYS_pwritev,   SYS_pwritev2, SYS_mkdirat,   SYS_mknodat,   SYS_renameat,
    SYS_renameat2, SYS_unlinkat,  SYS_linkat,   SYS_symlinkat, SYS_fchmod,    SYS_fchmodat,
    SYS_fchown,    SYS_fchownat,  SYS_truncate, SYS_ftruncate, SYS_fallocate, SYS_utimensat,
    SYS_setxattr,  SYS_fsetxattr, SYS_fsync,    SYS_fdatasync, SYS_syncfs,    SYS_sync,
    SYS_sendfile,  SYS_splice,
#ifdef SYS_mkdir
    SYS_mkdir,     SYS_mknod,     SYS_rename,   SYS_unlink,    SYS_rmdir,     SYS_link,
    SYS_symlink,   SYS_chmod,     SYS_chown,    SYS_lchown,    SYS_creat,
#endif
};

bool opensForWriting(const BegunCall& call) {
    std::uint64_t flags = O_RDONLY;
    if (call.number == SYS_openat) flags = call.arguments[2];
#ifdef SYS_open
    if (call.number == SYS_open) flags = call.arguments[1];
#endif
    return (flags & (O_WRONLY | O_RDWR | O_CREAT | O_TRUNC)) != 0;
}

bool changes(const BegunCall& call) {
    if (changingCalls.contains(call.number) || opensForWriting(call)) return true;
    const bool writes = call.number == SYS_write || call.number == SYS_writev;
    // AddressSanitizer asks by a pipe of its own what can be read.
    return writes && !call.isOfPipe && call.arguments[0] != STDOUT_FILENO &&
           call.arguments[0] != STDERR_FILENO;
}

class PreviewTest : public ::testing::Test {
  protected:
    PreviewTest() {
        for (const char* name :
             {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
            unsetenv(name);
        }
        SampleHome(home, 7).addEverything();
        SampleProfiles(home, 7).addEverything();
        for (const char* application : {"firefox", "chromium", "thunderbird", "desktop"}) {
            EXPECT_EQ(status({"traces", "select", application}), 0);
        }
        EXPECT_EQ(status({"prefs", "set", "ShredMailsmithSpam", "YES"}), 0);
        writeFile(home + "/.local/share/Trash/files/letter", "secret");
        writeFile(home + "/.local/share/Trash/info/letter.trashinfo", "[Trash Info]\n");
    }

    [[nodiscard]] std::vector<std::string> commandOf(std::vector<std::string> words) const {
        words.insert(words.begin(), {DORVANEL_PROGRAM, "--home", home});
        return words;
    }
    [[nodiscard]] int status(const std::vector<std::string>& words) const {
        std::string line;
        for (const std::string& word : commandOf(words)) line += "'" + word + "' ";
        return std::system((line + ">/dev/null").c_str());
    }

    TemporaryFolder folder;
    const std::string home = folder / "home";
};

TEST_F(PreviewTest, NoCallOfAPreviewWritesButToItsOutput) {
    const std::string documents = home + "/Documents";
    ASSERT_TRUE(fs::exists(documents));
    const std::vector<std::vector<std::string>> previews = {
        {"run", "--preview"},
        {"run", "--preview", "--json", "--then", "logout"},
        {"shred", "--preview", "--mentions", documents},
        {"shred", "--preview", "--json", "--no-follow", documents},
        {"trash", "--preview", "--json"},
        {"recover", "--preview", "--json"},
        {"recover", "--preview", home}};
    for (const auto& words : previews) {
        const std::vector<BegunCall> calls = callsOf(commandOf(words));
        if (calls.empty()) GTEST_SKIP() << "no program can be traced here";
        // From the first call of the program itself on.
        const auto started = std::ranges::find(calls, SYS_execve, &BegunCall::number);
        ASSERT_NE(started, calls.end());
        for (auto call = started; call != calls.end(); ++call) {
            EXPECT_FALSE(changes(*call))
                << words[0] << " " << words[1] << ": call " << call->number << " of "
                << call->arguments[0] << ", " << call->arguments[2];
        }
    }
}

TEST_F(PreviewTest, ARunIsNotTakenForOne) {
    const std::vector<BegunCall> calls = callsOf(commandOf({"run", "--yes"}));
    if (calls.empty()) GTEST_SKIP() << "no program can be traced here";
    EXPECT_TRUE(std::ranges::any_of(calls, changes));
}

}  // namespace
}  // namespace dorvanel::test
