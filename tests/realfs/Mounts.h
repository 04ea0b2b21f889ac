// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "support/ChildProcess.h"

namespace dorvanel::test {

/// What is mounted on a folder, in the mounts of this test program alone; goes with the object.
class Mount {
  public:
    /// `folder` is where something has been mounted; `below` is what it stands on, if anything.
    explicit Mount(std::string folder, std::unique_ptr<Mount> below = {})
        : below_(std::move(below)), folder_(std::move(folder)) {}
    ~Mount();
    Mount(const Mount&) = delete;
    Mount& operator=(const Mount&) = delete;

    /// Ends it now; false where something of it is in use.
    bool end();

    [[nodiscard]] const std::string& folder() const { return folder_; }
    [[nodiscard]] std::string operator/(const std::string& name) const {
        return folder_ + "/" + name;
    }

  private:
    std::unique_ptr<Mount> below_;
    std::string folder_;
};

using MountPointer = std::unique_ptr<Mount>;

/// Each makes the folder (for `mountBound`: what is missing of either) and mounts on it; null where
/// the machine does not let us, or where the file system's tools are missing.
MountPointer mountMemory(const std::string& folder);
MountPointer mountBound(const std::string& what, const std::string& onWhat);
/// A new file system of a kind that mkfs knows ("ext4", "vfat", "xfs") in the new file `image`.
MountPointer mountNewImage(const std::string& kind, const std::string& image,
                           const std::string& folder, std::size_t megabytes,
                           const std::string& makeOptions = {});
/// The file system in `image` once more, by `mount -o loop` and more such options.
MountPointer mountImage(const std::string& image, const std::string& folder,
                        const std::string& options = {});
/// Shows what `lower` holds; what changes goes to FOLDER-changes/upper, in memory.
MountPointer mountOverlay(const std::string& lower, const std::string& folder);

/// The folder `backing` as the program passthrough shows it, with its switches.
class Passthrough {
  public:
    Passthrough(const std::string& backing, const std::string& folder,
                const std::vector<std::string>& switches = {});
    ~Passthrough();

    /// Whether it has been mounted.
    [[nodiscard]] bool works() const { return mount_ != nullptr; }
    [[nodiscard]] std::string operator/(const std::string& name) const {
        return mount_->folder() + "/" + name;
    }

  private:
    std::unique_ptr<ChildProcess> server_;
    MountPointer mount_;
};

}  // namespace dorvanel::test
