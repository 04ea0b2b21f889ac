// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/FolderListing.h"

namespace dorvanel::platform {

/// What the shredding engine asks about a file.
struct FileStatus {
    std::uint64_t size = 0;  ///< bytes
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t links = 0;        ///< names that it has
    std::uint64_t mount = 0;        ///< number of the mount that it was reached by; 0 if not told
    std::int64_t born = 0;          ///< nanoseconds since 1970; 0 where the file system has none
    std::uint32_t owner = 0;        ///< user number
    std::uint32_t permissions = 0;  ///< the lower twelve mode bits
    EntryKind kind = EntryKind::unknown;

    /// Whether both describe one and the same file or folder. An inode number may be given again
    /// once a file is gone: only while one of the two is held open is the answer certain; else the
    /// time of its birth helps where it is known.
    [[nodiscard]] bool isSameAs(const FileStatus& other) const {
        return device == other.device && inode == other.inode &&
               (born == other.born || born == 0 || other.born == 0);
    }
    /// Whether a mount lies between the two, of which one was reached from the other. A bind mount
    /// of the same file system is one; where mounts are not told, only another device is.
    [[nodiscard]] bool isBeyondMountOf(const FileStatus& other) const {
        return mount != 0 && other.mount != 0 ? mount != other.mount : device != other.device;
    }
};

/// The disk as the shredding engine sees it: one operation per system call, relative to open folder
/// descriptors, so that a tree of any depth can be walked and no path is looked up twice. Every
/// operation returns a value of 0 or more, or a negated errno; a call that a signal interrupts is
/// made again, so nothing returns -EINTR but `close`. The caller closes what it opened.
/// One thread at a time; see `isForTwoThreads`.
class SystemCalls {
  public:
    /// Stands for the working folder where a folder descriptor is asked for.
    static constexpr int workingFolder = -100;

    enum class Links { stay, follow };

    virtual ~SystemCalls() = default;

    /// Opens a file for overwriting in place: never truncated, never waited for (a FIFO without a
    /// reader, a terminal), never made the controlling terminal. -EAGAIN where another process
    /// holds a lease on it, which it is now asked to give up.
    virtual int openFile(int folder, const char* name, Links links) = 0;
    /// Opens a folder for listing; a link is refused. "." opens what a reference names.
    virtual int openFolder(int folder, const char* name) = 0;
    /// A descriptor that only names the entry: nothing is opened, no permission on it is needed.
    virtual int openReference(int folder, const char* name, Links links) = 0;
    virtual int close(int descriptor) = 0;

    virtual int status(int descriptor, FileStatus& status) = 0;
    virtual int statusAt(int folder, const char* name, Links links, FileStatus& status) = 0;
    /// 0 where the caller may read and write the entry, links followed.
    virtual int canReadAndWrite(int folder, const char* name) = 0;
    /// Sets the permission bits of an open file, folder or reference. Of a reference, needs a
    /// kernel of 6.6 or /proc.
    virtual int changeMode(int descriptor, std::uint32_t permissions) = 0;
    /// The same by name. Follows links: only for a folder in which nobody else can put one.
    virtual int changeModeAt(int folder, const char* name, std::uint32_t permissions) = 0;
    /// What the link says, as it is stored.
    virtual int readLink(int folder, const char* name, std::string& text) = 0;
    /// 1 where device nodes of this file's or reference's mount can be opened, else 0.
    virtual int allowsDevices(int descriptor) = 0;

    /// Reads the whole of a freshly opened folder into `listing`, in the file system's own order.
    virtual int readFolder(int folder, FolderListing& listing) = 0;
    /// The umask takes from the permissions.
    virtual int makeFolder(int folder, const char* name, std::uint32_t permissions) = 0;
    /// Renames; -EEXIST where the new name is taken: nothing is ever replaced.
    virtual int rename(int fromFolder, const char* from, int toFolder, const char* to) = 0;
    virtual int removeFile(int folder, const char* name) = 0;
    virtual int removeFolder(int folder, const char* name) = 0;

    /// Bytes written at `offset`, possibly fewer than `size`.
    virtual std::ptrdiff_t writeAt(int file, const void* data, std::size_t size,
                                   std::uint64_t offset) = 0;
    /// What the address of a read's bytes, their number and their offset are multiples of.
    static constexpr std::size_t readAlignment = 4096;
    /// Bytes read at `offset`, possibly fewer than `size`; 0 at the end of the file.
    virtual std::ptrdiff_t readAt(int file, void* data, std::size_t size, std::uint64_t offset) = 0;
    /// Has later reads by this descriptor come from the medium: what memory keeps of the file, all
    /// of it flushed before, is dropped, and the reads go past that memory where the file system
    /// can. Certain is only the latter; where it cannot, pages that some other program uses stay,
    /// and answer. What the device keeps in a memory of its own is out of reach. The descriptor is
    /// for reading and closing from then on.
    virtual int forgetCached(int file) = 0;
    /// Has the system begin to bring what was written there to the medium, if it can. What goes
    /// wrong with that a later flush tells.
    virtual void startWriteBack(int /*file*/, std::uint64_t /*offset*/, std::uint64_t /*size*/) {}
    /// Whether a second thread may write, close, rename and remove meanwhile.
    [[nodiscard]] virtual bool isForTwoThreads() const { return false; }
    /// Brings the file's contents to the medium.
    virtual int flushFile(int file) = 0;
    /// Brings everything on the file's file system to the medium.
    virtual int flushFileSystem(int file) = 0;
    /// 1 where the file's file system lives in memory and has no medium, else 0.
    virtual int livesInMemory(int file) = 0;
    /// 1 where the mount of this file or reference may give all files one owner and one set of
    /// permission bits, as for FAT, or leave both to some other machine or program; else 0.
    virtual int keepsNoOwners(int descriptor) = 0;
    /// How many descriptors the process may have open: they are numbered from 0, lowest first.
    virtual int descriptorLimit() = 0;
    /// The user that the process acts as.
    virtual std::uint32_t effectiveUser() = 0;

    /// Seconds after which the system takes a lease from a holder that does not give it up.
    virtual int leaseBreakTime() = 0;
    /// Waits.
    virtual void pause(int milliseconds) = 0;
};

/// The real ones.
std::unique_ptr<SystemCalls> makeSystemCalls();

}  // namespace dorvanel::platform
