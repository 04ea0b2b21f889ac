// SPDX-License-Identifier: MIT
#include "engine/DeletionHandler.h"

#include <cerrno>
#include <utility>

#include "engine/FolderRights.h"

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;

namespace {

constexpr std::uint32_t ownerMayReadAndWrite = 0600;
constexpr std::uint32_t ownerMayDoAll = 0700;

bool leadsNowhere(int result) {
    return result == -ENOENT || result == -ENOTDIR || result == -ELOOP;
}

}  // namespace

int DeletionHandler::enter(const TreeEntry& entry) {
    ++entries;
    const int folder = fileManagerWillProcessPath(entry);
    isStopped_ = stops();
    isDecided_ = folder < 0;
    if (!isStopped_) return folder;
    // Ended in mid-file: what was written is flushed, and the file keeps its name.
    parts_.batch.catchUp();
    if (std::exchange(written_.isHeld, false)) {
        account(entry, parts_.overwriter.writeHeld());
    }
    parts_.items.keepLastUnwritten(parts_.items.current(), pathOf(entry));
    keepWritten(entry);
    return folder;
}

bool DeletionHandler::stops() {
    if (std::exchange(isDecided_, false)) return isStopped_;
    return parts_.stop.load(std::memory_order_relaxed);
}

int DeletionHandler::fileManagerWillProcessPath(const TreeEntry& entry) {
    spared_ = false;
    written_ = {};
    if (entry.kind == EntryKind::folder) return openFolder(entry);
    overwriteEntry(entry);
    expected_ = nullptr;
    return -1;
}

void DeletionHandler::shredOneFile(const TreeEntry& entry) {
    overwriteEntry(entry);
    keepWritten(entry);
}

void DeletionHandler::keepWritten(const TreeEntry& entry) {
    if (written_.descriptor < 0) return;
    parts_.batch.keep(std::exchange(written_, {}), [&] { return pathOf(entry); });
}

void DeletionHandler::overwriteEntry(const TreeEntry& entry) {
    switch (entry.kind) {
        case EntryKind::link:
            if (links_ == Links::follow) overwriteTarget(entry);
            return;
        case EntryKind::regular:
        case EntryKind::unknown:  // opening tells what it is
            return overwritePlain(entry, Links::stay);
        default:
            return overwriteNothing(entry, entry.kind, Links::stay);
    }
}

void DeletionHandler::overwriteTarget(const TreeEntry& entry) {
    parts_.batch.catchUp();  // it may lead to what is about to go
    FileStatus target;
    const int result = parts_.system.statusAt(entry.folder, entry.name, Links::follow, target);
    if (leadsNowhere(result)) return;
    if (result >= 0 && parts_.targets.has(target)) {
        if (target.kind == EntryKind::regular) return overwritePlain(entry, Links::follow);
        return overwriteNothing(entry, target.kind, Links::follow);
    }
    if (result >= 0 && target.kind != EntryKind::regular) return;
    // A relative link leads elsewhere since it was moved; that is nobody's doing.
    std::string text;
    const bool isRead = parts_.system.readLink(entry.folder, entry.name, text) >= 0;
    if (isRead && !text.starts_with('/')) return;
    if (result < 0) return countNotOverwritten(entry, "look at", -result);
    countNotOverwritten(entry, "follow", ESTALE);
}

void DeletionHandler::overwritePlain(const TreeEntry& entry, Links links) {
    const int file = openWritable(entry, links);
    if (file >= 0) return overwriteOpen(file, entry);
    if (file == -ENOENT) return countVanished(entry);
    if (file == -EAGAIN) return spare(entry, "open", EAGAIN);
    FileStatus found;
    if (expected_ != nullptr &&
        parts_.system.statusAt(entry.folder, entry.name, Links::stay, found) >= 0 &&
        !isExpected(found)) {
        return;
    }
    countNotOverwritten(entry, "open", -file);
}

int DeletionHandler::openFolder(const TreeEntry& entry) {
    SystemCalls& system = parts_.system;
    int folder = parts_.batch.opened([&] { return system.openFolder(entry.folder, entry.name); });
    if (folder >= 0) return folder;
    if (folder == -EACCES) {
        // Not readable: make it so by a reference, which cannot be swapped for a link meanwhile.
        const int reference = parts_.batch.opened(
            [&] { return system.openReference(entry.folder, entry.name, Links::stay); });
        FileStatus found;
        if (reference >= 0) {
            if (system.status(reference, found) >= 0 && found.kind == EntryKind::folder &&
                !found.isBeyondMountOf(*entry.in) &&
                addOwnersBits(entry, reference, found, ownerMayDoAll)) {
                folder = parts_.batch.opened([&] { return system.openFolder(reference, "."); });
            }
            system.close(reference);
        }
    }
    if (folder == -ENOENT) {
        countVanished(entry);
    } else if (folder < 0) {
        parts_.batch.catchUp();
        parts_.outcome.note(pathOf(entry), "open", -folder);
    }
    return folder;
}

