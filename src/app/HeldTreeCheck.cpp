// SPDX-License-Identifier: MIT
#include "app/HeldTreeCheck.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "app/Texts.h"

namespace dorvanel {
namespace {

using platform::EntryKind;
using platform::FileStatus;

/// What is said of a folder that could not be opened or listed; nothing where it has gone, or is
/// closed to its owner: the engine opens it and sees for itself.
std::optional<std::string> reasonOf(const std::string& path, int code) {
    if (code == ENOENT || code == EACCES) return std::nullopt;
    return tr("holds \"{}\", which cannot be looked at: {}", path,
              std::generic_category().message(code));
}

/// Walks the folders only, and ends at the first that must not be shredded.
class Inspector final : public TreeVisitor {
  public:
    Inspector(const HeldTreeCheck& check, platform::SystemCalls& system, const TreeWalk& walk,
              const HeldItem& top, const std::function<bool()>& stop)
        : check_(check), system_(system), walk_(walk), top_(top), stop_(stop) {}

    int enter(const TreeEntry& entry) override {
        if (entry.kind != EntryKind::folder && entry.kind != EntryKind::unknown) return -1;
        const int folder = system_.openFolder(entry.folder, entry.name);
        if (folder < 0 && folder != -ENOTDIR && folder != -ELOOP) {
            reason = reasonOf(pathOf(entry), -folder);
        }
        return folder;
    }
    bool walksInto(const TreeEntry& entry, int, const FileStatus& found) override {
        if (check_.isProtected(found)) {
            reason = tr("holds the home folder or a folder above it, \"{}\"", pathOf(entry));
        } else if (found.isBeyondMountOf(top_.status)) {
            reason = tr("holds the mount point \"{}\"", pathOf(entry));
        }
        return !reason;
    }
    void leave(const TreeEntry&) override {}
    void missed(const std::string& relativePath, int code) override {
        if (!reason) reason = reasonOf(top_.path + "/" + relativePath, code);
    }
    bool stops() override { return reason.has_value() || (stop_ && stop_()); }

    std::optional<std::string> reason;

  private:
    [[nodiscard]] std::string pathOf(const TreeEntry& entry) const {
        return top_.path + "/" + walk_.relativePath(entry);
    }

    const HeldTreeCheck& check_;
    platform::SystemCalls& system_;
    const TreeWalk& walk_;
    const HeldItem& top_;
    const std::function<bool()>& stop_;
};

}  // namespace

bool HeldTreeCheck::isProtected(const FileStatus& status) const {
    return std::find(protected_.begin(), protected_.end(), Identity::of(status)) !=
           protected_.end();
}

std::optional<std::string> HeldTreeCheck::refuse(const HeldItem& folder) {
    const bool isHeld = folder.item != nullptr;
    const int opened =
        isHeld ? system_.openFolder(folder.item->get(), ".")
               : system_.openFolder(platform::SystemCalls::workingFolder, folder.path.c_str());
    if (opened == -EACCES) return std::nullopt;
    FileStatus status;
    const int result = opened < 0 ? opened : system_.status(opened, status);
    if (result >= 0 && status.isSameAs(folder.status)) {
        Inspector inspector(*this, system_, walk_, folder, stop_);
        walk_.walk(opened, TreeWalk::Order::forward, inspector);
        return inspector.reason;
    }
    if (opened >= 0) system_.close(opened);
    return tr("cannot be looked at: {}",
              std::generic_category().message(result < 0 ? -result : ESTALE));
}

}  // namespace dorvanel
