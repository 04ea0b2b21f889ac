// SPDX-License-Identifier: MIT
#include "engine/plan/FileCount.h"

#include <cerrno>
#include <system_error>
#include <utility>

namespace dorvanel {

using Kind = PlanNote::Kind;

namespace {

constexpr std::uint32_t superUser = 0;

}  // namespace

bool FileCount::add(int folder, const char* name, Links links, const platform::FileStatus& status,
                    const Path& path) {
    // One's own file is made writable when its turn comes.
    if (parts_.user != superUser && status.owner != parts_.user) {
        const int allowed = parts_.system.canReadAndWrite(folder, name);
        if (allowed < 0) {
            addUnreadable(path(), "cannot be overwritten", -allowed);
            return false;
        }
    }
    item_.bytes += status.size;
    if (links == Links::stay && status.links > 1) notes_.addName(status, path);
    if (parts_.openFiles != nullptr) {
        std::string holders = parts_.openFiles->holdersOf(status.device, status.inode);
        if (!holders.empty()) {
            notes_.add({.kind = Kind::open, .path = path(), .detail = std::move(holders)});
        }
    }
    if (parts_.sharedExtents != nullptr && status.size > 0) {
        const int shared = parts_.sharedExtents->isShared(folder, name, links, status.device);
        if (shared > 0) notes_.add({.kind = Kind::shared, .path = path()});
        if (shared < 0 && shared != -ENOENT) {
            addUnreadable(path(), "cannot be asked for shared blocks", -shared);
        }
    }
    return true;
}

void FileCount::addUnreadable(std::string path, const std::string& what, int code) {
    notes_.add({.kind = Kind::unreadable,
                .path = std::move(path),
                .detail = what + ": " + std::generic_category().message(code)});
}

}  // namespace dorvanel
