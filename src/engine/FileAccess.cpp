#include "engine/FileAccess.h"

#include <fmt/format.h>

#include <cerrno>
#include <optional>
#include <utility>

#include "engine/DeletionHandler.h"
#include "engine/ItemPath.h"
#include "engine/TreeVisitors.h"
#include "platform/FileManager.h"

namespace dorvanel {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;
using Links = platform::SystemCalls::Links;

FileAccess::FileAccess(EngineServices services, const PreferenceReader& preferencesInstance,
                       platform::ProgressIndicator& shreddingProgress,
                       platform::TextField& fileName)
    : services_(services),
      progress_(shreddingProgress, fileName, services.clock),
      overwriter_(services.system, services.draws, preferencesInstance, progress_, stop_),
      batch_(services.system, [this] { progress_.flush(); }),
      walk_(services.system) {}

void FileAccess::shredDroppedFile(std::vector<std::string>& paths) {
    progress_.showNow(0.0);
    overwriter_.mDeepShreddedSize = 0;
    overwriter_.mDeepPathSize = 0;
    outcome_ = {};
    targets_.clear();
    const std::uint64_t formerFailures = batch_.failures();

    // Each item is taken from the folder where it was measured: by its path alone, another folder
    // under that path would do.
    std::vector<FileStatus> parents(paths.size());
    for (std::size_t i = 0; i < paths.size(); ++i) {
        parents[i] = parentOf(paths[i]);
        if (exists(paths[i])) overwriter_.mDeepPathSize += sizeInBytes(paths[i]);
    }
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (!exists(paths[i])) {
            passOver(paths[i]);
        } else if (stopRequested()) {
            outcome_.left.push_back(paths[i]);
        } else {
            shredItem(paths[i], parents[i]);
        }
    }
    paths.clear();

    batch_.flush();
    outcome_.notFlushed = batch_.failures() - formerFailures;
    if (outcome_.notFlushed > 0) outcome_.note({}, "flush", batch_.failureCode());
    outcome_.stopped = stopRequested();
    progress_.showNow(0.0);
    progress_.showNow(std::string_view());
}

void FileAccess::openDoc(platform::OpenPanel& panel,
                         const std::function<void(std::vector<std::string>)>& shred) {
    panel.setAllowsMultipleSelection(true);
    std::optional<std::vector<std::string>> picked =
        panel.runModalForDirectory(platform::homeDirectory());
    if (picked) shred(std::move(*picked));
}

void FileAccess::shredOneFile(const std::string& path) {
    const ItemPath item(path);
    const int parent = services_.system.openReference(SystemCalls::workingFolder,
                                                      item.folder.c_str(), Links::follow);
    if (parent < 0) return;
    TreeEntry entry{parent, item.name.c_str(), EntryKind::unknown};
    FileStatus status;
    if (services_.system.statusAt(parent, entry.name, Links::stay, status) >= 0 &&
        status.kind != EntryKind::folder) {
        entry.kind = status.kind;
        if (services_.system.statusAt(parent, entry.name, Links::follow, status) >= 0) {
            targets_.add(status);
        }
        DeletionHandler(deletionParts(), walk_, item.folder).shredOneFile(entry);
        batch_.flush();
    }
    services_.system.close(parent);
}

std::uint64_t FileAccess::sizeInBytes(const std::string& path) {
    FileStatus status;
    if (services_.system.statusAt(SystemCalls::workingFolder, path.c_str(), Links::follow, status) <
        0) {
        return 0;
    }
    targets_.add(status);  // the item may be a link itself
    if (status.kind != EntryKind::folder) return status.size;
    const int folder = services_.system.openFolder(SystemCalls::workingFolder, path.c_str());
    if (folder < 0) return 0;  // not readable, or a link: what it leads to is not shredded
    SizeVisitor visitor(services_.system, batch_, stop_, targets_);
    walk_.walk(folder, TreeWalk::Order::forward, visitor);
    return visitor.total;
}

std::string FileAccess::moveAndRename(const std::string& path) {
    const Holding holding = moveIntoHolding(path, nullptr);
    close(holding);
    return holding.path();
}

int FileAccess::safePlaceInPath(const std::string&) const {
    return 0;
}
int FileAccess::safePlaceBelowPath(const std::string&) const {
    return 0;
}

bool FileAccess::exists(const std::string& path) const {
    FileStatus status;
    return services_.system.statusAt(SystemCalls::workingFolder, path.c_str(), Links::follow,
                                     status) >= 0;
}

void FileAccess::passOver(const std::string& path) {
    FileStatus status;
    const int result =
        services_.system.statusAt(SystemCalls::workingFolder, path.c_str(), Links::stay, status);
    if (result == -ENOENT || result == -ENOTDIR) return;
    // A link to nothing, or a thing that cannot be looked at: it stays.
    ++outcome_.notRemoved;
    outcome_.note(path, "look at", result < 0 ? -result : ENOENT);
}

FileStatus FileAccess::parentOf(const std::string& path) const {
    FileStatus status;  // of no folder, where there is none
    services_.system.statusAt(SystemCalls::workingFolder, ItemPath(path).folder.c_str(),
                              Links::follow, status);
    return status;
}

