// SPDX-License-Identifier: MIT
#include "engine/NameRemover.h"

#include <cerrno>

namespace dorvanel {

using platform::EntryKind;

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
    return true;
}

void NameRemover::leave(const char* operation, int code, const Path& path) {
    ++outcome_.notRemoved;
    outcome_.note(path(), operation, code);
}

void NameRemover::count(const DoomedName& doomed, bool isFolder) {
    if (!doomed.isCounted) return;
    ++(isFolder ? outcome_.foldersRemoved : outcome_.filesRemoved);
}

}  // namespace dorvanel
