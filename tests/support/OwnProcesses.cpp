// SPDX-License-Identifier: MIT
#include "support/OwnProcesses.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

constexpr const char* mark = "DORVANEL_TEST_OWN_PROCESSES";

/// Ends with the process that started it, whatever becomes of that one.
void dieWithParent() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

int statusOf(int status) {
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

/// Only the user's own number is known in the namespace. Whoever stays who they are loses the
/// rights that come with its making when the program starts.
bool enterNamespaces(bool asRoot) {
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (user == 0) return unshare(CLONE_NEWPID | CLONE_NEWNS) == 0;
    if (unshare(CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNS) != 0) return false;
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << (asRoot ? 0 : user) << ' ' << user << " 1";
    std::ofstream("/proc/self/gid_map") << (asRoot ? 0 : group) << ' ' << group << " 1";
    return true;
}

bool mountProcesses() {
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("proc", "/proc", "proc", MS_NOSUID | MS_NODEV | MS_NOEXEC, nullptr) == 0;
}

/// The namespace's first process: starts the program, waits for what has lost its parent, and
/// takes all that is left with it.
[[noreturn]] void beFirstProcess(char** arguments, int said) {
    dieWithParent();
    if (!mountProcesses()) _exit(1);
    const pid_t program = fork();
    if (program == 0) {
        dieWithParent();
        setenv(mark, "1", 1);
        execv("/proc/self/exe", arguments);
        _exit(127);
    }
    if (program < 0 || write(said, "y", 1) != 1) _exit(1);
    for (int status = 0;;) {
        const pid_t ended = wait(&status);
        if (ended == program) _exit(statusOf(status));
        if (ended < 0 && errno != EINTR) _exit(1);
    }
}

/// `ps` as it would be with nothing else on the machine.
void filterListing() {
    static const TemporaryFolder folder;
    // Some tests look into their folders as another user.
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    const std::string ps = folder / "bin/ps";
    writeFile(ps, "#!/bin/sh\nPATH=/usr/bin:/bin\nps \"$@\" | sed -n -e 1p -e '\\|" +
                      folder.path().string() + "|p'\n");
    std::filesystem::permissions(ps, std::filesystem::perms::owner_all);
    const char* path = std::getenv("PATH");
    setenv("PATH", (folder / "bin:" + (path == nullptr ? "/usr/bin:/bin" : path)).c_str(), 1);
    setenv("TMPDIR", folder.path().c_str(), 1);
}

}  // namespace

std::optional<int> runAmongOwnProcesses(char** arguments, bool asRoot) {
    if (processesAreOwn()) return std::nullopt;
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return 1;
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        dieWithParent();
        if (!enterNamespaces(asRoot)) _exit(1);
        const pid_t first = fork();
        if (first == 0) beFirstProcess(arguments, ends[1]);
        close(ends[1]);
        int status = 0;
        _exit(first > 0 && waitpid(first, &status, 0) == first ? statusOf(status) : 1);
    }
    close(ends[1]);
    char answer = 0;
    const bool started = child > 0 && read(ends[0], &answer, 1) == 1;
    close(ends[0]);
    int status = 0;
    if (child > 0) waitpid(child, &status, 0);
    if (started) return statusOf(status);
    filterListing();
    return std::nullopt;
}

bool processesAreOwn() {
    return std::getenv(mark) != nullptr;
}

}  // namespace dorvanel::test
