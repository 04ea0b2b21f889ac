// SPDX-License-Identifier: MIT
#include "realfs/Neighbour.h"

#include <grp.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace dorvanel::test {

void become(uid_t user) {
    if (setgroups(0, nullptr) != 0 || setgid(user) != 0 || setuid(user) != 0) _exit(126);
}

Neighbour::Neighbour(uid_t user, const std::function<void()>& step) {
    int ends[2];
    if (pipe(ends) != 0) return;
    child_ = fork();
    if (child_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (user != 0) become(user);
        step();
        if (write(ends[1], "y", 1) != 1) _exit(1);
        while (true) step();
    }
    close(ends[1]);
    char answer = 0;
    works_ = read(ends[0], &answer, 1) == 1;
    close(ends[0]);
}

Neighbour::~Neighbour() {
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
}

}  // namespace dorvanel::test
