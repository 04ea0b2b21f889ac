#include "engine/TreeVisitors.h"

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;
using Links = platform::SystemCalls::Links;

int PlainVisitor::enter(const TreeEntry& entry) {
    if (entry.kind != EntryKind::folder) return -1;
    return batch_.opened([&] { return system_.openFolder(entry.folder, entry.name); });
}

bool PlainVisitor::leadsToFolder(const TreeEntry& entry) {
    if (entry.kind != EntryKind::link) return entry.kind == EntryKind::folder;
    FileStatus target;
    return system_.statusAt(entry.folder, entry.name, Links::follow, target) >= 0 &&
           target.kind == EntryKind::folder;
}

int SizeVisitor::enter(const TreeEntry& entry) {
    if (entry.kind != EntryKind::folder) {
        FileStatus file;
        if (system_.statusAt(entry.folder, entry.name, Links::follow, file) >= 0) {
            if (entry.kind == EntryKind::link) targets_.add(file);
            if (file.kind != EntryKind::folder) total += file.size;
        }
    }
    return PlainVisitor::enter(entry);
}

int FileRenamer::enter(const TreeEntry& entry) {
    name_.randomizeName();
    if (!leadsToFolder(entry)) {
        // A failure, or a name that is taken, leaves the entry its name: it is removed all the
        // same.
        system_.rename(entry.folder, entry.name, entry.folder, name_.mName.data());
    }
    return PlainVisitor::enter(entry);
}

void FolderRenamer::leave(const TreeEntry& entry) {
    name_.randomizeName();
    if (leadsToFolder(entry)) {
        system_.rename(entry.folder, entry.name, entry.folder, name_.mName.data());
    }
}

}  // namespace dorvanel
