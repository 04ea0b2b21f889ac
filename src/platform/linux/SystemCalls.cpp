// SPDX-License-Identifier: MIT
#include "platform/SystemCalls.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <stdio.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstring>
#include <fstream>
#include <thread>
#include "platform/linux/CallAgain.h"
#include "platform/linux/RenameWithoutReplacing.h"

namespace dorvanel::platform {
namespace {

static_assert(SystemCalls::workingFolder == AT_FDCWD);

constexpr int openForOverwriting = O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
constexpr int openForListing = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

EntryKind kindOfEntry(unsigned char type) {
    return type == DT_UNKNOWN ? EntryKind::unknown : kindOfMode(static_cast<mode_t>(DTTOIF(type)));
}

constexpr unsigned wantedStatus = STATX_BASIC_STATS | STATX_BTIME | STATX_MNT_ID;

void translate(const struct statx& from, FileStatus& to) {
    to.size = from.stx_size;
    to.device = makedev(from.stx_dev_major, from.stx_dev_minor);
    to.inode = from.stx_ino;
    to.links = from.stx_nlink;
    to.mount = (from.stx_mask & STATX_MNT_ID) != 0 ? from.stx_mnt_id : 0;
    to.born = (from.stx_mask & STATX_BTIME) != 0
                  ? from.stx_btime.tv_sec * 1'000'000'000 + from.stx_btime.tv_nsec
                  : 0;
    to.owner = from.stx_uid;
    to.permissions = from.stx_mode & 07777;
    to.kind = kindOfMode(from.stx_mode);
}

/// Where a sandbox knows no statx.
void translate(const struct stat& from, FileStatus& to) {
    to = {};
    to.size = static_cast<std::uint64_t>(from.st_size);
    to.device = from.st_dev;
    to.inode = from.st_ino;
    to.links = from.st_nlink;
    to.owner = from.st_uid;
    to.permissions = from.st_mode & 07777;
    to.kind = kindOfMode(from.st_mode);
}

/// The system call that newer kernels have for the permission bits of a reference; the C library
/// does not know it yet.
int changeModeOfReference(int reference, std::uint32_t permissions) {
#ifdef SYS_fchmodat2
    constexpr long number = SYS_fchmodat2;
#else
    constexpr long number = 452;
#endif
    return static_cast<int>(::syscall(number, reference, "", permissions, AT_EMPTY_PATH));
}

/// The name under which the kernel shows an open descriptor; opening it opens the same file.
std::array<char, 32> magicLink(int descriptor) {
    std::array<char, 32> path{};
    std::snprintf(path.data(), path.size(), "/proc/self/fd/%d", descriptor);
    return path;
}

class LinuxSystemCalls final : public SystemCalls {
  public:
    int openFile(int folder, const char* name, Links links) override {
        return called([&] { return ::openat(folder, name, openForOverwriting | flagsOf(links)); });
    }
    int openFolder(int folder, const char* name) override {
        return called([&] { return ::openat(folder, name, openForListing | O_NOFOLLOW); });
    }
    int openReference(int folder, const char* name, Links links) override {
        return called([&] { return ::openat(folder, name, O_PATH | O_CLOEXEC | flagsOf(links)); });
    }
    int close(int descriptor) override { return ::close(descriptor) < 0 ? -errno : 0; }

    int status(int descriptor, FileStatus& status) override {
        return look(descriptor, "", AT_EMPTY_PATH, status);
    }
    int statusAt(int folder, const char* name, Links links, FileStatus& status) override {
        return look(folder, name, links == Links::follow ? 0 : AT_SYMLINK_NOFOLLOW, status);
    }
    int canReadAndWrite(int folder, const char* name) override {
        return called([&] { return ::faccessat(folder, name, R_OK | W_OK, AT_EACCESS); });
    }
    int changeMode(int descriptor, std::uint32_t permissions) override {
        const int result = called([&] { return ::fchmod(descriptor, permissions); });
        if (result != -EBADF) return result;
        const int changed = called([&] { return changeModeOfReference(descriptor, permissions); });
        if (changed >= 0) return changed;
        // An older kernel, or a sandbox that does not know the call: the magic link of a reference
        // leads to the entry itself.
        return called([&] { return ::chmod(magicLink(descriptor).data(), permissions); });
    }
    int changeModeAt(int folder, const char* name, std::uint32_t permissions) override {
        return called([&] { return ::fchmodat(folder, name, permissions, 0); });
    }
    int readLink(int folder, const char* name, std::string& text) override {
        std::array<char, PATH_MAX> buffer{};
        const ssize_t length =
            called([&] { return ::readlinkat(folder, name, buffer.data(), buffer.size()); });
        if (length < 0) return static_cast<int>(length);
        text.assign(buffer.data(), static_cast<std::size_t>(length));
        return 0;
    }
    int allowsDevices(int descriptor) override {
        struct statvfs found {};
        const int result = called([&] { return ::fstatvfs(descriptor, &found); });
        if (result < 0) return result;
        return (found.f_flag & ST_NODEV) == 0 ? 1 : 0;
    }

