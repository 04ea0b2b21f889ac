// SPDX-License-Identifier: MIT
#include "engine/HeldItem.h"

#include <algorithm>

#include "base/PathComponents.h"

namespace dorvanel {
namespace {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;
using Links = platform::SystemCalls::Links;

/// Of a long list, what is held by descriptors: enough for what people type, and a small part of
/// the 1024 that a process is given.
constexpr int mostHeld = 256;
constexpr int shareOfLimit = 8;

/// Holds items one after another, and keeps the last one's folder for the next.
class Holder {
  public:
    Holder(SystemCalls& system, int most, Links links)
        : system_(system), left_(most), links_(links) {}

    HeldItem hold(const std::string& path) {
        ItemPath parts(path);
        HeldItem held;
        held.path = path;
        held.links = links_;
        held.folder = std::move(parts.folder);
        held.name = std::move(parts.name);
        if (parent_ == nullptr || parentPath_ != held.folder) held.code = openParent(held.folder);
        if (held.code == 0) {
            held.parentStatus = parentStatus_;
            lookAt(held);
            if (parentMayBeKept_) held.parent = parent_;
        }
        return held;
    }

  private:
    int openParent(const std::string& folder) {
        parent_.reset();
        const int opened =
            system_.openReference(SystemCalls::workingFolder, folder.c_str(), Links::follow);
        if (opened < 0) return -opened;
        parent_ = std::make_shared<const HeldDescriptor>(system_, opened);
        parentPath_ = folder;
        parentMayBeKept_ = left_-- > 0;
        const int looked = system_.status(opened, parentStatus_);
        if (looked >= 0) return 0;
        parent_.reset();
        return -looked;
    }

    void lookAt(HeldItem& held) {
        const char* name = held.name.c_str();
        int result = -1;
        if (left_ > 0) {
            result = system_.openReference(parent_->get(), name, Links::stay);
            if (result >= 0) {
                --left_;
                held.item = std::make_shared<const HeldDescriptor>(system_, result);
                result = system_.status(held.item->get(), held.status);
            }
        }
        // Also where descriptors have run out for others.
        if (held.item == nullptr) {
            result = system_.statusAt(parent_->get(), name, Links::stay, held.status);
        }
        if (result >= 0 && held.status.kind == EntryKind::link && links_ == Links::follow) {
            FileStatus target;
            result = system_.statusAt(parent_->get(), name, Links::follow, target);
        }
        if (result < 0) held.code = -result;
    }

    SystemCalls& system_;
    int left_;
    Links links_;
    std::shared_ptr<const HeldDescriptor> parent_;
    std::string parentPath_;
    FileStatus parentStatus_;
    bool parentMayBeKept_ = false;
};

}  // namespace

HeldItem hold(SystemCalls& system, const std::string& path, Links links) {
    return Holder(system, mostHeld, links).hold(path);
}

std::vector<HeldItem> holdAll(SystemCalls& system, const std::vector<std::string>& paths,
                              Links links) {
    const int most = std::min(mostHeld, system.descriptorLimit() / shareOfLimit);
    Holder holder(system, most, links);
    std::vector<HeldItem> items;
    items.reserve(paths.size());
    for (const std::string& path : paths) items.push_back(holder.hold(path));
    return items;
}

bool isHeldItem(SystemCalls& system, const HeldItem& item, const FileStatus& found) {
    if (found.isSameAs(item.status)) return true;
    // Some file systems number their files anew from time to time: then both are asked now.
    FileStatus now;
    return item.item != nullptr && system.status(item.item->get(), now) >= 0 && found.isSameAs(now);
}

}  // namespace dorvanel
