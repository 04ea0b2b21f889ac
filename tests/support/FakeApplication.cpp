#include "support/FakeApplication.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>
#include <vector>

#include "support/TemporaryFolder.h"

namespace dorvanel::test {

namespace fs = std::filesystem;

fs::path makeBundle(const fs::path& folder, const std::string& name, const std::string& pkgInfo) {
    const fs::path bundle = folder / (name + ".app");
    const fs::path executable = bundle / "Contents/MacOS" / name;
    fs::create_directories(executable.parent_path());
    fs::copy_file(DORVANEL_FAKE_APPLICATION, executable);
    if (!pkgInfo.empty()) writeFile(bundle / "Contents/PkgInfo", pkgInfo);
    return executable;
}

FakeApplication::FakeApplication(const fs::path& folder, const std::string& name,
                                 const std::string& pkgInfo, const std::string& argument)
    : bundle_(folder / (name + ".app")), name_(name) {
    std::string program = makeBundle(folder, name, pkgInfo);
    std::string word = argument;
    std::vector<char*> arguments{program.data()};
    if (!word.empty()) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("pipe2");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    const int error =
        posix_spawn(&pid_, program.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    output_ = ends[0];
    if (error != 0) throw std::runtime_error("posix_spawn " + program);
    waitUntilReady();
}

FakeApplication::~FakeApplication() {
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    close(output_);
}

fs::path FakeApplication::executable() const {
    return bundle_ / "Contents/MacOS" / name_;
}

void FakeApplication::becomeOther() {
    kill(pid_, SIGUSR1);
    waitUntilReady();
}

bool FakeApplication::isRunning() const {
    siginfo_t information{};
    return pid_ > 0 &&
           waitid(P_PID, static_cast<id_t>(pid_), &information, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           information.si_pid == 0;
}

void FakeApplication::killWithoutWaiting() {
    kill(pid_, SIGKILL);
    siginfo_t information{};
    waitid(P_PID, static_cast<id_t>(pid_), &information, WEXITED | WNOWAIT);
}

int FakeApplication::waitForEnd() {
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

void FakeApplication::waitUntilReady() const {
    char word[5];
    std::size_t length = 0;
    while (length < sizeof word) {
        const ssize_t more = read(output_, word + length, sizeof word - length);
        if (more <= 0) throw std::runtime_error("the fake application did not start");
        length += static_cast<std::size_t>(more);
    }
}

}  // namespace dorvanel::test
