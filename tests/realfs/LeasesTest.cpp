// SPDX-License-Identifier: MIT

// Files under a lease: whoever holds it is told that somebody else opens the file, and may take
// some time to give it up.
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "realfs/RealFsFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

/// Another process that holds a lease on a file.
class Holder {
  public:
    enum class When { asked, never };

    Holder(const std::string& file, int kind, When givesUp) {
        int ends[2];
        if (pipe(ends) != 0) return;
        child_ = fork();
        if (child_ == 0) hold(file, kind, givesUp, ends[1]);
        close(ends[1]);
        char answer = 0;
        works_ = read(ends[0], &answer, 1) == 1;
        close(ends[0]);
    }
    ~Holder() {
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

    [[nodiscard]] bool works() const { return works_; }

  private:
    [[noreturn]] static void hold(const std::string& file, int kind, When givesUp, int said) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        sigset_t asked;
        sigemptyset(&asked);
        sigaddset(&asked, SIGIO);
        sigprocmask(SIG_BLOCK, &asked, nullptr);
        const int descriptor = open(file.c_str(), kind == F_WRLCK ? O_RDWR : O_RDONLY);
        if (descriptor < 0 || fcntl(descriptor, F_SETLEASE, kind) != 0) _exit(1);
        if (write(said, "y", 1) != 1) _exit(1);
        int signal = 0;
        sigwait(&asked, &signal);
        usleep(100'000);  // it has something to finish first
        if (givesUp == When::asked) fcntl(descriptor, F_SETLEASE, F_UNLCK);
        while (true) pause();
    }

    pid_t child_ = -1;
    bool works_ = false;
};

class LeasesTest : public RealFsTest {
  protected:
    LeasesTest() {
        writeFile(base + "/work/file", old);
        hardLink(base + "/work/file", base + "/witness");
    }

    void expectOverwritten(const Ran& ran) {
        EXPECT_EQ(ran.status, 0) << ran;
        EXPECT_FALSE(fs::exists(base + "/work/file"));
        EXPECT_NE(readFile(base + "/witness").substr(0, old.size()), old);
    }

    std::string old = recognisable(10000);
};

TEST_F(LeasesTest, AWritersLeaseThatIsGivenUpIsWaitedFor) {
    const Holder holder(base + "/work/file", F_WRLCK, Holder::When::asked);
    NEEDS(holder.works());
    expectOverwritten(shred(base + "/work/file"));
}

TEST_F(LeasesTest, AReadersLeaseThatIsGivenUpIsWaitedFor) {
    const Holder holder(base + "/work/file", F_RDLCK, Holder::When::asked);
    NEEDS(holder.works());
    expectOverwritten(shred(base + "/work/file"));
}

TEST_F(LeasesTest, InATreeTooTheLeaseIsWaitedFor) {
    makeTree(base + "/work");
    const Holder holder(base + "/work/file", F_WRLCK, Holder::When::asked);
    NEEDS(holder.works());
    const Ran ran = shred(base + "/work");
    expectOverwritten(ran);
    EXPECT_FALSE(fs::exists(base + "/work"));
}

TEST_F(LeasesTest, OneThatIsNeverGivenUpIsTakenByTheSystemAfterItsTime) {
    // The system's time is 45 s.
    if (std::getenv("DORVANEL_LONG_TESTS") == nullptr) {
        GTEST_SKIP() << "with DORVANEL_LONG_TESTS=1 only";
    }
    const Holder holder(base + "/work/file", F_WRLCK, Holder::When::never);
    NEEDS(holder.works());
    expectOverwritten(shred(base + "/work/file"));
}

}  // namespace
}  // namespace dorvanel::test