bool DeletionHandler::walksInto(const TreeEntry& entry, int folder, const FileStatus& found) {
    if (found.isBeyondMountOf(*entry.in)) {
        spare(entry, "remove", EBUSY, "is a mount point");
        return false;
    }
    if ((found.permissions & ownerMayDoAll) != ownerMayDoAll) {
        parts_.system.changeMode(folder, found.permissions | ownerMayDoAll);
    }
    return true;
}

int DeletionHandler::openWritable(const TreeEntry& entry, Links links) {
    const int file = openAfterLease(entry, links);
    return file == -EACCES ? openWithOwnersBits(entry, links, file) : file;
}

/// Opens the file; where another process holds a lease on it, once that is given up or taken away.
int DeletionHandler::openAfterLease(const TreeEntry& entry, Links links) {
    constexpr int pause = 20;  // milliseconds
    constexpr int margin = 5;  // seconds
    SystemCalls& system = parts_.system;
    const auto open = [&] {
        return parts_.batch.opened(
            [&] { return system.openFile(entry.folder, entry.name, links); });
    };
    int file = open();
    if (file != -EAGAIN) return file;
    parts_.overwriter.showProgressNow();
    for (int left = (system.leaseBreakTime() + margin) * 1000; left > 0; left -= pause) {
        if (stops()) break;
        system.pause(pause);
        file = open();
        if (file != -EAGAIN) break;
    }
    return file;
}

/// Gives the file its owner's bits, opens it, and takes them back where that did not help.
int DeletionHandler::openWithOwnersBits(const TreeEntry& entry, Links links, int denied) {
    SystemCalls& system = parts_.system;
    const int reference =
        parts_.batch.opened([&] { return system.openReference(entry.folder, entry.name, links); });
    if (reference < 0) return denied;
    FileStatus found;
    int file = denied;
    const bool isOurs = system.status(reference, found) >= 0 && found.kind == EntryKind::regular &&
                        (entry.kind == EntryKind::link ? parts_.targets.has(found)
                                                       : !found.isBeyondMountOf(*entry.in));
    if (isOurs && addOwnersBits(entry, reference, found, ownerMayReadAndWrite)) {
        file = openAfterLease(entry, links);
        FileStatus opened;
        if (file >= 0 && (system.status(file, opened) < 0 || !opened.isSameAs(found))) {
            system.close(file);
            file = -ESTALE;
        }
        if (file < 0) addOwnersBits(entry, reference, found, 0);
    }
    system.close(reference);
    return file;
}

/// Sets the permissions to those found and `bits`. Without /proc and on older kernels a reference
/// cannot do that: then by name, where nobody else could have put a link.
bool DeletionHandler::addOwnersBits(const TreeEntry& entry, int reference, const FileStatus& found,
                                    std::uint32_t bits) {
    const std::uint32_t permissions = found.permissions | bits;
    if (parts_.system.changeMode(reference, permissions) >= 0) return true;
    if (entry.kind == EntryKind::link || othersMayWrite(*entry.in)) return false;
    return parts_.system.changeModeAt(entry.folder, entry.name, permissions) >= 0;
}

/// Whether the file is the item that was looked at.
bool DeletionHandler::isExpected(const FileStatus& found) {
    if (expected_ == nullptr) return true;
    const bool isIt = isHeldItem(parts_.system, *expected_, found);
    expected_->item.reset();
    if (isIt) return true;
    foundAnother_ = true;
    spared_ = true;
    return false;
}

/// Whether an opened file is not to be written to, which is then told.
bool DeletionHandler::isNoneOfOurs(int file, const TreeEntry& entry, const FileStatus& found) {
    if (found.kind != EntryKind::regular) {
        // Swapped for something else between the look and the opening.
        countNotOverwritten(entry, "look at", ESTALE);
    } else if (entry.kind == EntryKind::link) {
        if (parts_.targets.has(found)) return false;
        countNotOverwritten(entry, "follow", ESTALE);
    } else if (found.isBeyondMountOf(*entry.in)) {
        spare(entry, "remove", EBUSY, "is a mount point");
    } else if (isExpected(found)) {
        return false;
    }
    parts_.system.close(file);
    return true;
}

void DeletionHandler::overwriteOpen(int file, const TreeEntry& entry) {
    FileStatus status;
    const int result = parts_.system.status(file, status);
    if (result < 0) {
        parts_.system.close(file);
        return countNotOverwritten(entry, "look at", -result);
    }
    if (isNoneOfOurs(file, entry, status)) return;
    if (entry.kind != EntryKind::link) parts_.targets.release(status);
    if (entry.kind == EntryKind::regular && othersMayWrite(*entry.in)) sharedFiles.add(status);
    written_ = {file, status};
    const FileOverwriter::Written written =
        parts_.overwriter.overwrite(file, status.size, entry.name, holderFor(entry));
    written_.bytes = written.bytes;
    written_.isHeld = written.isHeld;
    if (!written.isHeld) account(entry, written);
}

