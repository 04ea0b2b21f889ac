// SPDX-License-Identifier: MIT
#include "platform/ReplaceFile.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/OpenWithoutLinks.h"
#include "platform/linux/RenameWithoutReplacing.h"

namespace dorvanel::platform {
namespace {

namespace fs = std::filesystem;

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Root works in other people's homes: what it writes there stays theirs.
bool giveToOwnerOf(const std::string& folder, int file) {
    struct stat owner {};
    if (::geteuid() != 0 || ::stat(folder.c_str(), &owner) != 0 || owner.st_uid == 0) return true;
    return ::fchown(file, owner.st_uid, owner.st_gid) == 0;
}

Result<Done> writeNewFile(const std::string& path, const std::string& folder,
                          std::string_view bytes) {
    FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file.isOpen()) return Error::fromErrno("create", path);
    if (!giveToOwnerOf(folder, file.get())) return Error::fromErrno("change owner", path);
    if (::fchmod(file.get(), 0600) != 0) return Error::fromErrno("change mode", path);
    if (!writeAll(file.get(), bytes)) return Error::fromErrno("write", path);
    if (::fsync(file.get()) != 0) return Error::fromErrno("flush", path);
    if (!file.close()) return Error::fromErrno("close", path);
    return Done{};
}

Result<Done> flushFolder(const std::string& folder) {
    const FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!descriptor.isOpen()) return Error::fromErrno("open", folder);
    // EINVAL: a file system that knows no flush of folders.
    if (::fsync(descriptor.get()) != 0 && errno != EINVAL) return Error::fromErrno("flush", folder);
    return Done{};
}

}  // namespace

Result<Done> replaceFile(const std::string& path, std::string_view bytes, const FolderLock& lock) {
    const std::string folder = fs::path(path).parent_path();
    std::string temporary = fs::path(folder) / ("." + fs::path(path).filename().string() + ".new");
    // Without a lock two writers must not share a temporary file.
    if (!lock.isHeld()) temporary += "-" + std::to_string(::getpid());
    if (::unlink(temporary.c_str()) != 0 && errno != ENOENT) {
        return Error::fromErrno("remove", temporary);
    }
    Result<Done> written = writeNewFile(temporary, folder, bytes);
    if (written && ::rename(temporary.c_str(), path.c_str()) != 0) {
        written = Error::fromErrno("rename", path);
    }
    if (!written) {
        ::unlink(temporary.c_str());  // the first error is the one to tell
        return written;
    }
    return flushFolder(folder);
}

Result<std::string> setFileAside(const std::string& path) {
    constexpr int attempts = 1000;
    for (int i = 1; i <= attempts; ++i) {
        std::string aside = path + " (damaged " + std::to_string(i) + ")";
        if (renameWithoutReplacing(AT_FDCWD, path.c_str(), AT_FDCWD, aside.c_str()) == 0) {
            return aside;
        }
        if (errno != EEXIST) break;
    }
    return Error::fromErrno("set aside", path);
}

Result<std::optional<std::string>> readWholeFile(const std::string& path, std::size_t limit,
                                                 const std::string& linksUpTo) {
    // Not waiting: something put a pipe there.
    constexpr int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const FileDescriptor file(linksUpTo.empty() ? ::open(path.c_str(), flags)
                                                : openWithoutLinks(linksUpTo, path, flags));
    if (!file.isOpen() && errno == ENOENT) return std::optional<std::string>();
    if (!file.isOpen() && !linksUpTo.empty() && (errno == ELOOP || errno == ENOTDIR)) {
        return Error{0, "open", path, "root follows no link in the home folder of somebody else"};
    }
    if (!file.isOpen()) return Error::fromErrno("open", path);
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) return Error::fromErrno("read", path);
    if (!S_ISREG(status.st_mode)) return Error{0, "read", path, "not a regular file"};

    std::string bytes;
    char buffer[65536];
    while (bytes.size() <= limit) {
        const ssize_t count = ::read(file.get(), buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return Error::fromErrno("read", path);
        if (count == 0) break;
        bytes.append(buffer, static_cast<std::size_t>(count));
    }
    return std::optional(std::move(bytes));
}

std::string followingLinks(const std::string& path) {
    constexpr int maximumLinks = 40;  // as many as the system itself follows
    fs::path end = path;
    for (int i = 0; i < maximumLinks; ++i) {
        std::error_code error;
        const fs::path target = fs::read_symlink(end, error);
        if (error) break;
        end = end.parent_path() / target;
    }
    return end;
}

}  // namespace dorvanel::platform
