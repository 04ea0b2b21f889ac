// SPDX-License-Identifier: MIT

// A file system for the tests: shows the folder BACKING at MOUNTPOINT through FUSE, with faults.
//
//   passthrough BACKING MOUNTPOINT [SWITCH...]
//
//   unlink-open       removes files that are open at once; without it they stay as .fuse_hidden...
//                     until they are closed, and keep their folder busy
//   numbers-by-path   inode numbers follow the path, so that a move changes them
//   numbers-of-now    inode numbers are given to what the kernel looks at and forgotten with it
//   numbers-at-random each look at a file shows another inode number
//   fail=CALL:N       the N-th and every later CALL fails with EIO; CALL is one of write, fsync,
//                     rename, unlink, rmdir, mkdir, readdir, open
//   slow-write=MS     each write takes so many milliseconds
//   drop-writes=NAME  writes to a file that had this name before it was renamed are lost in silence
//
// Says nothing and stays in the foreground until it is unmounted.

#define FUSE_USE_VERSION 35
#include <dirent.h>
#include <fcntl.h>
#include <fuse.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <thread>

namespace {

struct Switches {
    std::string backing;
    bool unlinkOpen = false;
    bool numbersByPath = false;
    bool numbersOfNow = false;
    bool numbersAtRandom = false;
    std::string failing;
    long failFrom = 0;
    long failCount = 0;
    long slowWrite = 0;
    std::string dropped;
    ino_t droppedFile = 0;
} switches;

std::string real(const char* path) {
    return switches.backing + path;
}

int result(int value) {
    return value < 0 ? -errno : value;
}

bool fails(const char* call) {
    return switches.failing == call && ++switches.failCount >= switches.failFrom;
}

void number(const char* path, struct stat& status) {
    static ino_t next = 1U << 20;
    if (switches.numbersAtRandom) status.st_ino = ++next;
    if (switches.numbersByPath) status.st_ino = std::hash<std::string>()(path) >> 1 | 1;
}

// What the kernel asks for, under the names that FUSE has for it.
namespace calls {

void* start(fuse_conn_info*, fuse_config* configuration) {
    configuration->use_ino = switches.numbersOfNow ? 0 : 1;
    configuration->hard_remove = switches.unlinkOpen ? 1 : 0;
    configuration->entry_timeout = 0;
    configuration->attr_timeout = 0;
    configuration->negative_timeout = 0;
    return nullptr;
}

int getattr(const char* path, struct stat* status, fuse_file_info*) {
    const int found = result(lstat(real(path).c_str(), status));
    if (found == 0) number(path, *status);
    return found;
}

int readlink(const char* path, char* text, size_t size) {
    const ssize_t length = ::readlink(real(path).c_str(), text, size - 1);
    if (length < 0) return -errno;
    text[length] = 0;
    return 0;
}

int mknod(const char* path, mode_t mode, dev_t device) {
    return result(::mknod(real(path).c_str(), mode, device));
}

int mkdir(const char* path, mode_t mode) {
    return fails("mkdir") ? -EIO : result(::mkdir(real(path).c_str(), mode));
}

int unlink(const char* path) {
    return fails("unlink") ? -EIO : result(::unlink(real(path).c_str()));
}

int rmdir(const char* path) {
    return fails("rmdir") ? -EIO : result(::rmdir(real(path).c_str()));
}

int symlink(const char* text, const char* path) {
    return result(::symlink(text, real(path).c_str()));
}

int rename(const char* from, const char* to, unsigned flags) {
    if (fails("rename")) return -EIO;
    const std::string name = std::string(from).substr(std::string(from).rfind('/') + 1);
    struct stat status {};
    if (name == switches.dropped && lstat(real(from).c_str(), &status) == 0) {
        switches.droppedFile = status.st_ino;
    }
    return result(renameat2(AT_FDCWD, real(from).c_str(), AT_FDCWD, real(to).c_str(), flags));
}

int link(const char* from, const char* to) {
    return result(::link(real(from).c_str(), real(to).c_str()));
}

int chmod(const char* path, mode_t mode, fuse_file_info*) {
    return result(::chmod(real(path).c_str(), mode));
}

int chown(const char* path, uid_t user, gid_t group, fuse_file_info*) {
    return result(::lchown(real(path).c_str(), user, group));
}

int truncate(const char* path, off_t size, fuse_file_info*) {
    return result(::truncate(real(path).c_str(), size));
}

int open(const char* path, fuse_file_info* file) {
    if (fails("open")) return -EIO;
    const int descriptor = ::open(real(path).c_str(), file->flags & ~O_NOFOLLOW);
    if (descriptor < 0) return -errno;
    file->fh = static_cast<std::uint64_t>(descriptor);
    return 0;
}

int create(const char* path, mode_t mode, fuse_file_info* file) {
    const int descriptor = ::open(real(path).c_str(), file->flags, mode);
    if (descriptor < 0) return -errno;
    file->fh = static_cast<std::uint64_t>(descriptor);
    return 0;
}

int read(const char*, char* bytes, size_t size, off_t offset, fuse_file_info* file) {
    return result(static_cast<int>(pread(static_cast<int>(file->fh), bytes, size, offset)));
}

int write(const char*, const char* bytes, size_t size, off_t offset, fuse_file_info* file) {
    if (fails("write")) return -EIO;
    struct stat status {};
    if (switches.droppedFile != 0 && fstat(static_cast<int>(file->fh), &status) == 0 &&
        status.st_ino == switches.droppedFile) {
        return static_cast<int>(size);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(switches.slowWrite));
    return result(static_cast<int>(pwrite(static_cast<int>(file->fh), bytes, size, offset)));
}

int statfs(const char* path, struct statvfs* status) {
    return result(statvfs(real(path).c_str(), status));
}

int release(const char*, fuse_file_info* file) {
    close(static_cast<int>(file->fh));
    return 0;
}

int fsync(const char*, int, fuse_file_info* file) {
    return fails("fsync") ? -EIO : result(::fsync(static_cast<int>(file->fh)));
}

int readdir(const char* path, void* buffer, fuse_fill_dir_t fill, off_t, fuse_file_info*,
            fuse_readdir_flags) {
    if (fails("readdir")) return -EIO;
    DIR* folder = opendir(real(path).c_str());
    if (folder == nullptr) return -errno;
    while (const dirent* entry = ::readdir(folder)) {
        struct stat status {};
        status.st_ino = entry->d_ino;
        status.st_mode = static_cast<mode_t>(entry->d_type) << 12;
        number((std::string(path) + "/" + entry->d_name).c_str(), status);
        if (fill(buffer, entry->d_name, &status, 0, fuse_fill_dir_flags(0)) != 0) break;
    }
    closedir(folder);
    return 0;
}

}  // namespace calls

bool take(const std::string& word) {
    const std::size_t equals = word.find('=');
    const std::string value = equals == std::string::npos ? "" : word.substr(equals + 1);
    if (word == "unlink-open") {
        switches.unlinkOpen = true;
    } else if (word == "numbers-by-path") {
        switches.numbersByPath = true;
    } else if (word == "numbers-of-now") {
        switches.numbersOfNow = true;
    } else if (word == "numbers-at-random") {
        switches.numbersAtRandom = true;
    } else if (word.starts_with("fail=") && value.find(':') != std::string::npos) {
        switches.failing = value.substr(0, value.find(':'));
        switches.failFrom = std::stol(value.substr(value.find(':') + 1));
    } else if (word.starts_with("slow-write=")) {
        switches.slowWrite = std::stol(value);
    } else if (word.starts_with("drop-writes=")) {
        switches.dropped = value;
    } else {
        std::fprintf(stderr, "passthrough: %s?\n", word.c_str());
        return false;
    }
    return true;
}

}  // namespace

