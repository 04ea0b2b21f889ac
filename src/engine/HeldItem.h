// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/SystemCalls.h"

namespace dorvanel {

/// A file or folder whatever its name: the home folder under another mount, say.
struct Identity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    static Identity of(const platform::FileStatus& status) { return {status.device, status.inode}; }
    bool operator==(const Identity&) const = default;

    struct Hash {
        std::size_t operator()(const Identity& file) const {
            return std::hash<std::uint64_t>()(file.inode ^ file.device << 32);
        }
    };
};

/// An open descriptor that is closed with its last owner.
class HeldDescriptor {
  public:
    /// Takes over `descriptor`. `system` must outlive this.
    HeldDescriptor(platform::SystemCalls& system, int descriptor)
        : system_(system), descriptor_(descriptor) {}
    ~HeldDescriptor() { system_.close(descriptor_); }
    HeldDescriptor(const HeldDescriptor&) = delete;
    HeldDescriptor& operator=(const HeldDescriptor&) = delete;

    [[nodiscard]] int get() const { return descriptor_; }

  private:
    platform::SystemCalls& system_;
    int descriptor_;
};

/// An item to shred, as it was when somebody looked at it. What is shredded later is this very
/// item, in this very folder, whatever becomes of the path in between.
struct HeldItem {
    std::string path;    ///< as it was given, in bytes
    std::string folder;  ///< path of the folder that holds it
    std::string name;    ///< last component of the path

    /// A reference to the folder that holds it; null where there was none, or were too many.
    std::shared_ptr<const HeldDescriptor> parent;
    /// A reference to the item, a link not followed; null likewise. As long as it is held, no other
    /// file is given the item's inode number.
    std::shared_ptr<const HeldDescriptor> item;
    platform::FileStatus parentStatus;
    platform::FileStatus status;  ///< the item's own, a link not followed

    /// What happens to links, the item itself and those in it: with `follow` their targets are
    /// shredded too, with `stay` a link goes and its target stays as it is.
    platform::SystemCalls::Links links = platform::SystemCalls::Links::follow;

    /// Whether its files have their lines in the Activity Log.
    bool isLogged = true;

    /// Why the item, or what it leads to as a link, could not be looked at: an errno, ENOENT where
    /// there is none; 0 where it is there. A link that is not to be followed is there by itself.
    int code = 0;
    /// A link that leads nowhere is an item that does not exist, and yet something is there.
    [[nodiscard]] bool isThere() const { return status.kind != platform::EntryKind::unknown; }
};

/// Looks at the item under this path, following links in all but the last component, and holds it.
/// Always returns an item; its `code` tells whether it is there. `system` must outlive it.
HeldItem hold(platform::SystemCalls& system, const std::string& path,
              platform::SystemCalls::Links links = platform::SystemCalls::Links::follow);

/// The same for a list, in its order. Items of one folder share its descriptor, and of very long
/// lists only the first are held by descriptors, the others known by inode and time of birth.
std::vector<HeldItem> holdAll(
    platform::SystemCalls& system, const std::vector<std::string>& paths,
    platform::SystemCalls::Links links = platform::SystemCalls::Links::follow);

/// Whether a file that is there now is the held item.
bool isHeldItem(platform::SystemCalls& system, const HeldItem& item,
                const platform::FileStatus& found);

}  // namespace dorvanel
