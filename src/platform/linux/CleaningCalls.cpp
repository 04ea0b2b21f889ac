// SPDX-License-Identifier: MIT
#include "platform/CleaningCalls.h"

#include <dirent.h>
#include <fcntl.h>
#include <stdio.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/linux/CallAgain.h"
#include "platform/linux/RenameWithoutReplacing.h"

namespace dorvanel::platform {
namespace {

constexpr int openAlways = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

int look(int folder, const char* name, int flags, CleaningStatus& status) {
    struct stat found {};
    const int result = called([&] { return ::fstatat(folder, name, &found, flags); });
    if (result < 0) return result;
    status.size = static_cast<std::uint64_t>(found.st_size);
    status.device = found.st_dev;
    status.inode = found.st_ino;
    status.links = found.st_nlink;
    status.modified = nanoseconds(found.st_mtim);
    status.changed = nanoseconds(found.st_ctim);
    status.owner = found.st_uid;
    status.group = found.st_gid;
    status.permissions = found.st_mode & 07777;
    status.kind = kindOfMode(found.st_mode);
    return 0;
}

int openThere(int folder, const char* name, int access) {
    const int flags = access | openAlways;
    // Only the owner of a file may leave its times alone.
    const int file = called([&] { return ::openat(folder, name, flags | O_NOATIME); });
    return file == -EPERM ? called([&] { return ::openat(folder, name, flags); }) : file;
}

class LinuxCleaningCalls final : public CleaningCalls {
  public:
    int openFolder(const char* path) override {
        return called([&] { return ::open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    }
    int openForReading(int folder, const char* name) override {
        return openThere(folder, name, O_RDONLY);
    }
    int openForChanging(int folder, const char* name) override {
        return openThere(folder, name, O_RDWR);
    }
    int createFile(int folder, const char* name) override {
        const int flags = O_RDWR | O_CREAT | O_EXCL | openAlways;
        return called([&] { return ::openat(folder, name, flags, ownerOnly); });
    }
    int close(int descriptor) override { return ::close(descriptor) < 0 ? -errno : 0; }

    int status(int descriptor, CleaningStatus& status) override {
        return look(descriptor, "", AT_EMPTY_PATH, status);
    }
    int statusAt(int folder, const char* name, CleaningStatus& status) override {
        return look(folder, name, AT_SYMLINK_NOFOLLOW, status);
    }
    int changeGroup(int file, std::uint32_t group) override {
        return called([&] { return ::fchown(file, static_cast<uid_t>(-1), group); });
    }
    int changeMode(int file, std::uint32_t permissions) override {
        return called([&] { return ::fchmod(file, permissions); });
    }
    int readFolder(int folder, std::vector<std::string>& names) override {
        // The stream closes what it reads from, and moves where it stands: it gets its own.
        const int own =
            called([&] { return ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
        if (own < 0) return own;
        DIR* stream = ::fdopendir(own);
        if (stream == nullptr) {
            const int reason = -errno;
            ::close(own);
            return reason;
        }
        names.clear();
        errno = 0;
        // The stream is of this call alone.
        while (const dirent* entry = ::readdir(stream)) {  // NOLINT(concurrency-mt-unsafe)
            if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0) {
                names.emplace_back(entry->d_name);
            }
            errno = 0;
        }
        const int reason = -errno;
        ::closedir(stream);
        return reason;
    }

    std::ptrdiff_t readAt(int file, void* data, std::size_t size, std::uint64_t offset) override {
        return called([&] { return ::pread(file, data, size, static_cast<off_t>(offset)); });
    }
    std::ptrdiff_t writeAt(int file, const void* data, std::size_t size,
                           std::uint64_t offset) override {
        return called([&] { return ::pwrite(file, data, size, static_cast<off_t>(offset)); });
    }
    int truncate(int file, std::uint64_t size) override {
        return called([&] { return ::ftruncate(file, static_cast<off_t>(size)); });
    }
    int flush(int descriptor) override {
        return called([&] { return ::fsync(descriptor); });
    }

    int lock(int file, std::uint64_t offset, std::uint64_t size) override {
        // Of the opening and not of the process: a process loses the other kind with whatever else
        // it closes of the same file.
        struct flock wanted {};
        wanted.l_type = F_WRLCK;
        wanted.l_whence = SEEK_SET;
        wanted.l_start = static_cast<off_t>(offset);
        wanted.l_len = static_cast<off_t>(size);
        const int result = called([&] { return ::fcntl(file, F_OFD_SETLK, &wanted); });
        return result == -EACCES ? -EAGAIN : result;
    }

    int rename(int folder, const char* from, const char* to) override {
        return called([&] { return renameWithoutReplacing(folder, from, folder, to); });
    }
    int exchange(int folder, const char* one, const char* other) override {
        return called([&] { return ::renameat2(folder, one, folder, other, RENAME_EXCHANGE); });
    }
    int removeFile(int folder, const char* name) override {
        return called([&] { return ::unlinkat(folder, name, 0); });
    }

    int randomBytes(void* data, std::size_t size) override {
        const ssize_t got = called([&] { return ::getrandom(data, size, 0); });
        if (got < 0) return static_cast<int>(got);
        return static_cast<std::size_t>(got) == size ? 0 : -EIO;
    }
    std::uint32_t effectiveUser() override { return ::geteuid(); }
};

}  // namespace

std::unique_ptr<CleaningCalls> makeCleaningCalls() {
    return std::make_unique<LinuxCleaningCalls>();
}

}  // namespace dorvanel::platform
