// SPDX-License-Identifier: MIT
#include "platform/Medium.h"

#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <system_error>
#include <utility>

#include "platform/linux/MediumSources.h"

namespace dorvanel::platform {
namespace {

namespace fs = std::filesystem;
using Kind = Medium::Kind;

struct KnownFileSystem {
    std::uint32_t type;
    Kind kind;
    const char* name;
};

/// Numbers without a name are missing in the kernel's public list.
constexpr std::array<KnownFileSystem, 20> kKnownFileSystems{{
    {BTRFS_SUPER_MAGIC, Kind::copyOnWrite, "btrfs"},
    {0x2FC12FC1, Kind::copyOnWrite, "zfs"},
    {0xCA451A4E, Kind::copyOnWrite, "bcachefs"},
    {F2FS_SUPER_MAGIC, Kind::copyOnWrite, "f2fs"},
    {NILFS_SUPER_MAGIC, Kind::copyOnWrite, "nilfs2"},
    {0x24051905, Kind::copyOnWrite, "ubifs"},
    {JFFS2_SUPER_MAGIC, Kind::copyOnWrite, "jffs2"},
    {OVERLAYFS_SUPER_MAGIC, Kind::overlay, "overlay"},
    {0x61756673, Kind::overlay, "aufs"},
    {NFS_SUPER_MAGIC, Kind::network, "nfs"},
    {SMB_SUPER_MAGIC, Kind::network, "smb"},
    {CIFS_SUPER_MAGIC, Kind::network, "cifs"},
    {SMB2_SUPER_MAGIC, Kind::network, "smb2"},
    {V9FS_MAGIC, Kind::network, "9p"},
    {CEPH_SUPER_MAGIC, Kind::network, "ceph"},
    {AFS_SUPER_MAGIC, Kind::network, "afs"},
    {AFS_FS_MAGIC, Kind::network, "afs"},
    {CODA_SUPER_MAGIC, Kind::network, "coda"},
    {NCP_SUPER_MAGIC, Kind::network, "ncp"},
    {FUSE_SUPER_MAGIC, Kind::userSpace, "fuse"},
}};

std::string firstLineOf(const fs::path& path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

class LinuxMediumInspector final : public MediumInspector {
  public:
    explicit LinuxMediumInspector(MediumSources sources) : sources_(std::move(sources)) {}

    Medium mediumAt(const std::string& path) override { return mediumAt(path, kMostLayers); }
    void forgetDisks() override { disks_.clear(); }

  private:
    /// Disks on disks on images that are followed; a loop among them ends here.
    static constexpr int kMostLayers = 8;

    Medium mediumAt(const std::string& path, int layers) {
        const std::optional<FileSystemFacts> facts = sources_.fileSystemOf(path);
        if (!facts) return {};
        const bool isOnDisk = facts->deviceMajor != 0;
        const auto* const known =
            std::ranges::find(kKnownFileSystems, facts->type, &KnownFileSystem::type);
        // A program that keeps its file system on a disk, as for NTFS, writes in place there.
        const bool isPlain =
            known == kKnownFileSystems.end() || (known->kind == Kind::userSpace && isOnDisk);
        if (!isPlain) return {known->kind, known->name};
        if (!isOnDisk) return {};
        const std::pair device(facts->deviceMajor, facts->deviceMinor);
        const auto found = disks_.find(device);
        if (found != disks_.end()) return found->second;
        const fs::path disk = fs::path(sources_.sysfs) / "dev/block" /
                              (std::to_string(device.first) + ":" + std::to_string(device.second));
        return disks_[device] = mediumOfDisk(disk, layers);
    }

    Medium mediumOfDisk(const fs::path& link, int layers) {
        std::error_code error;
        const fs::path disk = fs::canonical(link, error);
        if (error || layers == 0) return {};
        // An image in a file lies on what the file lies on.
        const std::string image = firstLineOf(disk / "loop/backing_file");
        if (!image.empty() && sources_.fileSystemOf(image)) return mediumAt(image, layers - 1);
        // A disk made of others is what they are: one that does not rotate is enough.
        for (fs::directory_iterator slave(disk / "slaves", error), end; !error && slave != end;
             slave.increment(error)) {
            Medium medium = mediumOfDisk(slave->path(), layers - 1);
            if (medium.kind != Kind::overwritable) return medium;
        }
        const bool isPartition = fs::exists(disk / "partition", error);
        const fs::path whole = isPartition ? disk.parent_path() : disk;
        if (firstLineOf(whole / "queue/rotational") == "0") return {Kind::solidState, {}};
        return isPartition ? mediumOfDisk(whole, layers - 1) : Medium{};
    }

    MediumSources sources_;
    std::map<std::pair<unsigned, unsigned>, Medium> disks_;
};

std::optional<FileSystemFacts> fileSystemOf(const std::string& path) {
    struct statfs system {};
    struct stat file {};
    if (::statfs(path.c_str(), &system) != 0 || ::stat(path.c_str(), &file) != 0) return {};
    return FileSystemFacts{static_cast<std::uint32_t>(system.f_type), major(file.st_dev),
                           minor(file.st_dev)};
}

}  // namespace

std::unique_ptr<MediumInspector> makeMediumInspector(MediumSources sources) {
    return std::make_unique<LinuxMediumInspector>(std::move(sources));
}

std::unique_ptr<MediumInspector> makeMediumInspector() {
    return makeMediumInspector({fileSystemOf, "/sys"});
}

}  // namespace dorvanel::platform
