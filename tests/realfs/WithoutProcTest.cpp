// SPDX-License-Identifier: MIT

// A system without /proc, as a bare chroot is one.
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "realfs/RealFsFixture.h"
#include "support/OwnProcesses.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class WithoutProcTest : public RealFsTest {
  protected:
    WithoutProcTest() {
        writeFile(base + "/bin/ps", "#!/bin/sh\necho COMMAND\n");  // the real one reads /proc
        fs::permissions(base + "/bin/ps", fs::perms(0755));
    }

    void SetUp() override {
#ifdef __SANITIZE_ADDRESS__
        GTEST_SKIP() << "AddressSanitizer reads its own options through /proc, and looks for leaks";
#endif
    }

    /// In the new process: no /proc any more; done as `user` from then on.
    std::function<void()> withoutProc(uid_t user) {
        return [this, user] {
            const std::string path = base + "/bin:/usr/bin:/bin";
            // Nothing of this may reach the mounts of others.
            if (!processesAreOwn() || unshare(CLONE_NEWNS) != 0 ||
                mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
                _exit(126);
            }
            while (umount2("/proc", MNT_DETACH) == 0) {  // the test's own, and the machine's
            }
            if (fs::exists("/proc/self") || setenv("PATH", path.c_str(), 1) != 0 ||
                setgid(user) != 0 || setuid(user) != 0) {
                _exit(126);
            }
        };
    }
};

TEST_F(WithoutProcTest, AReadOnlyFileOfARunIsOverwrittenOrTold) {
    constexpr uid_t nobody = 65534;
    const std::string file = home + "/Library/Caches/Safari/file";
    const std::string old = recognisable(10000);
    writeFile(file, old);
    hardLink(file, base + "/witness");
    setMode(file, 0400);
    for (const auto& entry : fs::recursive_directory_iterator(home)) {
        NEEDS(lchown(entry.path().c_str(), nobody, nobody) == 0);
    }
    ASSERT_EQ(chown(home.c_str(), nobody, nobody), 0);
    const Ran ran = dorvanel({"run", "--yes"}, withoutProc(nobody));
    NEEDS(ran.status != 126);
    if (readFile(base + "/witness").substr(0, old.size()) == old) {
        EXPECT_EQ(ran.status, 1) << ran;
        EXPECT_THAT(ran.err, HasSubstr("file"));
    } else {
        EXPECT_EQ(ran.status, 0) << ran;
        EXPECT_FALSE(fs::exists(file));
    }
}

TEST_F(WithoutProcTest, ShreddingIsRefusedWhileTheMountsAreUnknown) {
    writeFile(base + "/work/file", "kept");
    const Ran ran = dorvanel({"shred", base + "/work/file"}, withoutProc(0));
    NEEDS(ran.status != 126);
    EXPECT_EQ(ran.status, 2) << ran;
    EXPECT_THAT(ran.err, HasSubstr("/proc/self/mountinfo"));
    EXPECT_EQ(readFile(base + "/work/file"), "kept");
}

}  // namespace
}  // namespace dorvanel::test
