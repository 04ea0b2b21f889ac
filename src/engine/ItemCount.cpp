// SPDX-License-Identifier: MIT
#include "engine/ItemCount.h"

#include <cerrno>

#include "base/PathComponents.h"
#include "engine/TreeWalk.h"

namespace dorvanel {
namespace {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;

class Counter final : public TreeVisitor {
  public:
    Counter(SystemCalls& system, const TreeWalk& walk, std::string folder,
            const std::function<bool()>& stop, ItemCount& count)
        : system_(system), walk_(walk), folder_(std::move(folder)), stop_(stop), count_(count) {}

    int enter(const TreeEntry& entry) override {
        if (entry.kind == EntryKind::folder) {
            ++count_.folders;
            const int opened = system_.openFolder(entry.folder, entry.name);
            if (opened < 0) couldNotRead(walk_.relativePath(entry), -opened);
            return opened;
        }
        FileStatus status;
        const int found =
            system_.statusAt(entry.folder, entry.name, SystemCalls::Links::stay, status);
        if (found == -ENOENT) return -1;  // it has gone meanwhile
        ++count_.files;
        if (found < 0) couldNotRead(walk_.relativePath(entry), -found);
        if (found < 0 || status.kind != EntryKind::regular) return -1;
        if (status.isBeyondMountOf(*entry.in)) meetsMount(entry);
        count_.bytes += status.size;
        return -1;
    }

    bool walksInto(const TreeEntry& entry, int, const FileStatus& found) override {
        if (!found.isBeyondMountOf(*entry.in)) return true;
        meetsMount(entry);
        return false;
    }
    void leave(const TreeEntry&) override {}
    void missed(const std::string& relativePath, int code) override {
        couldNotRead(relativePath, code);
    }
    bool stops() override { return stop_ && stop_(); }

  private:
    void couldNotRead(const std::string& relativePath, int code) {
        count_.unread.push_back({folder_ + "/" + relativePath, code});
    }
    void meetsMount(const TreeEntry& entry) {
        if (count_.mountPoint.empty()) {
            count_.mountPoint = folder_ + "/" + walk_.relativePath(entry);
        }
    }

    SystemCalls& system_;
    const TreeWalk& walk_;
    std::string folder_;
    const std::function<bool()>& stop_;
    ItemCount& count_;
};

}  // namespace

ItemCount countItem(SystemCalls& system, const std::string& path,
                    const std::function<bool()>& stop) {
    ItemCount count;
    const ItemPath parts(path);
    const int folder = system.openReference(SystemCalls::workingFolder, parts.folder.c_str(),
                                            SystemCalls::Links::follow);
    if (folder < 0) {
        if (folder != -ENOENT && folder != -ENOTDIR) count.unread.push_back({path, -folder});
        return count;
    }
    FileStatus in;
    FileStatus status;
    int result = system.status(folder, in);
    if (result >= 0) {
        result = system.statusAt(folder, parts.name.c_str(), SystemCalls::Links::stay, status);
    }
    if (result >= 0) {
        TreeWalk walk(system);
        Counter counter(system, walk, parts.folder, stop, count);
        walk.walkEntry({folder, parts.name.c_str(), status.kind, &in}, TreeWalk::Order::forward,
                       counter);
    } else if (result != -ENOENT) {
        count.unread.push_back({path, -result});
    }
    system.close(folder);
    return count;
}

}  // namespace dorvanel
