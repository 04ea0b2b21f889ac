// SPDX-License-Identifier: MIT
#include "engine/ListedFolders.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "engine/UnfinishedEntry.h"

namespace dorvanel {
namespace {

using platform::CleaningStatus;
using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;
using Links = platform::SystemCalls::Links;
using Reason = PlanSkip::Reason;
using File = UnfinishedFolder::File;

/// A path of 4096 bytes, each of which takes three, and some lines.
constexpr std::uint64_t longestText = 16384;

class Reader {
  public:
    Reader(UnfinishedFolder& folder, SystemCalls& system, platform::CleaningCalls& files,
           LeftFolders& found)
        : folder_(folder), system_(system), files_(files), found_(found) {}

    Result<Done> readAll() {
        const Result<bool> opened = folder_.open();
        if (!opened) return opened.error();
        if (!opened.value()) return Done{};
        std::vector<std::string> names;
        const int read = files_.readFolder(folder_.descriptor(), names);
        if (read < 0) return Error{-read, "read", folder_.path(), {}};
        std::ranges::sort(names);
        for (const std::string& name : names) this->read(name);
        return Done{};
    }

  private:
    void read(const std::string& name) {
        const bool isInForce = !name.starts_with('.');
        CleaningStatus status;
        const int looked = files_.statusAt(folder_.descriptor(), name.c_str(), status);
        if (looked == -ENOENT) return;
        if (looked < 0) return passOver(name, Reason::unreadable, looked);
        if (const auto fault = faultOf(status)) return passOver(name, Reason::insecure, *fault);
        const int opened = files_.openForChanging(folder_.descriptor(), name.c_str());
        if (opened == -ENOENT) return;
        if (opened < 0) return passOver(name, Reason::unreadable, opened);
        File file{name, std::make_shared<const HeldDescriptor>(system_, opened)};
        CleaningStatus now;
        const int again = files_.status(opened, now);
        if (again < 0) return passOver(name, Reason::unreadable, again);
        if (!now.isSameAs(status)) {
            return passOver(name, Reason::insecure, "it was exchanged just now");
        }
        const int locked = files_.lock(opened, 0, 0);
        if (!isInForce) {
            if (locked >= 0) found_.spent.push_back(std::move(file));
            return;
        }
        if (locked < 0 && locked != -EAGAIN) return passOver(name, Reason::unreadable, locked);
        std::string text;
        if (now.size > longestText || !readText(opened, now.size, text)) {
            return passOver(name, Reason::corrupt, "it is not as it was written");
        }
        const std::optional<UnfinishedEntry> entry = unfinishedEntryOf(text);
        if (!entry) return passOver(name, Reason::corrupt, "it is not as it was written");
        if (locked < 0) return meetRunning(*entry);
        judge(*entry, std::move(file));
    }

    /// Why nobody but others can have made such a file.
    [[nodiscard]] std::optional<std::string> faultOf(const CleaningStatus& status) const {
        constexpr std::uint32_t writtenByOthers = 0022;
        if (status.kind != EntryKind::regular) return "it is no plain file";
        if (status.owner != files_.effectiveUser()) return "it is somebody else's";
        if ((status.permissions & writtenByOthers) != 0) return "it can be written by others";
        if (status.links > 1) return "it has other names";
        return std::nullopt;
    }

    bool readText(int file, std::uint64_t size, std::string& text) {
        text.resize(size);
        std::size_t at = 0;
        while (at < text.size()) {
            const std::ptrdiff_t got = files_.readAt(file, text.data() + at, text.size() - at, at);
            if (got <= 0) return false;
            at += static_cast<std::size_t>(got);
        }
        return true;
    }

    void meetRunning(const UnfinishedEntry& entry) {
        FileStatus status;
        const std::string path = entry.path();
        const int result =
            system_.statusAt(SystemCalls::workingFolder, path.c_str(), Links::stay, status);
        if (result < 0) return;  // just about to be made, or just gone
        found_.inWork.push_back(Identity::of(status));
        found_.skipped.push_back({path, {}, Reason::running, {}});
    }

    /// Nothing of what is written is believed before the disk has said the same.
    void judge(const UnfinishedEntry& entry, File file) {
        HeldItem item;
        item.path = entry.path();
        item.folder = entry.folder;
        item.name = entry.name;
        item.links = Links::stay;
        const int parent =
            system_.openReference(SystemCalls::workingFolder, item.folder.c_str(), Links::stay);
        if (parent == -ENOENT || parent == -ENOTDIR) {
            found_.absent.push_back(item.path);
            return;
        }
        if (parent < 0) return cannotLook(item.path, parent);
        item.parent = std::make_shared<const HeldDescriptor>(system_, parent);
        int result = system_.status(parent, item.parentStatus);
        if (result < 0) return cannotLook(item.path, result);
        if (item.parentStatus.kind != EntryKind::folder || !entry.wasIn(item.parentStatus)) {
            return mistrust(item.path, "what holds it is not the folder that it was made in");
        }
        const int folder = system_.openReference(parent, item.name.c_str(), Links::stay);
        if (folder == -ENOENT) {
            found_.spent.push_back(std::move(file));
            return;
        }
        if (folder < 0) return cannotLook(item.path, folder);
        item.item = std::make_shared<const HeldDescriptor>(system_, folder);
        result = system_.status(folder, item.status);
        if (result < 0) return cannotLook(item.path, result);
        if (auto fault = faultOfLeftFolder(system_, parent, item.parentStatus, item.status)) {
            return mistrust(item.path, std::move(*fault));
        }
        add(std::move(item), std::move(file));
    }

    void add(HeldItem item, File file) {
        for (LeftFolder& other : found_.folders) {
            if (other.item.status.isSameAs(item.status)) {
                other.files.push_back(std::move(file));
                return;
            }
        }
        LeftFolder& added = found_.folders.emplace_back(LeftFolder{std::move(item), {}});
        added.files.push_back(std::move(file));
    }

    void passOver(const std::string& name, Reason reason, std::string detail) {
        found_.skipped.push_back({folder_.path() + "/" + name, {}, reason, std::move(detail)});
    }
    void passOver(const std::string& name, Reason reason, int code) {
        passOver(name, reason, std::generic_category().message(-code));
    }
    void mistrust(const std::string& path, std::string why) {
        found_.skipped.push_back({path, {}, Reason::insecure, std::move(why)});
    }
    void cannotLook(const std::string& path, int code) {
        found_.skipped.push_back(
            {path, {}, Reason::unreadable, std::generic_category().message(-code)});
    }

    UnfinishedFolder& folder_;
    SystemCalls& system_;
    platform::CleaningCalls& files_;
    LeftFolders& found_;
};

}  // namespace

Result<Done> findListedFolders(UnfinishedFolder& folder, SystemCalls& system,
                               platform::CleaningCalls& files, LeftFolders& found) {
    return Reader(folder, system, files, found).readAll();
}

}  // namespace dorvanel