int main(int count, char** words) {
    if (count < 3) return 2;
    switches.backing = words[1];
    for (int i = 3; i < count; ++i) {
        if (!take(words[i])) return 2;
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL);  // a test that crashes leaves nothing behind
    umask(0);
    fuse_operations operations{};
    operations.init = calls::start;
    operations.getattr = calls::getattr;
    operations.readlink = calls::readlink;
    operations.mknod = calls::mknod;
    operations.mkdir = calls::mkdir;
    operations.unlink = calls::unlink;
    operations.rmdir = calls::rmdir;
    operations.symlink = calls::symlink;
    operations.rename = calls::rename;
    operations.link = calls::link;
    operations.chmod = calls::chmod;
    operations.chown = calls::chown;
    operations.truncate = calls::truncate;
    operations.open = calls::open;
    operations.create = calls::create;
    operations.read = calls::read;
    operations.write = calls::write;
    operations.statfs = calls::statfs;
    operations.release = calls::release;
    operations.fsync = calls::fsync;
    operations.readdir = calls::readdir;
    // One thread, so that the switches need no lock.
    char foreground[] = "-f", single[] = "-s", option[] = "-o", options[] = "default_permissions";
    char* arguments[] = {words[0], foreground, single, option, options, words[2]};
    return fuse_main(6, arguments, &operations, nullptr);
}
