// SPDX-License-Identifier: MIT
#include "support/Disk.h"

#include <grp.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace dorvanel::test {

namespace fs = std::filesystem;

std::string recognisable(std::size_t size, unsigned salt) {
    std::string text;
    for (unsigned line = 0; text.size() < size; ++line) {
        text += "Secret contents " + std::to_string(salt) + "/" + std::to_string(line) + "\n";
    }
    text.resize(size);
    return text;
}

unsigned modeOf(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

void setMode(const std::string& path, unsigned mode) {
    if (::chmod(path.c_str(), mode) != 0) throw std::runtime_error("chmod " + path);
}

void hardLink(const std::string& path, const std::string& other) {
    fs::create_hard_link(path, other);
}

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string quickPlace() {
    return ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "";
}

std::size_t openDescriptors() {
    return namesIn("/proc/self/fd").size();
}

bool isRoot() {
    return ::geteuid() == 0;
}

bool isSanitized() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#else
    return false;
#endif
}

std::string inChild(const std::function<std::string()>& body) {
    int ends[2];
    if (::pipe(ends) != 0) return "no pipe";
    const pid_t child = ::fork();
    if (child < 0) return "no child";
    if (child == 0) {
        ::close(ends[0]);
        std::string text;
        try {
            text = body();
        } catch (const std::exception& problem) {
            text = problem.what();
        }
        const bool told = ::write(ends[1], text.data(), text.size()) >= 0;
        ::_exit(told ? 0 : 1);
    }
    ::close(ends[1]);
    std::string text;
    char buffer[4096];
    for (ssize_t got = 0; (got = ::read(ends[0], buffer, sizeof buffer)) > 0;) {
        text.append(buffer, static_cast<std::size_t>(got));
    }
    ::close(ends[0]);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
    if (WIFSIGNALED(status)) text += std::string("killed: ") + ::strsignal(WTERMSIG(status));
    if (WIFEXITED(status) && WEXITSTATUS(status) != 0) {
        text += "status " + std::to_string(WEXITSTATUS(status));
    }
    return text;
}

std::string asOrdinaryUser(const std::function<std::string()>& body) {
    return inChild([&]() -> std::string {
        constexpr unsigned nobody = 65534;
        if (isRoot() &&
            (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0)) {
            return "cannot become nobody";
        }
        return body();
    });
}

}  // namespace dorvanel::test
