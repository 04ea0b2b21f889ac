#include "engine/DeletionHandler.h"

#include <cerrno>

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;

namespace {

constexpr std::uint32_t everybody = 0777;

}  // namespace

int DeletionHandler::fileManagerWillProcessPath(const TreeEntry& entry) {
    if (entry.kind == EntryKind::folder) return openFolder(entry);
    shredOneFile(entry);
    return -1;
}

void DeletionHandler::shredOneFile(const TreeEntry& entry) {
    atHand_.reset();
    EntryKind kind = entry.kind;
    Links links = Links::stay;
    if (kind == EntryKind::link) {
        FileStatus target;
        const int result = parts_.system.statusAt(entry.folder, entry.name, Links::follow, target);
        if (result < 0) {
            const bool leadsNowhere = result == -ENOENT || result == -ENOTDIR || result == -ELOOP;
            if (!leadsNowhere) countNotOverwritten(entry, "look at", -result);
            return;
        }
        if (!parts_.targets.has(target)) {
            if (target.kind == EntryKind::regular) countNotOverwritten(entry, "follow", ESTALE);
            return;
        }
        kind = target.kind;
        links = Links::follow;
    }
    // What could not be looked at is tried: opening tells what it is.
    if (kind == EntryKind::regular || kind == EntryKind::unknown) {
        const int file = openWritable(entry, links);
        if (file >= 0) {
            overwriteOpen(file, entry);
        } else if (file != -ENOENT) {
            countNotOverwritten(entry, "open", -file);
        }
        return;
    }
    makeWritable(entry, links);
    if (kind != EntryKind::folder) overwriteNothing(entry, kind);
}

int DeletionHandler::openFolder(const TreeEntry& entry) {
    SystemCalls& system = parts_.system;
    int folder = parts_.batch.opened([&] { return system.openFolder(entry.folder, entry.name); });
    if (folder >= 0) {
        system.changeMode(folder, everybody);
        return folder;
    }
    // Not readable: make it so by a reference, which cannot be swapped for a link meanwhile.
    atHand_.reset();
    const int reference = openOurs(entry, Links::stay);
    if (reference >= 0) {
        system.changeMode(reference, everybody);
        folder = parts_.batch.opened([&] { return system.openFolder(reference, "."); });
        system.close(reference);
    }
    if (folder < 0 && folder != -ENOENT) parts_.outcome.note(pathOf(entry), "open", -folder);
    return folder;
}

int DeletionHandler::openWritable(const TreeEntry& entry, Links links) {
    SystemCalls& system = parts_.system;
    int file =
        parts_.batch.opened([&] { return system.openFile(entry.folder, entry.name, links); });
    if (file >= 0) return file;
    const int reference = openOurs(entry, links);
    if (reference < 0) return file;
    system.changeMode(reference, everybody);
    file = parts_.batch.opened([&] { return system.openFile(entry.folder, entry.name, links); });
    system.close(reference);
    return file;
}

/// A reference to the entry, or to what it leads to; negative where that is not what was found
/// there before.
int DeletionHandler::openOurs(const TreeEntry& entry, Links links) {
    SystemCalls& system = parts_.system;
    const int reference =
        parts_.batch.opened([&] { return system.openReference(entry.folder, entry.name, links); });
    if (reference < 0) return reference;
    FileStatus found;
    const int result = system.status(reference, found);
    if (result >= 0 && isOurs(entry, found)) return reference;
    system.close(reference);
    return result < 0 ? result : -ESTALE;
}

bool DeletionHandler::isOurs(const TreeEntry& entry, const FileStatus& found) const {
    if (entry.kind == EntryKind::link) return parts_.targets.has(found);
    if (atHand_) return found.isSameAs(*atHand_);
    return entry.kind == EntryKind::unknown ? found.kind != EntryKind::link
                                            : found.kind == entry.kind;
}

void DeletionHandler::makeWritable(const TreeEntry& entry, Links links) {
    const int reference = openOurs(entry, links);
    if (reference < 0) return;
    parts_.system.changeMode(reference, everybody);
    parts_.system.close(reference);
}