void FileAccess::shredItem(const std::string& path, const FileStatus& parent) {
    ++outcome_.items;
    const Holding holding = moveIntoHolding(path, &parent);
    if (holding.parent < 0) return;
    removeHolding(holding);
    FileStatus status;
    if (stopRequested() &&
        services_.system.statusAt(holding.parent, holding.name.c_str(), Links::stay, status) >= 0) {
        outcome_.left.push_back(holding.path());
    }
    close(holding);
}

FileAccess::Holding FileAccess::moveIntoHolding(const std::string& path, const FileStatus* parent) {
    const ItemPath item(path);
    Holding holding;
    holding.folder = item.folder;
    holding.name = fmt::format("Dorvanel X Items ({})", services_.clock.time());
    int result = openParent(holding, parent);
    if (result >= 0) result = makeHoldingAndMove(holding, item.name);
    if (result < 0 && (result != -ENOENT || exists(path))) {
        ++outcome_.notRemoved;
        outcome_.note(path, "move", -result);
    }
    if (holding.parent >= 0) renameContents(holding);
    return holding;
}

/// Opens the folder that holds the item, which must be `parent` where that is given.
int FileAccess::openParent(Holding& holding, const FileStatus* parent) {
    SystemCalls& system = services_.system;
    const int folder = batch_.opened([&] {
        return system.openReference(SystemCalls::workingFolder, holding.folder.c_str(),
                                    Links::follow);
    });
    if (folder < 0) return folder;
    FileStatus found;
    const int result = parent == nullptr ? 0 : system.status(folder, found);
    if (result >= 0 && (parent == nullptr || found.isSameAs(*parent))) {
        holding.parent = folder;
        return 0;
    }
    system.close(folder);
    return result < 0 ? result : -ESTALE;
}

int FileAccess::makeHoldingAndMove(Holding& holding, const std::string& item) {
    SystemCalls& system = services_.system;
    const bool isItself = item == holding.name;  // left by a run that ended in this very second
    const int made = isItself ? 0 : system.makeFolder(holding.parent, holding.name.c_str());
    if (made < 0 && made != -EEXIST) return made;
    holding.wasThere = isItself || made < 0;
    holding.opened =
        batch_.opened([&] { return system.openFolder(holding.parent, holding.name.c_str()); });
    if (isItself) return 0;
    return holding.opened < 0 ? holding.opened : move(holding, item);
}

int FileAccess::move(const Holding& holding, const std::string& item) {
    SystemCalls& system = services_.system;
    const auto rename = [&] {
        return system.rename(holding.parent, item.c_str(), holding.opened, item.c_str());
    };
    const int moved = rename();
    if (moved != -EACCES) return moved;
    // A folder that its owner may not write cannot change its parent: make it writable, its own
    // bits only, and try once more.
    const int reference = system.openReference(holding.parent, item.c_str(), Links::stay);
    if (reference < 0) return moved;
    FileStatus status;
    const bool isFolder = system.status(reference, status) >= 0 && status.kind == EntryKind::folder;
    const int changed = isFolder ? system.changeMode(reference, status.permissions | 0700) : moved;
    system.close(reference);
    return changed < 0 ? moved : rename();
}

void FileAccess::renameContents(const Holding& holding) {
    const auto pass = [&](TreeWalk::Order order, TreeVisitor&& visitor) {
        const int folder =
            batch_.opened([&] { return services_.system.openFolder(holding.opened, "."); });
        if (folder >= 0) walk_.walk(folder, order, visitor);
    };
    if (holding.opened < 0) return;
    RandomName& name = overwriter_.randomName();
    pass(TreeWalk::Order::forward, FileRenamer(services_.system, batch_, stop_, name));
    pass(TreeWalk::Order::backward, FolderRenamer(services_.system, batch_, stop_, name));
}

void FileAccess::removeHolding(const Holding& holding) {
    DeletionHandler handler(deletionParts(), walk_, holding.path());
    handler.setUncounted(holding.name.c_str());
    TreeEntry entry{holding.parent, holding.name.c_str(), EntryKind::folder};
    if (holding.opened >= 0) {
        const int folder = handler.enter({holding.opened, ".", EntryKind::folder});
        if (folder >= 0) walk_.walk(folder, TreeWalk::Order::forward, handler);
        if (!stopRequested()) handler.leaveHolding(entry, holding.opened);
        return;
    }
    if (!holding.wasThere) {
        // What we made cannot be opened, or is no longer there: whatever it is goes if it is empty.
        services_.system.removeFolder(entry.folder, entry.name);
        return;
    }
    FileStatus status;
    const int result = services_.system.statusAt(entry.folder, entry.name, Links::stay, status);
    if (result == -ENOENT) return;
    if (result >= 0) entry.kind = status.kind;  // something else may have borne that name before
    const int folder = handler.enter(entry);
    if (folder >= 0) walk_.walk(folder, TreeWalk::Order::forward, handler);
    if (!stopRequested()) handler.leave(entry);
}

void FileAccess::close(const Holding& holding) {
    if (holding.opened >= 0) services_.system.close(holding.opened);
    if (holding.parent >= 0) services_.system.close(holding.parent);
}

DeletionHandler::Parts FileAccess::deletionParts() {
    return {services_.system, overwriter_, batch_, targets_, stop_, outcome_};
}

}  // namespace dorvanel