/// Who holds back what is written last to the file at hand, where nothing that comes before its
/// removal depends on that.
WriteHolder* DeletionHandler::holderFor(const TreeEntry& entry) {
    const FileStatus& status = written_.status;
    // One that grew under another name is told with the size that it had before.
    const bool mayWait = entry.kind == EntryKind::regular && status.links == 1 &&
                         parts_.grown.sizeBefore(status) == status.size &&
                         !othersMayWrite(*entry.in) && !walk_.isDeep();
    return mayWait ? parts_.batch.holderFor(written_) : nullptr;
}

/// Counts the file at hand, all of which was written or could not be.
void DeletionHandler::account(const TreeEntry& entry, const FileOverwriter::Written& written) {
    if (written.code != 0) return countNotOverwritten(entry, "write", written.code);
    if (stops()) return;
    const FileStatus& status = written_.status;
    const std::uint64_t size = parts_.grown.sizeBefore(status);
    ++parts_.outcome.filesOverwritten;
    parts_.outcome.bytesOverwritten += size;
    parts_.items.countOverwritten(size);
    written_.digest = written.digest;
    // Other people may see what other names and links lead to, by now overwritten.
    written_.opensToAll = status.links != 1 || entry.kind == EntryKind::link;
    FileStatus now;
    if (written_.opensToAll && parts_.system.status(written_.descriptor, now) >= 0) {
        parts_.grown.add(status, size, now.size);
    }
}

void DeletionHandler::overwriteNothing(const TreeEntry& entry, EntryKind kind, Links links) {
    // A FIFO or a device has no size, so not a byte would be written; opening it could wait for
    // somebody or wake a machine. It is taken in hand like an empty file, where it could be opened.
    if (kind != EntryKind::fifo && kind != EntryKind::device) return;
    SystemCalls& system = parts_.system;
    if (system.canReadAndWrite(entry.folder, entry.name) < 0) return;
    if (kind == EntryKind::device) {
        const int reference = parts_.batch.opened(
            [&] { return system.openReference(entry.folder, entry.name, links); });
        const bool canBeOpened = reference >= 0 && system.allowsDevices(reference) == 1;
        if (reference >= 0) system.close(reference);
        if (!canBeOpened) return;
    }
    parts_.overwriter.overwrite(-1, 0, entry.name);
}

void DeletionHandler::leave(const TreeEntry& entry) {
    if (spared_ && !walk_.walkedInto()) return;
    const DoomedName doomed{
        entry.folder,          entry.name, entry.kind, true, othersMayWrite(*entry.in),
        parts_.items.current()};
    parts_.batch.remove(doomed, std::exchange(written_, {}),
                        [this] { return place_ + walk_.folderSuffix(); });
}

void DeletionHandler::countNotOverwritten(const TreeEntry& entry, const char* operation, int code) {
    parts_.batch.catchUp();
    ++parts_.outcome.notOverwritten;
    parts_.outcome.note(pathOf(entry), operation, code);
    parts_.items.addUnwritten(parts_.items.current(), {pathOf(entry), operation, code},
                              {entry.folder, entry.name});
}

void DeletionHandler::countVanished(const TreeEntry& entry) {
    parts_.batch.catchUp();
    ++parts_.outcome.vanished;
    parts_.outcome.note(pathOf(entry), "find", ENOENT);
    parts_.items.addUnwritten(parts_.items.current(), {pathOf(entry), "find", ENOENT},
                              {entry.folder, entry.name, {entry.in->device, entry.inode}});
}

void DeletionHandler::spare(const TreeEntry& entry, const char* operation, int code,
                            std::string reason) {
    parts_.batch.catchUp();
    spared_ = true;
    ++parts_.outcome.notRemoved;
    parts_.outcome.note(pathOf(entry), operation, code, reason);
    parts_.items.addLeft(parts_.items.current(),
                         {pathOf(entry), operation, code, std::move(reason)},
                         {entry.folder, entry.name});
}

bool DeletionHandler::othersMayWrite(const FileStatus& folder) const {
    return othersMayWriteIn(folder, parts_.user);
}

void DeletionHandler::missed(const std::string& relativePath, int code) {
    parts_.batch.catchUp();
    parts_.outcome.note(relativePath.empty() ? place_ : place_ + "/" + relativePath, "list", code);
    // Another folder has its turn to be removed, or the whole item is told to be left.
    if (relativePath.empty()) {
        parts_.items.addLeft(parts_.items.current(), {place_, "list", code});
    }
}

std::string DeletionHandler::pathOf(const TreeEntry& entry) const {
    return place_ + "/" + walk_.relativePath(entry);
}

}  // namespace dorvanel
