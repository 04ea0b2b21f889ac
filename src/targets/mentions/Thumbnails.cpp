// SPDX-License-Identifier: MIT
#include "targets/mentions/Thumbnails.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <system_error>
#include <utility>

#include "base/Percent.h"
#include "platform/FolderListing.h"
#include "targets/mentions/FileUri.h"
#include "targets/mentions/ThumbnailUri.h"

namespace dorvanel::mentions {
namespace {

using platform::EntryKind;
using platform::FileStatus;
using platform::SystemCalls;

constexpr std::string_view extension = ".png";
/// Folders of sizes, and in "fail" those of programs.
constexpr int deepest = 2;

std::optional<Md5Digest> digestOf(std::string_view name) {
    Md5Digest digest{};
    if (name.size() != 2 * digest.size() + extension.size() || !name.ends_with(extension)) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < digest.size(); ++i) {
        const int high = hexDigit(name[2 * i]);
        const int low = hexDigit(name[2 * i + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        digest[i] = static_cast<std::uint8_t>(high * 16 + low);
    }
    if (!name.starts_with(hexOf(digest))) return std::nullopt;  // capitals name another file
    return digest;
}

bool isAbsent(int code) {
    return code == -ENOENT || code == -ENOTDIR;
}

/// A folder on a walk, with those of its entries that are to come.
struct Level {
    platform::FolderListing listing;
    std::size_t next = 0;
    std::size_t pathSize = 0;
    std::size_t uriSize = 0;
};

}  // namespace

void Thumbnails::addFolder(const std::string& folder) {
    FileStatus status;
    const int looked = parts_.system.statusAt(SystemCalls::workingFolder, folder.c_str(),
                                              SystemCalls::Links::stay, status);
    if (isAbsent(looked)) return;
    if (looked >= 0 && status.kind == EntryKind::link) {
        parts_.obstacles.push_back({folder, Obstacle::Reason::insecure, "is a link"});
        return;
    }
    const int opened = parts_.system.openFolder(SystemCalls::workingFolder, folder.c_str());
    if (isAbsent(opened)) return;
    if (opened < 0) {
        parts_.obstacles.push_back(
            {folder, Obstacle::Reason::unreadable, std::generic_category().message(-opened)});
        return;
    }
    addNames(opened, folder, 0);
    parts_.system.close(opened);
}

void Thumbnails::addNames(int folder, const std::string& path, int depth) {
    platform::FolderListing listing;
    if (const int result = parts_.system.readFolder(folder, listing); result < 0) {
        parts_.obstacles.push_back(
            {path, Obstacle::Reason::unreadable, std::generic_category().message(-result)});
        return;
    }
    const auto number = static_cast<std::uint32_t>(folders_.size());
    folders_.push_back(path);
    for (std::size_t i = 0; i < listing.size(); ++i) {
        const char* name = listing.name(i);
        if (const auto digest = depth > 0 ? digestOf(name) : std::nullopt) {
            names_.push_back({*digest, number});
            isSorted_ = false;
            continue;
        }
        if (depth == deepest) continue;
        const std::string inside = path + "/" + name;
        FileStatus status;
        if (parts_.system.statusAt(folder, name, SystemCalls::Links::stay, status) < 0) continue;
        if (status.kind == EntryKind::link) {
            parts_.obstacles.push_back({inside, Obstacle::Reason::insecure, "is a link"});
        } else if (status.kind == EntryKind::folder) {
            const int next = parts_.system.openFolder(folder, name);
            if (next < 0) {
                parts_.obstacles.push_back(
                    {inside, Obstacle::Reason::unreadable, std::generic_category().message(-next)});
                continue;
            }
            addNames(next, inside, depth + 1);
            parts_.system.close(next);
        }
    }
}

void Thumbnails::sort() {
    if (!isSorted_) std::ranges::stable_sort(names_, {}, &Name::digest);
    isSorted_ = true;
}

void Thumbnails::findOf(const std::string& item, const std::function<bool()>& stop,
                        const Found& found) {
    if (areNone()) return;
    sort();
    lookUp(item, fileUri(item), found);
    FileStatus status;
    const int looked = parts_.system.statusAt(SystemCalls::workingFolder, item.c_str(),
                                              SystemCalls::Links::stay, status);
    if (looked >= 0 && status.kind == EntryKind::folder) findBelow(item, stop, found);
}

void Thumbnails::findBelow(const std::string& folder, const std::function<bool()>& stop,
                           const Found& found) {
    std::string path = folder;
    std::string uri = fileUri(folder);
    std::vector<Level> levels;
    const auto enter = [&] {
        const int opened = parts_.system.openFolder(SystemCalls::workingFolder, path.c_str());
        if (opened < 0) return;  // nothing in it can be taken either, or it is just going
        Level level{.listing = {}, .next = 0, .pathSize = path.size(), .uriSize = uri.size()};
        const int read = parts_.system.readFolder(opened, level.listing);
        parts_.system.close(opened);
        if (read >= 0) levels.push_back(std::move(level));
    };
    enter();
    while (!levels.empty() && !stop()) {
        Level& level = levels.back();
        path.resize(level.pathSize);
        uri.resize(level.uriSize);
        if (level.next == level.listing.size()) {
            levels.pop_back();
            continue;
        }
        const std::size_t number = level.next++;
        const EntryKind kind = level.listing.kind(number);
        const char* name = level.listing.name(number);
        path.append("/").append(name);
        uri += '/';
        addToUri(uri, name);
        lookUp(path, uri, found);
        // What is no folder is not opened as one.
        if (kind == EntryKind::folder || kind == EntryKind::unknown) enter();
    }
}

void Thumbnails::lookUp(const std::string& path, std::string_view uri, const Found& found) {
    const Md5Digest digest = md5(uri);
    for (auto name = std::ranges::lower_bound(names_, digest, {}, &Name::digest);
         name != names_.end() && name->digest == digest; ++name) {
        const int folder =
            parts_.system.openFolder(SystemCalls::workingFolder, folders_[name->folder].c_str());
        if (folder < 0) continue;  // it has just gone
        tell(folder, *name, path, found);
        parts_.system.close(folder);
    }
}

/// Tells of a thumbnail where it is the user's own file.
void Thumbnails::tell(int folder, const Name& name, const std::string& subject,
                      const Found& found) {
    const std::string file = hexOf(name.digest) + std::string(extension);
    const std::string path = folders_[name.folder] + "/" + file;
    FileStatus status;
    if (parts_.system.statusAt(folder, file.c_str(), SystemCalls::Links::stay, status) < 0) return;
    const auto refuse = [&](const char* detail) {
        parts_.obstacles.push_back({path, Obstacle::Reason::insecure, detail});
    };
    if (status.kind == EntryKind::link) return refuse("is a link");
    if (status.kind != EntryKind::regular) return refuse("is not a regular file");
    if (status.owner != parts_.system.effectiveUser()) return refuse("belongs to another user");
    found(path, status.size, subject);
}

void Thumbnails::findByText(Subjects& subjects, const std::function<bool()>& stop,
                            const Found& found) {
    sort();
    for (std::uint32_t number = 0; number < folders_.size(); ++number) {
        int folder = -1;
        for (const Name& name : names_) {
            if (name.folder != number) continue;
            if (stop()) break;
            if (folder < 0) {
                folder =
                    parts_.system.openFolder(SystemCalls::workingFolder, folders_[number].c_str());
            }
            if (folder < 0) break;
            const std::string file = hexOf(name.digest) + std::string(extension);
            const auto uri = thumbnailUri(parts_.calls, folder, file.c_str());
            const auto path = uri ? pathOfUri(*uri) : std::nullopt;
            const auto subject = path ? subjects.subjectOf(*path) : std::nullopt;
            if (subject) tell(folder, name, *subject, found);
        }
        if (folder >= 0) parts_.system.close(folder);
    }
}

}  // namespace dorvanel::mentions
