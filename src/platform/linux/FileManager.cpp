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

namespace dorvanel::platform {
namespace {

namespace fs = std::filesystem;

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
        if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
            return true;
        }
        if (errno != EINVAL && errno != ENOSYS) return false;
        // A file system that cannot refuse to replace: look first.
        struct stat status {};
        return ::lstat(to.c_str(), &status) != 0 && ::rename(from.c_str(), to.c_str()) == 0;
    }

    bool copyPath(const std::string& from, const std::string& to) override {
        std::error_code error;
        if (fs::exists(fs::symlink_status(to, error))) return false;
        fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
        if (!error) return true;
        std::error_code ignored;
        fs::remove_all(to, ignored);
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

std::string expandingTilde(const std::string& path) {
    if (path != "~" && !path.starts_with("~/")) return path;
    return homeDirectory() + path.substr(1);
}

}  // namespace dorvanel::platform
