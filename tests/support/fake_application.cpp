// SPDX-License-Identifier: MIT

// Stands for a browser or a mail program: waits until it is killed. Copied into a bundle folder by
// the tests. Says "ready" on standard output once it is set up.
//
//   fake_application          ends on SIGTERM
//   fake_application stay     takes no notice of SIGTERM
//   fake_application FILE     becomes the program FILE on SIGUSR1

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstring>

int main(int argc, char** argv) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);  // a test that crashes leaves nothing behind
    const char* next = argc > 1 && std::strcmp(argv[1], "stay") != 0 ? argv[1] : nullptr;
    if (argc > 1 && next == nullptr) std::signal(SIGTERM, SIG_IGN);
    sigset_t become;
    sigemptyset(&become);
    sigaddset(&become, SIGUSR1);
    sigprocmask(SIG_BLOCK, &become, nullptr);
    if (write(STDOUT_FILENO, "ready\n", 6) != 6) return 1;
    int received = 0;
    while (sigwait(&become, &received) != 0 || next == nullptr) {
    }
    execl(next, next, static_cast<char*>(nullptr));
    return 1;
}
