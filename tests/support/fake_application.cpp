// SPDX-License-Identifier: MIT

// Stands for a browser or a mail program: waits until it is killed. Copied into a bundle folder by
// the tests. Says "ready" on standard output once it is set up.
//
//   fake_application          ends on SIGTERM
//   fake_application stay     takes no notice of SIGTERM
//   fake_application parent   has a child, whose number it says, and which it does not take along
//   fake_application thread   its first thread ends, another one goes on
//   fake_application hidden   keeps what it executes to itself
//   fake_application FILE     becomes the program FILE on SIGUSR1

#include <pthread.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstring>

namespace {

constexpr unsigned longestLife = 240;  // seconds, of whoever has nobody to end it

bool say(const char* line) {
    const auto size = static_cast<ssize_t>(std::strlen(line));
    return write(STDOUT_FILENO, line, std::strlen(line)) == size;
}

void* waitForEver(void*) {
    while (true) pause();
}

/// The number is said by the parent, and only once there is a child.
void leaveChild() {
    const pid_t child = fork();
    if (child == 0) {
        alarm(longestLife);
        waitForEver(nullptr);
    }
    char line[32];
    std::snprintf(line, sizeof line, "%d\n", static_cast<int>(child));
    say(line);
}

}  // namespace

int main(int argc, char** argv) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);  // a test that crashes leaves nothing behind
    const char* next = argc > 1 ? argv[1] : "";
    if (std::strcmp(next, "stay") == 0) std::signal(SIGTERM, SIG_IGN);
    if (std::strcmp(next, "hidden") == 0) prctl(PR_SET_DUMPABLE, 0);
    sigset_t become;
    sigemptyset(&become);
    sigaddset(&become, SIGUSR1);
    sigprocmask(SIG_BLOCK, &become, nullptr);
    if (!say("ready\n")) return 1;
    if (std::strcmp(next, "parent") == 0) leaveChild();
    if (std::strcmp(next, "thread") == 0) {
        pthread_t other;
        if (pthread_create(&other, nullptr, waitForEver, nullptr) != 0) return 1;
        alarm(longestLife);  // the signal of its parent's death went with its first thread
        pthread_exit(nullptr);
    }
    int received = 0;
    while (sigwait(&become, &received) != 0 || next[0] != '/') {
    }
    execl(next, next, static_cast<char*>(nullptr));
    return 1;
}
