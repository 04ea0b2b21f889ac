// SPDX-License-Identifier: MIT
#include "platform/FreeSpace.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <fstream>
#include <limits>
#include <sstream>

#include "platform/MountPoints.h"
#include "platform/linux/CallAgain.h"
#include "platform/linux/FileDescriptor.h"

namespace dorvanel::platform {
namespace {

using Answer = FreeSpace::Answer;

constexpr std::uint32_t xfsType =
    0x58465342;  // missing in the kernel's public list, as what follows

/// What xfs is asked to give back: blocks that it keeps for files which may grow. Part of that is
/// to wait for the files that are removed and whose blocks are not free yet.
struct XfsBlocksToFree {
    std::uint32_t version = 1;
    std::uint32_t flags = 1;  // wait
    std::array<std::uint32_t, 4> ofWhom{};
    std::uint64_t smallest = 0;
    std::array<std::uint64_t, 12> unused{};
};
static_assert(sizeof(XfsBlocksToFree) == 128);
constexpr unsigned long freeXfsBlocks = _IOR('X', 58, XfsBlocksToFree);

/// Waits until the blocks of what was removed are free, and the medium has it so.
int settle(int folder) {
    const int synced = called([&] { return ::syncfs(folder); });
    struct statfs found {};
    if (synced < 0 || ::fstatfs(folder, &found) != 0) return synced;
    if (static_cast<std::uint32_t>(found.f_type) != xfsType) return synced;
    // It frees blocks in the background. Where the question is not allowed, nor is discarding.
    XfsBlocksToFree question;
    if (called([&] { return ::ioctl(folder, freeXfsBlocks, &question); }) < 0) return synced;
    return called([&] { return ::syncfs(folder); });
}

Answer answerOf(int code) {
    switch (code) {
        case 0:
            return Answer::discarded;
        case EPERM:
        case EACCES:
            return Answer::notPermitted;
        case EOPNOTSUPP:
        case ENOTTY:
        case ENOSYS:
            return Answer::notSupported;
        default:
            return Answer::failed;
    }
}

class LinuxFreeSpace final : public FreeSpace {
  public:
    [[nodiscard]] Result<FileSystemPlace> placeOf(const std::string& folder) override {
        struct statx found {};
        const int result = called([&] {
            return ::statx(AT_FDCWD, folder.c_str(), 0, STATX_TYPE | STATX_MNT_ID, &found);
        });
        if (result < 0) return Error{-result, "look at", folder, {}};
        if ((found.stx_mask & STATX_MNT_ID) == 0) return Error{ENOSYS, "look at", folder, {}};
        std::ifstream table("/proc/self/mountinfo");
        for (std::string line; std::getline(table, line);) {
            std::istringstream fields(line);
            std::uint64_t mount = 0;
            std::uint64_t parent = 0;
            FileSystemPlace place;
            std::string root;
            fields >> mount >> parent >> place.device >> root >> place.mountPoint;
            if (mount != found.stx_mnt_id) continue;
            place.mountPoint = mountTableText(place.mountPoint);
            return place;
        }
        return Error{ENOENT, "find the mount point of", folder, {}};
    }

    Discarded discard(const std::string& folder) override {
        const int opened = called([&] {
            return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC);
        });
        if (opened < 0) return {answerOf(-opened), 0, -opened};
        const FileDescriptor file(opened);
        // What is only removed in memory still has its blocks.
        int result = settle(file.get());
        if (result < 0) return {Answer::failed, 0, -result};
        fstrim_range range{0, std::numeric_limits<std::uint64_t>::max(), 0};
        result = called([&] { return ::ioctl(file.get(), FITRIM, &range); });
        if (result < 0) return {answerOf(-result), 0, -result};
        return {Answer::discarded, range.len, 0};
    }
};

}  // namespace

std::unique_ptr<FreeSpace> makeFreeSpace() {
    return std::make_unique<LinuxFreeSpace>();
}

}  // namespace dorvanel::platform
