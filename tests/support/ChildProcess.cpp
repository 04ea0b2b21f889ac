// SPDX-License-Identifier: MIT
#include "support/ChildProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace dorvanel::test {

ChildProcess::ChildProcess(const std::vector<std::string>& command) {
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("pipe2");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    const int error =
        posix_spawnp(&pid_, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    output_ = ends[0];
    if (error == 0) return;
    close(output_);
    throw std::runtime_error("cannot start " + command.front());
}

ChildProcess::~ChildProcess() {
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    close(output_);
}

std::string ChildProcess::readLine() {
    std::string line;
    for (char character = 0; read(output_, &character, 1) == 1 && character != '\n';) {
        line += character;
    }
    return line;
}

void ChildProcess::signal(int number) const {
    if (pid_ > 0) kill(pid_, number);
}

bool ChildProcess::isRunning() const {
    siginfo_t information{};
    return pid_ > 0 &&
           waitid(P_PID, static_cast<id_t>(pid_), &information, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           information.si_pid == 0;
}

void ChildProcess::killWithoutWaiting() const {
    signal(SIGKILL);
    siginfo_t information{};
    waitid(P_PID, static_cast<id_t>(pid_), &information, WEXITED | WNOWAIT);
}

int ChildProcess::waitForEnd() {
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace dorvanel::test
