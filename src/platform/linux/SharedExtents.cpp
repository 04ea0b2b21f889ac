// SPDX-License-Identifier: MIT
#include "platform/SharedExtents.h"

#include <fcntl.h>
#include <linux/fiemap.h>
#include <linux/fs.h>
#include <linux/magic.h>
#include <sys/ioctl.h>
#include <sys/vfs.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <map>

#include "platform/linux/CallAgain.h"
#include "platform/linux/FileDescriptor.h"

namespace dorvanel::platform {
namespace {

using Links = SystemCalls::Links;

constexpr std::uint32_t xfsType = 0x58465342;  // missing in the kernel's public list

/// A question about extents, and room for so many answers at a time.
struct Extents {
    static constexpr std::uint32_t most = 64;
    alignas(fiemap) std::array<std::byte, sizeof(fiemap) + most * sizeof(fiemap_extent)> bytes;

    fiemap& header() { return *reinterpret_cast<fiemap*>(bytes.data()); }
    [[nodiscard]] fiemap_extent extent(std::size_t number) const {
        fiemap_extent extent;
        std::memcpy(&extent, bytes.data() + sizeof(fiemap) + number * sizeof(fiemap_extent),
                    sizeof(extent));
        return extent;
    }
};

/// False also where the file system cannot be asked.
bool hasSharedExtent(int file) {
    Extents extents;
    std::uint64_t start = 0;
    for (;;) {
        fiemap& question = extents.header();
        question = {};
        question.fm_start = start;
        question.fm_length = FIEMAP_MAX_OFFSET - start;
        // Not FIEMAP_FLAG_SYNC, which would write.
        question.fm_extent_count = Extents::most;
        if (called([&] { return ::ioctl(file, FS_IOC_FIEMAP, &question); }) < 0) return false;
        const std::uint32_t got = question.fm_mapped_extents;
        if (got == 0) return false;
        for (std::uint32_t i = 0; i < got; ++i) {
            if ((extents.extent(i).fe_flags & FIEMAP_EXTENT_SHARED) != 0) return true;
        }
        const fiemap_extent last = extents.extent(got - 1);
        if ((last.fe_flags & FIEMAP_EXTENT_LAST) != 0) return false;
        start = last.fe_logical + last.fe_length;
    }
}

class LinuxSharedExtents final : public SharedExtents {
  public:
    int isShared(int folder, const char* name, Links links, std::uint64_t device) override {
        if (!mayShare(folder, name, links, device)) return 0;
        const int opened = open(folder, name, links, O_RDONLY | O_NONBLOCK | O_NOCTTY);
        if (opened < 0) return opened;
        const FileDescriptor file(opened);
        return hasSharedExtent(file.get()) ? 1 : 0;
    }

  private:
    static int open(int folder, const char* name, Links links, int flags) {
        const int more = O_CLOEXEC | (links == Links::stay ? O_NOFOLLOW : 0);
        return called([&] { return ::openat(folder, name, flags | more); });
    }

    bool mayShare(int folder, const char* name, Links links, std::uint64_t device) {
        const auto known = devices_.find(device);
        if (known != devices_.end()) return known->second;
        const FileDescriptor reference(open(folder, name, links, O_PATH));
        struct statfs found {};
        if (!reference.isOpen() || ::fstatfs(reference.get(), &found) != 0) return false;
        const auto type = static_cast<std::uint32_t>(found.f_type);
        return devices_[device] = type == BTRFS_SUPER_MAGIC || type == xfsType;
    }

    std::map<std::uint64_t, bool> devices_;
};

}  // namespace

std::unique_ptr<SharedExtents> makeSharedExtents() {
    return std::make_unique<LinuxSharedExtents>();
}

}  // namespace dorvanel::platform
