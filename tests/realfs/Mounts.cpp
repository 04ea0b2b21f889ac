// SPDX-License-Identifier: MIT
#include "realfs/Mounts.h"

#include <sys/mount.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "support/OwnProcesses.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

bool runs(const std::string& command) {
    return std::system(("PATH=$PATH:/usr/sbin:/sbin; " + command + " >/dev/null 2>&1").c_str()) ==
           0;
}

/// mount(2), in mounts that are the test program's own and nowhere else.
bool mounts(const std::string& what, const std::string& folder, const char* kind,
            unsigned long flags = 0, const std::string& options = {}) {
    return processesAreOwn() &&
           mount(what.c_str(), folder.c_str(), kind, flags, options.c_str()) == 0;
}

dev_t deviceOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_dev : 0;
}

}  // namespace

Mount::~Mount() {
    if (!folder_.empty()) umount2(folder_.c_str(), MNT_DETACH);
}

bool Mount::end() {
    if (umount2(folder_.c_str(), 0) != 0) return false;
    folder_.clear();
    return true;
}

MountPointer mountMemory(const std::string& folder) {
    fs::create_directories(folder);
    if (!mounts("tmpfs", folder, "tmpfs")) return nullptr;
    return std::make_unique<Mount>(folder);
}

MountPointer mountBound(const std::string& what, const std::string& onWhat) {
    if (!fs::exists(onWhat)) {
        if (fs::is_directory(what)) {
            fs::create_directories(onWhat);
        } else {
            std::ofstream(onWhat).close();
        }
    }
    if (!mounts(what, onWhat, nullptr, MS_BIND)) return nullptr;
    return std::make_unique<Mount>(onWhat);
}

MountPointer mountNewImage(const std::string& kind, const std::string& image,
                           const std::string& folder, std::size_t megabytes,
                           const std::string& makeOptions) {
    std::ofstream(image, std::ios::binary).close();
    fs::resize_file(image, megabytes << 20);
    if (!runs("mkfs." + kind + " " + makeOptions + " '" + image + "'")) return nullptr;
    return mountImage(image, folder);
}

MountPointer mountImage(const std::string& image, const std::string& folder,
                        const std::string& options) {
    fs::create_directories(folder);
    if (!processesAreOwn() ||
        !runs("mount -o loop," + options + " '" + image + "' '" + folder + "'")) {
        return nullptr;
    }
    return std::make_unique<Mount>(folder);
}

MountPointer mountOverlay(const std::string& lower, const std::string& folder) {
    const std::string memory = folder + "-changes";
    MountPointer changes = mountMemory(memory);
    if (!changes) return nullptr;
    for (const char* part : {"/upper", "/work"}) fs::create_directories(memory + part);
    fs::create_directories(folder);
    const std::string options =
        "lowerdir=" + lower + ",upperdir=" + memory + "/upper,workdir=" + memory + "/work";
    if (!mounts("overlay", folder, "overlay", 0, options)) return nullptr;
    return std::make_unique<Mount>(folder, std::move(changes));
}

Passthrough::Passthrough(const std::string& backing, const std::string& folder,
                         const std::vector<std::string>& switches) {
    fs::create_directories(backing);
    fs::create_directories(folder);
    if (!processesAreOwn()) return;
    const dev_t before = deviceOf(folder);
    std::vector<std::string> command = {DORVANEL_PASSTHROUGH, backing, folder};
    command.insert(command.end(), switches.begin(), switches.end());
    server_ = std::make_unique<ChildProcess>(command);
    while (server_->isRunning()) {
        if (deviceOf(folder) != before) {
            mount_ = std::make_unique<Mount>(folder);
            return;
        }
        std::this_thread::yield();
    }
}

Passthrough::~Passthrough() {
    mount_.reset();  // the server ends with its mount
    if (server_ == nullptr) return;
    if (server_->isRunning()) server_->signal(SIGTERM);
    server_->waitForEnd();
}

}  // namespace dorvanel::test
