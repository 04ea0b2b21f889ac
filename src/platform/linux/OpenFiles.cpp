// SPDX-License-Identifier: MIT
#include "platform/OpenFiles.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/ProcessFolder.h"

namespace dorvanel::platform {
namespace {

/// Who has one file open is told of so many; the others are counted.
constexpr std::size_t mostNamed = 3;

class FolderStream {
  public:
    explicit FolderStream(const std::string& path) : stream_(::opendir(path.c_str())) {}
    ~FolderStream() {
        if (stream_ != nullptr) ::closedir(stream_);
    }
    FolderStream(const FolderStream&) = delete;
    FolderStream& operator=(const FolderStream&) = delete;

    /// The next entry that is a number; null at the end.
    const char* nextNumber() {
        while (stream_ != nullptr) {
            const dirent* entry = ::readdir(stream_);
            if (entry == nullptr) break;
            if (std::isdigit(static_cast<unsigned char>(entry->d_name[0])) != 0) {
                return entry->d_name;
            }
        }
        return nullptr;
    }
    [[nodiscard]] int descriptor() const { return ::dirfd(stream_); }

  private:
    DIR* stream_;
};

class LinuxOpenFiles final : public OpenFiles {
  public:
    void look() override {
        holders_.clear();
        const std::string own = std::to_string(::getpid());
        FolderStream processes("/proc");
        while (const char* number = processes.nextNumber()) {
            if (own != number) lookAt(number);
        }
    }

    [[nodiscard]] bool empty() const override { return holders_.empty(); }

    [[nodiscard]] std::string holdersOf(std::uint64_t device, std::uint64_t inode) const override {
        const auto found = holders_.find({device, inode});
        if (found == holders_.end()) return {};
        const std::vector<pid_t>& processes = found->second;
        std::string text;
        for (std::size_t i = 0; i < std::min(processes.size(), mostNamed); ++i) {
            const auto facts = ProcessFolder(processes[i]).facts();
            if (!text.empty()) text += ", ";
            text += facts ? facts.value().name : std::string("a process that has ended");
            text += " (" + std::to_string(processes[i]) + ")";
        }
        if (processes.size() > mostNamed) {
            text += " and " + std::to_string(processes.size() - mostNamed) + " more";
        }
        return text;
    }

  private:
    void lookAt(const std::string& number) {
        FolderStream files("/proc/" + number + "/fd");  // of others' processes often not allowed
        const auto process = static_cast<pid_t>(std::stol(number));
        while (const char* descriptor = files.nextNumber()) {
            // What stands there is a link to the very file. Looking through it opens nothing, and
            // asks no server that may not answer.
            struct statx found {};
            if (::statx(files.descriptor(), descriptor, AT_STATX_DONT_SYNC, STATX_TYPE | STATX_INO,
                        &found) != 0 ||
                !S_ISREG(found.stx_mode)) {
                continue;
            }
            std::vector<pid_t>& holders =
                holders_[{makedev(found.stx_dev_major, found.stx_dev_minor), found.stx_ino}];
            if (holders.empty() || holders.back() != process) holders.push_back(process);
        }
    }

    std::map<std::pair<std::uint64_t, std::uint64_t>, std::vector<pid_t>> holders_;
};

}  // namespace

std::unique_ptr<OpenFiles> makeOpenFiles() {
    return std::make_unique<LinuxOpenFiles>();
}

}  // namespace dorvanel::platform
