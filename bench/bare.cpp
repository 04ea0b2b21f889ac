// SPDX-License-Identifier: MIT

// The floor: the system calls that shredding costs, with nothing computed. A tree is measured,
// moved into a holding folder and renamed; each file is opened, written in place and past its end
// from one fixed buffer, and unlinked; one flush ends each batch before its files are closed.
// Files that live in memory are not flushed and are closed at once. To be kept in step with what
// the engine does (strace -c -f shows it).
//
// usage: bench_bare PASSES PATH...
#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <stdio.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr std::size_t blockSize = 131072;
constexpr std::size_t batchFiles = 512;
constexpr std::uint64_t batchBytes = 256ULL << 20;
constexpr std::size_t fewFiles = 4;  // up to here each file is flushed by itself

std::array<char, blockSize> buffer;
int passes = 1;

struct Entry {
    std::string name;
    bool isFolder;
};

[[noreturn]] void fail(const char* what) {
    std::perror(what);
    std::exit(1);
}

int openFolder(int parent, const char* name) {
    const int folder = openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0) fail(name);
    return folder;
}

std::vector<Entry> list(int folder) {
    std::vector<Entry> entries;
    DIR* stream = fdopendir(dup(folder));
    if (stream == nullptr) fail("fdopendir");
    rewinddir(stream);
    while (const dirent* entry = readdir(stream)) {
        if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0) continue;
        entries.push_back({entry->d_name, entry->d_type == DT_DIR});
    }
    closedir(stream);
    return entries;
}

std::uint64_t measure(int parent, const char* name) {
    struct stat status {};
    if (fstatat(parent, name, &status, 0) != 0) fail(name);
    if (!S_ISDIR(status.st_mode)) return static_cast<std::uint64_t>(status.st_size);
    std::uint64_t total = 0;
    const int folder = openFolder(parent, name);
    for (const Entry& entry : list(folder)) total += measure(folder, entry.name.c_str());
    close(folder);
    return total;
}

/// A name of the mean length of a random one, unlike all before it.
const char* nextName() {
    static unsigned count = 0;
    static std::array<char, 24> name;
    std::snprintf(name.data(), name.size(), "name%017u", ++count);
    return name.data();
}

void renameIn(int folder, const std::string& from) {
    if (renameat2(folder, from.c_str(), folder, nextName(), RENAME_NOREPLACE) != 0) fail("rename");
}

/// Renames what is below a folder: the files, or the folders with the deepest first.
void renameBelow(int folder, bool folders) {
    for (const Entry& entry : list(folder)) {
        if (entry.isFolder) {
            const int inner = openFolder(folder, entry.name.c_str());
            renameBelow(inner, folders);
            close(inner);
        }
        if (entry.isFolder == folders) renameIn(folder, entry.name);
    }
}

/// The files overwritten and removed whose contents are not on the medium yet.
class Batch {
  public:
    void add(int file, std::uint64_t bytes) {
        if (livesInMemory(file)) {
            close(file);
            return;
        }
        files_.push_back(file);
        bytes_ += bytes;
        if (files_.size() == batchFiles || bytes_ >= batchBytes) finish();
    }
    void finish() {
        if (files_.size() > fewFiles) {
            if (syncfs(files_.front()) != 0) fail("syncfs");
        } else {
            for (const int file : files_) {
                if (fdatasync(file) != 0) fail("fdatasync");
            }
        }
        for (const int file : files_) close(file);
        files_.clear();
        bytes_ = 0;
    }

  private:
    /// Asked once: everything handed over lies on one file system.
    static bool livesInMemory(int file) {
        static const bool inMemory = [file] {
            struct statfs system {};
            if (fstatfs(file, &system) != 0) fail("fstatfs");
            return system.f_type == TMPFS_MAGIC;
        }();
        return inMemory;
    }

    std::vector<int> files_;
    std::uint64_t bytes_ = 0;
};

void writeAll(int file, std::uint64_t size, off_t offset) {
    if (pwrite(file, buffer.data(), size, offset) != static_cast<ssize_t>(size)) fail("write");
}

void overwrite(int folder, const char* name, Batch& batch) {
    const int file = openat(folder, name, O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0) fail(name);
    struct stat status {};
    if (fstat(file, &status) != 0) fail(name);
    const auto size = static_cast<std::uint64_t>(status.st_size);
    std::uint64_t length = 0;
    for (std::uint64_t start = 0; start < size; start += length) {
        length = size - start < blockSize ? size - start : blockSize;
        for (int pass = 0; pass < passes; ++pass) {
            writeAll(file, length, static_cast<off_t>(start));
        }
    }
    for (int pass = 0; pass < passes && length > 0; ++pass) {
        writeAll(file, length, status.st_size);
    }
    if (unlinkat(folder, name, 0) != 0) fail(name);
    batch.add(file, size + length);
}

void removeBelow(int folder, Batch& batch) {
    for (const Entry& entry : list(folder)) {
        if (entry.isFolder) {
            const int inner = openFolder(folder, entry.name.c_str());
            fchmod(inner, 0777);
            removeBelow(inner, batch);
            close(inner);
            if (unlinkat(folder, entry.name.c_str(), AT_REMOVEDIR) != 0) fail("rmdir");
        } else {
            overwrite(folder, entry.name.c_str(), batch);
        }
    }
}

void shred(const std::string& path, Batch& batch) {
    const auto slash = path.rfind('/');
    const std::string parentPath = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const int parent = openFolder(AT_FDCWD, parentPath.c_str());
    measure(parent, name.c_str());

    static constexpr char holdingName[] = "bare items";
    if (mkdirat(parent, holdingName, 0777) != 0) fail(holdingName);
    const int holding = openFolder(parent, holdingName);
    if (renameat2(parent, name.c_str(), holding, name.c_str(), RENAME_NOREPLACE) != 0)
        fail(name.c_str());
    renameBelow(holding, false);
    renameBelow(holding, true);
    removeBelow(holding, batch);
    close(holding);
    if (unlinkat(parent, holdingName, AT_REMOVEDIR) != 0) fail(holdingName);
    close(parent);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3 || (passes = std::atoi(argv[1])) < 1) {
        std::fprintf(stderr, "usage: %s PASSES PATH...\n", argv[0]);
        return 2;
    }
    buffer.fill('x');
    Batch batch;
    for (int i = 2; i < argc; ++i) shred(argv[i], batch);
    batch.finish();
    return 0;
}
