// SPDX-License-Identifier: MIT
#include "engine/NameRemover.h"

#include <cerrno>
#include <utility>

namespace dorvanel {

using platform::EntryKind;

namespace {

const char* reasonOf(int code) {
    return code == 0 ? "read back otherwise" : "";
}

}  // namespace

void NameRemover::remove(const DoomedName& doomed, const Path& path) {
    const bool isFolder = doomed.kind == EntryKind::folder;
    const int result = isFolder ? system_.removeFolder(doomed.folder, doomed.name)
                                : system_.removeFile(doomed.folder, doomed.name);
    if (result < 0) {
        fileManagerShouldProceedAfterError(doomed, -result, path);
    } else {
        count(doomed, isFolder);
    }
}

void NameRemover::countGone(const DoomedName& doomed) {
    count(doomed, doomed.kind == EntryKind::folder);
}

void NameRemover::countOverwritten(std::uint64_t bytes) {
    ++outcome_.filesOverwritten;
    outcome_.bytesOverwritten += bytes;
    items_.countOverwritten(bytes);
}

void NameRemover::tellUnwritten(const DoomedName& doomed, int code, const Path& path) {
    ++outcome_.notOverwritten;
    outcome_.note(path(), "write", code);
    items_.addUnwritten(doomed.item, {path(), "write", code}, {doomed.folder, doomed.name});
}

bool NameRemover::fileManagerShouldProceedAfterError(const DoomedName& doomed, int code,
                                                     const Path& path) {
    // What was a folder and is none by now was never overwritten: such a name stays.
    const int asFolder = system_.removeFolder(doomed.folder, doomed.name);
    const int asFile = doomed.kind == EntryKind::folder
                           ? asFolder
                           : system_.removeFile(doomed.folder, doomed.name);
    if (asFolder >= 0 || asFile >= 0) {
        count(doomed, asFolder >= 0);
        return true;
    }
    if (asFile == -ENOENT) return true;  // somebody else removed it
    ++outcome_.notRemoved;
    // A folder that is not empty only repeats what was said of its contents.
    if (code != ENOTEMPTY || outcome_.notRemoved == 1) outcome_.note(path(), "remove", code);
    tellLeft(doomed, {path(), "remove", code});
    return true;
}

void NameRemover::leave(const DoomedName& doomed, const char* operation, int code,
                        const Path& path) {
    ++outcome_.notRemoved;
    outcome_.note(path(), operation, code);
    tellLeft(doomed, {path(), operation, code});
}

void NameRemover::leaveUnverified(const DoomedName& doomed, int code, const Path& path) {
    ++outcome_.notRemoved;
    tellUnverified(code, path());
    const ItemOutcome::Trouble trouble{path(), "verify", code, reasonOf(code)};
    items_.addUnverified(doomed.item, trouble, {doomed.folder, doomed.name});
    tellLeft(doomed, trouble);
}

void NameRemover::tellUnverified(int code, std::string path) {
    ++outcome_.notVerified;
    outcome_.note(std::move(path), "verify", code, reasonOf(code));
}

/// Tells the item. A folder that stays for what is in it is told of only where that is not.
void NameRemover::tellLeft(const DoomedName& doomed, ItemOutcome::Trouble trouble) {
    // In a holding folder there are those of several items.
    const std::uint32_t owner = doomed.isCounted ? doomed.item : ItemOutcomes::none;
    if (trouble.code == ENOTEMPTY && items_.tellsOfLeftIn(owner, trouble.path)) return;
    if (doomed.isCounted) {
        items_.addLeft(doomed.item, std::move(trouble), {doomed.folder, doomed.name});
    } else {
        items_.addLeft(doomed.item, std::move(trouble));
    }
}

void NameRemover::count(const DoomedName& doomed, bool isFolder) {
    if (!doomed.isCounted) return;
    ++(isFolder ? outcome_.foldersRemoved : outcome_.filesRemoved);
    items_.countRemoved(doomed.item);
}

}  // namespace dorvanel
