// SPDX-License-Identifier: MIT
#include "platform/FileManager.h"

#include <fcntl.h>
#include <pwd.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include "platform/linux/RenameWithoutReplacing.h"

namespace dorvanel::platform {
namespace {

namespace fs = std::filesystem;

/// Root works in other people's homes: a copy belongs to whom the original belongs to.
bool giveToOwner(const std::string& path, const struct stat& original) {
    return ::geteuid() != 0 || ::lchown(path.c_str(), original.st_uid, original.st_gid) == 0;
}

/// Copies what is no folder; false for what cannot be copied, a FIFO for example.
bool copyEntry(const std::string& from, const std::string& to, const struct stat& original) {
    std::error_code error;
    if (S_ISLNK(original.st_mode)) {
        fs::copy_symlink(from, to, error);
    } else {
        fs::copy_file(from, to, error);
    }
    return !error && giveToOwner(to, original);
}

bool copyTree(const std::string& from, const std::string& to) {
    struct stat original {};
    if (::lstat(from.c_str(), &original) != 0) return false;
    if (!S_ISDIR(original.st_mode)) return copyEntry(from, to, original);
    // Its own mode comes last: a folder that its owner may not write must be filled first.
    if (::mkdir(to.c_str(), 0700) != 0) return false;
    std::error_code error;
    for (fs::directory_iterator entry(from, error), end; !error && entry != end;
         entry.increment(error)) {
        if (!copyTree(entry->path(), fs::path(to) / entry->path().filename())) return false;
    }
    return !error && giveToOwner(to, original) &&
           ::chmod(to.c_str(), original.st_mode & 07777) == 0;
}

/// Removes a copy, folders that their owner may not write among it.
void removeTree(const std::string& path) {
    struct stat status {};
    std::error_code error;
    if (::lstat(path.c_str(), &status) != 0) return;
    if (S_ISDIR(status.st_mode)) {
        static_cast<void>(::chmod(path.c_str(), 0700));
        for (fs::directory_iterator entry(path, error), end; !error && entry != end;
             entry.increment(error)) {
            removeTree(entry->path());
        }
    }
    fs::remove(path, error);
}

class LinuxFileManager final : public FileManager {
  public:
    bool fileExistsAtPath(const std::string& path) const override {
        struct stat status {};
        return ::stat(path.c_str(), &status) == 0;
    }

    bool isDirectoryAtPath(const std::string& path) const override {
        struct stat status {};
        return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    }

    std::vector<std::string> directoryContentsAtPath(const std::string& path) const override {
        std::vector<std::string> names;
        std::error_code error;
        for (fs::directory_iterator entry(path, error), end; !error && entry != end;
             entry.increment(error)) {
            names.push_back(entry->path().filename().native());
        }
        return names;
    }

    bool movePath(const std::string& from, const std::string& to) override {
        return renameWithoutReplacing(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str()) == 0;
    }

    bool copyPath(const std::string& from, const std::string& to) override {
        std::error_code error;
        if (fs::exists(fs::symlink_status(to, error))) return false;
        if (copyTree(from, to)) return true;
        removeTree(to);
        return false;
    }
};

}  // namespace

FileManager& defaultFileManager() {
    static LinuxFileManager manager;
    return manager;
}

std::string homeDirectory() {
    if (const char* home = std::getenv("HOME")) return home;
    const passwd* user = ::getpwuid(::geteuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "";
}

std::string stateFolder() {
    const char* set = std::getenv("XDG_STATE_HOME");
    if (set != nullptr && set[0] == '/') return set;
    const std::string home = homeDirectory();
    return home.starts_with('/') ? home + "/.local/state" : "";
}

std::string expandingTilde(const std::string& path) {
    if (path != "~" && !path.starts_with("~/")) return path;
    return homeDirectory() + path.substr(1);
}

}  // namespace dorvanel::platform
