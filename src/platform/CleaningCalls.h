// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/FolderListing.h"

namespace dorvanel::platform {

/// What the cleaning of files asks about one.
struct CleaningStatus {
    std::uint64_t size = 0;  ///< bytes
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t links = 0;        ///< names that it has
    std::int64_t modified = 0;      ///< nanoseconds since 1970
    std::int64_t changed = 0;       ///< the same, of its status too
    std::uint32_t owner = 0;        ///< user number
    std::uint32_t group = 0;        ///< group number
    std::uint32_t permissions = 0;  ///< the lower twelve mode bits
    EntryKind kind = EntryKind::unknown;

    /// Whether both describe one and the same file, of which one description is of an open one.
    [[nodiscard]] bool isSameAs(const CleaningStatus& other) const {
        return device == other.device && inode == other.inode;
    }
};

/// The disk as the cleaning of files sees it: one operation per system call, relative to an open
/// folder. Every operation returns a value of 0 or more, or a negated errno; a call that a signal
/// interrupts is made again. No operation follows a link in a name. The caller closes what it
/// opened. Any thread; a descriptor is used by one at a time.
class CleaningCalls {
  public:
    virtual ~CleaningCalls() = default;

    /// A folder for listing and flushing; links in the path are followed.
    virtual int openFolder(const char* path) = 0;
    /// Both never wait for a FIFO, and leave the time of the last access as it is where they may.
    virtual int openForReading(int folder, const char* name) = 0;
    virtual int openForChanging(int folder, const char* name) = 0;
    /// A new file that only its owner may read or write; -EEXIST where the name is taken.
    virtual int createFile(int folder, const char* name) = 0;
    virtual int close(int descriptor) = 0;

    virtual int status(int descriptor, CleaningStatus& status) = 0;
    virtual int statusAt(int folder, const char* name, CleaningStatus& status) = 0;
    virtual int changeGroup(int file, std::uint32_t group) = 0;
    virtual int changeMode(int file, std::uint32_t permissions) = 0;
    /// The entries of a freshly opened folder.
    virtual int readFolder(int folder, std::vector<std::string>& names) = 0;

    /// Bytes read or written at `offset`, possibly fewer than `size`; 0 read at the end.
    virtual std::ptrdiff_t readAt(int file, void* data, std::size_t size, std::uint64_t offset) = 0;
    virtual std::ptrdiff_t writeAt(int file, const void* data, std::size_t size,
                                   std::uint64_t offset) = 0;
    virtual int truncate(int file, std::uint64_t size) = 0;
    /// Brings what is in the file, and its length, to the medium; of a folder, its names.
    virtual int flush(int descriptor) = 0;

    /// Keeps every other process, and every other opening of the file in this one, from locks on
    /// these bytes until the file is closed; -EAGAIN where there are such locks.
    virtual int lock(int file, std::uint64_t offset, std::uint64_t size) = 0;

    /// -EEXIST where `to` is taken: nothing is ever replaced.
    virtual int rename(int folder, const char* from, const char* to) = 0;
    /// Both names are taken, and change what they lead to in one step.
    virtual int exchange(int folder, const char* one, const char* other) = 0;
    virtual int removeFile(int folder, const char* name) = 0;

    /// Bytes that nobody can guess.
    virtual int randomBytes(void* data, std::size_t size) = 0;
    /// The user that the process acts as.
    virtual std::uint32_t effectiveUser() = 0;
};

/// The real ones.
std::unique_ptr<CleaningCalls> makeCleaningCalls();

}  // namespace dorvanel::platform
