// SPDX-License-Identifier: MIT
#include "support/MountNamespace.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t longestAnswer = 4095;

bool enterNamespace() {
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (user == 0) {
        if (unshare(CLONE_NEWNS) != 0) return false;
    } else {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
        std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
    }
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

bool runs(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

}  // namespace

std::optional<std::string> inMountNamespace(const std::function<std::string()>& work) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) return std::nullopt;
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        if (!enterNamespace()) _exit(1);
        const std::string answer = work().substr(0, longestAnswer);
        const bool told =
            write(ends[1], answer.data(), answer.size()) == static_cast<ssize_t>(answer.size());
        _exit(told ? 0 : 2);
    }
    close(ends[1]);
    std::array<char, longestAnswer> answer{};
    const ssize_t length = child < 0 ? 0 : read(ends[0], answer.data(), answer.size());
    close(ends[0]);
    int status = -1;
    if (child < 0 || waitpid(child, &status, 0) != child) return std::nullopt;
    if (WIFEXITED(status) && WEXITSTATUS(status) == 1) return std::nullopt;
    if (status != 0) return "the child ended with " + std::to_string(status);
    return std::string(answer.data(), static_cast<std::size_t>(length));
}

bool mountTmpfs(const std::string& folder) {
    fs::create_directories(folder);
    return mount("tmpfs", folder.c_str(), "tmpfs", 0, nullptr) == 0;
}

bool mountOverlay(const std::string& lower, const std::string& folder) {
    for (const char* part : {"", "-upper", "-work"}) fs::create_directories(folder + part);
    const std::string options =
        "lowerdir=" + lower + ",upperdir=" + folder + "-upper,workdir=" + folder + "-work";
    return mount("overlay", folder.c_str(), "overlay", 0, options.c_str()) == 0;
}

bool mountExt4(const std::string& image, const std::string& folder) {
    fs::create_directories(folder);
    std::ofstream(image, std::ios::binary).close();
    fs::resize_file(image, 8 << 20);
    return runs("mke2fs -q -t ext4 '" + image + "'") &&
           runs("mount -o loop '" + image + "' '" + folder + "'");
}

void sayNotRun(const std::string& why) {
    std::printf("not run: %s\n", why.c_str());
    std::fflush(stdout);
}

}  // namespace dorvanel::test
