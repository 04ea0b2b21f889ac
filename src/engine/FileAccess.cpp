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
    const std::uint64_t formerFailures = batch_.failures();

    for (const std::string& path : paths) {
        if (exists(path)) overwriter_.mDeepPathSize += sizeInBytes(path);
    }
    for (const std::string& path : paths) {
        if (!exists(path)) {
            passOver(path);
        } else if (stopRequested()) {
            outcome_.left.push_back(path);
        } else {
            shredItem(path);
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

void FileAccess::openDoc(platform::OpenPanel& panel) {
    panel.setAllowsMultipleSelection(true);
    std::optional<std::vector<std::string>> picked =
        panel.runModalForDirectory(platform::homeDirectory());
    if (picked) shredDroppedFile(*picked);
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
    if (status.kind != EntryKind::folder) return status.size;
    const int folder = services_.system.openFolder(SystemCalls::workingFolder, path.c_str());
    if (folder < 0) return 0;  // not readable, or a link: what it leads to is not shredded
    SizeVisitor visitor(services_.system, stop_);
    walk_.walk(folder, TreeWalk::Order::forward, visitor);
    return visitor.total;
}

std::string FileAccess::moveAndRename(const std::string& path) {
    const Holding holding = moveIntoHolding(path);
    if (holding.parent >= 0) services_.system.close(holding.parent);
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

void FileAccess::shredItem(const std::string& path) {
    ++outcome_.items;
    const Holding holding = moveIntoHolding(path);
    if (holding.parent < 0) return;
    removeHolding(holding);
    FileStatus status;
    if (stopRequested() &&
        services_.system.statusAt(holding.parent, holding.name.c_str(), Links::stay, status) >= 0) {
        outcome_.left.push_back(holding.path());
    }
    services_.system.close(holding.parent);
}

FileAccess::Holding FileAccess::moveIntoHolding(const std::string& path) {
    const ItemPath item(path);
    Holding holding;
    holding.folder = item.folder;
    holding.name = fmt::format("Dorvanel X Items ({})", services_.clock.time());
    holding.parent = services_.system.openReference(SystemCalls::workingFolder, item.folder.c_str(),
                                                    Links::follow);
    const int result = holding.parent < 0 ? holding.parent : makeHoldingAndMove(holding, item.name);
    if (result < 0 && (result != -ENOENT || exists(path))) {
        ++outcome_.notRemoved;
        outcome_.note(path, "move", -result);
    }
    if (holding.parent >= 0) renameContents(holding);
    return holding;
}

int FileAccess::makeHoldingAndMove(const Holding& holding, const std::string& item) {
    if (item == holding.name) return 0;  // left by a run that ended in this very second
    SystemCalls& system = services_.system;
    const int made = system.makeFolder(holding.parent, holding.name.c_str());
    if (made < 0 && made != -EEXIST) return made;
    const int folder = system.openFolder(holding.parent, holding.name.c_str());
    if (folder < 0) return folder;
    const int moved = move(holding, folder, item);
    system.close(folder);
    return moved;
}

int FileAccess::move(const Holding& holding, int holdingFolder, const std::string& item) {
    SystemCalls& system = services_.system;
    const auto rename = [&] {
        return system.rename(holding.parent, item.c_str(), holdingFolder, item.c_str());
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
        const int folder = services_.system.openFolder(holding.parent, holding.name.c_str());
        if (folder >= 0) walk_.walk(folder, order, visitor);
    };
    RandomName& name = overwriter_.randomName();
    pass(TreeWalk::Order::forward, FileRenamer(services_.system, stop_, name));
    pass(TreeWalk::Order::backward, FolderRenamer(services_.system, stop_, name));
}

void FileAccess::removeHolding(const Holding& holding) {
    DeletionHandler handler(deletionParts(), walk_, holding.path());
    handler.setUncounted(holding.name.c_str());
    TreeEntry entry{holding.parent, holding.name.c_str(), EntryKind::folder};
    FileStatus status;
    const int result = services_.system.statusAt(entry.folder, entry.name, Links::stay, status);
    if (result == -ENOENT) return;
    if (result >= 0) entry.kind = status.kind;  // something else may have borne that name before
    const int folder = handler.enter(entry);
    if (folder >= 0) walk_.walk(folder, TreeWalk::Order::forward, handler);
    if (!stopRequested()) handler.leave(entry);
}

DeletionHandler::Parts FileAccess::deletionParts() {
    return {services_.system, overwriter_, batch_, stop_, outcome_};
}

}  // namespace dorvanel