    int readFolder(int folder, FolderListing& listing) override {
        listing.clear();
        for (;;) {
            const ssize_t got =
                called([&] { return ::getdents64(folder, buffer_.data(), buffer_.size()); });
            if (got <= 0) return static_cast<int>(got);
            for (ssize_t at = 0; at < got;) {
                dirent64 entry;
                const char* record = buffer_.data() + at;
                std::memcpy(&entry, record, offsetof(dirent64, d_name));
                const char* name = record + offsetof(dirent64, d_name);
                if (std::strcmp(name, ".") != 0 && std::strcmp(name, "..") != 0) {
                    listing.add(name, kindOfEntry(entry.d_type), entry.d_ino);
                }
                at += entry.d_reclen;
            }
        }
    }
    int makeFolder(int folder, const char* name, std::uint32_t permissions) override {
        return called([&] { return ::mkdirat(folder, name, permissions); });
    }
    int rename(int fromFolder, const char* from, int toFolder, const char* to) override {
        return called([&] { return renameWithoutReplacing(fromFolder, from, toFolder, to); });
    }
    int removeFile(int folder, const char* name) override {
        return called([&] { return ::unlinkat(folder, name, 0); });
    }
    int removeFolder(int folder, const char* name) override {
        return called([&] { return ::unlinkat(folder, name, AT_REMOVEDIR); });
    }

    std::ptrdiff_t writeAt(int file, const void* data, std::size_t size,
                           std::uint64_t offset) override {
        return called([&] { return ::pwrite(file, data, size, static_cast<off_t>(offset)); });
    }
    std::ptrdiff_t readAt(int file, void* data, std::size_t size, std::uint64_t offset) override {
        const auto read = [&] {
            return called([&] { return ::pread(file, data, size, static_cast<off_t>(offset)); });
        };
        const ssize_t result = read();
        // Some file systems take the flag and then no read, or none at such an offset.
        return result == -EINVAL && readPastMemory(file, false) >= 0 ? read() : result;
    }
    int forgetCached(int file) override {
        const int failed = ::posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
        if (failed != 0) return -failed;
        readPastMemory(file, true);
        return 0;
    }
    void startWriteBack(int file, std::uint64_t offset, std::uint64_t size) override {
        ::sync_file_range(file, static_cast<off64_t>(offset), static_cast<off64_t>(size),
                          SYNC_FILE_RANGE_WRITE);
    }
    [[nodiscard]] bool isForTwoThreads() const override { return true; }
    int flushFile(int file) override {
        return called([&] { return ::fdatasync(file); });
    }
    int flushFileSystem(int file) override {
        return called([&] { return ::syncfs(file); });
    }
    int livesInMemory(int file) override {
        struct statfs found {};
        const int result = called([&] { return ::fstatfs(file, &found); });
        if (result < 0) return result;
        return found.f_type == TMPFS_MAGIC || found.f_type == RAMFS_MAGIC ? 1 : 0;
    }
    int keepsNoOwners(int descriptor) override {
        // Numbers without a name are missing in the kernel's public list: exFAT, NTFS, NTFS3.
        constexpr std::array<std::uint32_t, 9> types{
            MSDOS_SUPER_MAGIC, 0x2011BAB0,       0x5346544E,       0x7366746E, FUSE_SUPER_MAGIC,
            SMB_SUPER_MAGIC,   CIFS_SUPER_MAGIC, SMB2_SUPER_MAGIC, V9FS_MAGIC};
        struct statfs found {};
        const int result = called([&] { return ::fstatfs(descriptor, &found); });
        if (result < 0) return result;
        const auto type = static_cast<std::uint32_t>(found.f_type);
        return std::ranges::find(types, type) != types.end() ? 1 : 0;
    }
    int descriptorLimit() override {
        struct rlimit limit {};
        if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return -errno;
        return static_cast<int>(std::min<rlim_t>(limit.rlim_cur, INT_MAX));
    }
    std::uint32_t effectiveUser() override { return ::geteuid(); }
    int leaseBreakTime() override {
        int seconds = 0;
        std::ifstream setting("/proc/sys/fs/lease-break-time");
        return setting >> seconds && seconds > 0 ? seconds : 45;  // the kernel's own choice
    }
    void pause(int milliseconds) override {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }

  private:
    static int readPastMemory(int file, bool isPast) {
        const int flags = called([&] { return ::fcntl(file, F_GETFL); });
        if (flags < 0) return flags;
        const int wanted = isPast ? flags | O_DIRECT : flags & ~O_DIRECT;
        return called([&] { return ::fcntl(file, F_SETFL, wanted); });
    }
    static int flagsOf(Links links) { return links == Links::follow ? 0 : O_NOFOLLOW; }

    static int look(int folder, const char* name, int flags, FileStatus& status) {
        struct statx found {};
        int result = called([&] { return ::statx(folder, name, flags, wantedStatus, &found); });
        if (result >= 0) {
            translate(found, status);
            return 0;
        }
        if (result != -ENOSYS && result != -EPERM) return result;
        struct stat plain {};
        result = called([&] { return ::fstatat(folder, name, &plain, flags); });
        if (result >= 0) translate(plain, status);
        return result;
    }

    alignas(dirent64) std::array<char, 65536> buffer_;
};

}  // namespace

std::unique_ptr<SystemCalls> makeSystemCalls() {
    // Its room for listings is as large as it is rarely used.
    return std::make_unique_for_overwrite<LinuxSystemCalls>();
}

}  // namespace dorvanel::platform
