// SPDX-License-Identifier: MIT
#include "targets/trash/TrashFolders.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace dorvanel::trash {
namespace {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;

constexpr std::uint32_t stickyBit = 01000;
constexpr std::uint32_t writtenByOthers = 0022;

bool isAbsent(int code) {
    return code == -ENOENT || code == -ENOTDIR;
}

std::string inWords(int code) {
    return std::generic_category().message(code);
}

int look(SystemCalls& system, const std::string& path, FileStatus& status) {
    return system.statusAt(SystemCalls::workingFolder, path.c_str(), SystemCalls::Links::stay,
                           status);
}

/// Why it is not a real folder of the user's own; "" where it is.
std::string faultOf(const FileStatus& status, std::uint32_t user, bool mayOthersWrite) {
    if (status.kind == EntryKind::link) return "is a link";
    if (status.kind != EntryKind::folder) return "is not a folder";
    if (status.owner != user) return "belongs to another user";
    if (!mayOthersWrite && (status.permissions & writtenByOthers) != 0) {
        return "others may write in it";
    }
    return {};
}

/// ".Trash" of a volume, which all users share.
void addShared(SystemCalls& system, const std::string& top, FoundTrash& found) {
    const std::string shared = top + "/.Trash";
    const std::string own = shared + "/" + std::to_string(system.effectiveUser());
    FileStatus status;
    FileStatus inside;
    // None, or nothing of this user in it, or nothing that this user can see.
    if (look(system, shared, status) < 0 || look(system, own, inside) < 0) return;
    if (status.kind == EntryKind::link) return found.refused.push_back({shared, true, "is a link"});
    if (status.kind != EntryKind::folder) return;
    if ((status.permissions & stickyBit) == 0) {
        return found.refused.push_back({shared, true, "has no sticky bit"});
    }
    addTrashFolder(system, own, false, found);
}

/// Where `path` ends in "/NAME", what is before it; else "".
std::string before(const std::string& path, const std::string& name) {
    const std::string end = "/" + name;
    return path.ends_with(end) ? path.substr(0, path.size() - end.size()) : std::string();
}

}  // namespace

void addTrashFolder(SystemCalls& system, const std::string& path, bool mayOthersWrite,
                    FoundTrash& found) {
    FileStatus status;
    const int looked = look(system, path, status);
    if (isAbsent(looked)) return;
    if (looked < 0) return found.refused.push_back({path, false, inWords(-looked)});
    const std::uint32_t user = system.effectiveUser();
    if (std::string fault = faultOf(status, user, mayOthersWrite); !fault.empty()) {
        return found.refused.push_back({path, true, std::move(fault)});
    }
    // Seen by another mount already.
    const auto isSame = [&](const TrashFolder& other) { return other.status.isSameAs(status); };
    if (std::ranges::any_of(found.folders, isSame)) return;
    TrashFolder folder{.path = path, .status = status, .files = {}, .expunged = {}, .info = {}};
    const auto addPart = [&](const std::string& part, FileStatus& its) {
        FileStatus seen;
        const int result = look(system, part, seen);
        if (isAbsent(result)) return;
        if (result < 0) return found.refused.push_back({part, false, inWords(-result)});
        if (std::string fault = faultOf(seen, user, mayOthersWrite); !fault.empty()) {
            return found.refused.push_back({part, true, std::move(fault)});
        }
        its = seen;
    };
    addPart(folder.filesPath(), folder.files);
    addPart(folder.expungedPath(), folder.expunged);
    addPart(folder.infoPath(), folder.info);
    found.folders.push_back(std::move(folder));
}

FoundTrash findTrashFolders(SystemCalls& system, const std::string& dataFolder,
                            const std::vector<std::string>& mountPoints) {
    FoundTrash found;
    if (!dataFolder.empty()) addTrashFolder(system, dataFolder + "/Trash", true, found);
    std::vector<std::string> tops = mountPoints;
    std::ranges::sort(tops);
    tops.erase(std::unique(tops.begin(), tops.end()), tops.end());
    for (std::string& top : tops) {
        if (top == "/") top.clear();
        addShared(system, top, found);
        const std::string own = top + "/.Trash-" + std::to_string(system.effectiveUser());
        FileStatus status;
        if (look(system, own, status) >= 0) addTrashFolder(system, own, false, found);
    }
    return found;
}

bool isTrashFolder(const std::string& path, const std::string& home, std::uint32_t user) {
    if (!home.empty() && path == home) return true;
    const std::string number = std::to_string(user);
    return path.ends_with("/.Trash-" + number) || path.ends_with("/.Trash/" + number);
}

std::string trashFolderOf(const std::string& item, const std::string& home, std::uint32_t user) {
    const std::string folder = before(item.substr(0, item.rfind('/')), "files");
    return isTrashFolder(folder, home, user) ? folder : std::string();
}

}  // namespace dorvanel::trash
