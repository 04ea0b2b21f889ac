// SPDX-License-Identifier: MIT
#include "realfs/RealFsFixture.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

void sendTo(int descriptor, const std::string& path) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    dup2(file, descriptor);
    close(file);
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Ran& ran) {
    return stream << "status " << ran.status << "\n" << ran.out << ran.err;
}

int attempts(int usual) {
    const char* asked = std::getenv("DORVANEL_ATTEMPTS");
    if (asked != nullptr) return std::atoi(asked);
    return isSanitized() ? (usual + 7) / 8 : usual;
}

RealFsTest::RealFsTest() {
    fs::permissions(place.path(), fs::perms(0755));
    fs::create_directories(home + "/Library/Preferences");
    fs::create_directories(home + "/Library/Logs");
}

Ran RealFsTest::dorvanel(const std::vector<std::string>& words,
                         const std::function<void()>& first) {
    std::vector<std::string> command = {DORVANEL_PROGRAM, "--home", home};
    command.insert(command.end(), words.begin(), words.end());
    std::vector<char*> arguments;
    for (std::string& word : command) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const std::string out = base + "/out";
    const std::string err = base + "/err";
    const pid_t child = fork();
    if (child == 0) {
        sendTo(STDOUT_FILENO, out);
        sendTo(STDERR_FILENO, err);
        if (first) first();
        execv(arguments.front(), arguments.data());
        _exit(127);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) return {};
    return {WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status), readFile(out),
            readFile(err)};
}

void RealFsTest::makeTree(const std::string& folder, int files) {
    for (int i = 0; i < 3 * files; ++i) {
        const std::string name = "/folder " + std::to_string(i % 3) + "/file " + std::to_string(i);
        writeFile(folder + name, recognisable(3 * 4096, static_cast<unsigned>(i)));
    }
}

}  // namespace dorvanel::test