void DeletionHandler::overwriteOpen(int file, const TreeEntry& entry) {
    FileStatus status;
    const int result = parts_.system.status(file, status);
    if (result < 0 || status.kind != EntryKind::regular) {
        // Swapped for something else between the look and the opening: not ours to write to.
        parts_.system.close(file);
        countNotOverwritten(entry, "look at", result < 0 ? -result : ESTALE);
        return;
    }
    if (entry.kind != EntryKind::link) {
        atHand_ = status;
    } else if (!parts_.targets.has(status)) {
        parts_.system.close(file);
        countNotOverwritten(entry, "follow", ESTALE);
        return;
    }
    // The bits of a file about to lose its only name are nobody's to see; if it cannot be removed
    // it gets them then.
    if (status.links != 1 || entry.kind == EntryKind::link) {
        parts_.system.changeMode(file, everybody);
    }
    const FileOverwriter::Written written =
        parts_.overwriter.overwrite(file, status.size, entry.name);
    if (written.code != 0) {
        countNotOverwritten(entry, "write", written.code);
    } else if (!stops()) {
        ++parts_.outcome.filesOverwritten;
        parts_.outcome.bytesOverwritten += status.size;
    }
    if (written.bytes > 0) {
        parts_.batch.add(file, status.device, written.bytes);
    } else {
        parts_.system.close(file);
    }
}

void DeletionHandler::overwriteNothing(const TreeEntry& entry, EntryKind kind) {
    // A FIFO or a device has no size, so not a byte would be written; opening it could wait for
    // somebody or wake a machine. It is taken in hand like an empty file, where it could be opened.
    if (kind == EntryKind::socket) return;
    if (parts_.system.canReadAndWrite(entry.folder, entry.name) < 0) return;
    parts_.overwriter.overwrite(-1, 0, entry.name);
}

void DeletionHandler::leave(const TreeEntry& entry) {
    if (entry.kind == EntryKind::folder) {
        const FileStatus* folder = walk_.walkedFolder();
        atHand_ = folder == nullptr ? std::nullopt : std::optional(*folder);
    }
    remove(entry);
}

void DeletionHandler::leaveHolding(const TreeEntry& entry, int holding) {
    FileStatus status;
    atHand_.reset();
    if (parts_.system.status(holding, status) >= 0) atHand_ = status;
    remove(entry);
}

void DeletionHandler::remove(const TreeEntry& entry) {
    const bool isFolder = entry.kind == EntryKind::folder;
    const int result = isFolder ? parts_.system.removeFolder(entry.folder, entry.name)
                                : parts_.system.removeFile(entry.folder, entry.name);
    if (result < 0) {
        fileManagerShouldProceedAfterError(entry, -result);
    } else {
        countRemoved(entry, isFolder);
    }
}

void DeletionHandler::countNotOverwritten(const TreeEntry& entry, const char* operation, int code) {
    ++parts_.outcome.notOverwritten;
    parts_.outcome.note(pathOf(entry), operation, code);
}

void DeletionHandler::countRemoved(const TreeEntry& entry, bool isFolder) {
    if (entry.name == uncounted_) return;
    ++(isFolder ? parts_.outcome.foldersRemoved : parts_.outcome.filesRemoved);
}

bool DeletionHandler::fileManagerShouldProceedAfterError(const TreeEntry& entry, int code) {
    makeWritable(entry, entry.kind == EntryKind::link ? Links::follow : Links::stay);
    const int asFolder = parts_.system.removeFolder(entry.folder, entry.name);
    const int asFile = parts_.system.removeFile(entry.folder, entry.name);
    if (asFolder >= 0 || asFile >= 0) {
        countRemoved(entry, asFolder >= 0);
        return true;
    }
    if (asFile == -ENOENT) return true;  // somebody else removed it
    ++parts_.outcome.notRemoved;
    // A folder that is not empty only repeats what was said of its contents.
    if (code != ENOTEMPTY || parts_.outcome.notRemoved == 1) {
        parts_.outcome.note(pathOf(entry), "remove", code);
    }
    return true;
}

void DeletionHandler::missed(const std::string& relativePath, int code) {
    parts_.outcome.note(relativePath.empty() ? place_ : place_ + "/" + relativePath, "list", code);
}

std::string DeletionHandler::pathOf(const TreeEntry& entry) const {
    return entry.name == uncounted_ ? place_ : place_ + "/" + walk_.relativePath(entry);
}

}  // namespace dorvanel
