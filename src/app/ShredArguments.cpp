// SPDX-License-Identifier: MIT
#include "app/ShredArguments.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>
#include <unordered_map>

#include "app/HeldTreeCheck.h"
#include "app/Texts.h"
#include "base/PathComponents.h"
#include "platform/FileManager.h"
#include "platform/MountPoints.h"

namespace dorvanel {
namespace {

namespace fs = std::filesystem;
using platform::EntryKind;
using platform::FileStatus;
using Links = platform::SystemCalls::Links;
using Inside = ShredArguments::Inside;

/// An argument on its way through the checks.
struct Candidate {
    std::string path;      ///< absolute; "" where a reason was found before
    std::string reason;    ///< why it is refused; "" for none
    std::size_t item = 0;  ///< which of the held ones it is
};

bool saysFolder(const std::string& argument) {
    return argument.ends_with('/');
}

std::string reasonOf(int code) {
    if (code == ENOENT) return tr("does not exist");
    return tr("cannot be looked at: {}", std::generic_category().message(code));
}

/// Turns arguments into absolute paths; keeps the last folder, since many arguments are of one.
class PathMaker {
  public:
    Candidate make(const std::string& argument) {
        if (argument.empty()) return {{}, tr("an empty name stands for nothing")};
        const std::string trimmed(withoutTrailingSlashes(argument));
        if (trimmed == "/") return {{}, tr("is the root of the file system")};
        const std::size_t slash = trimmed.rfind('/');
        const std::string name = trimmed.substr(slash + 1);  // npos + 1 is 0
        if (name == "." || name == "..") return {{}, tr("is never shredded")};

        const std::string folder = slash == std::string::npos ? "."
                                   : slash == 0               ? "/"
                                                              : trimmed.substr(0, slash);
        if (folder_ != folder) {
            std::error_code error;
            canonical_ = fs::canonical(folder, error);
            if (error) return {{}, reasonOf(error.value())};
            folder_ = folder;
        }
        return {canonical_ / name, {}};
    }

  private:
    std::string folder_;
    fs::path canonical_;
};

/// Every folder on the way to the home folder, and links among them, as they stand and as they
/// lead: the home folder hangs on them.
class HomeFolders {
  public:
    HomeFolders(const std::string& home, platform::SystemCalls& system) {
        if (home.empty()) return;
        std::error_code error;
        const fs::path absolute = fs::absolute(home, error);
        add(absolute, system);
        add(fs::weakly_canonical(absolute, error), system);
    }

    [[nodiscard]] bool includePath(const std::string& path) const {
        return std::find(paths_.begin(), paths_.end(), path) != paths_.end();
    }

    std::vector<Identity> identities;

  private:
    void add(const fs::path& home, platform::SystemCalls& system) {
        fs::path way;
        for (const fs::path& component : home) {
            way /= component;
            for (const Links links : {Links::stay, Links::follow}) {
                FileStatus status;
                const int result = system.statusAt(platform::SystemCalls::workingFolder,
                                                   way.c_str(), links, status);
                if (result >= 0) identities.push_back(Identity::of(status));
            }
            paths_.push_back(way.lexically_normal());
        }
    }

    std::vector<std::string> paths_;
};

/// Says of items that are held why they must not be shredded.
class Judge {
  public:
    Judge(const HomeFolders& home, const std::vector<std::string>& mountPoints,
          platform::SystemCalls& system, const std::function<bool()>& stop, Inside inside)
        : home_(home),
          mountPoints_(mountPoints),
          system_(system),
          inside_(inside),
          tree_(system, home.identities, stop) {}

    std::optional<std::string> refuse(const HeldItem& item, bool asFolder) {
        if (!item.isThere()) return reasonOf(item.code);
        const bool isLink = item.status.kind == EntryKind::link;
        if (isLink && item.links == Links::follow) {
            if (std::optional<std::string> reason = refuseLink(item, asFolder)) return reason;
        } else if (item.code != 0) {
            return reasonOf(item.code);
        } else if (asFolder && item.status.kind != EntryKind::folder) {
            return reasonOf(ENOTDIR);
        }
        if (home_.includePath(item.path) || tree_.isProtected(item.status)) {
            return tr("is the home folder or a folder above it");
        }
        if (isLink) return std::nullopt;
        if (std::optional<std::string> reason = refuseMountPoint(item)) return reason;
        const bool isWalked = item.status.kind == EntryKind::folder && inside_ == Inside::checked;
        return isWalked ? tree_.refuse(item) : std::nullopt;
    }

  private:
    std::optional<std::string> refuseLink(const HeldItem& item, bool asFolder) const {
        if (item.code == ELOOP) return tr("is a symbolic link that leads in a circle");
        if (item.code != 0) {
            std::error_code error;
            const std::string text = fs::read_symlink(item.path, error);
            if (item.code == ENOENT) {
                return tr("is a symbolic link to \"{}\", which does not exist", text);
            }
            return tr("is a symbolic link to \"{}\": {}", text,
                      std::generic_category().message(item.code));
        }
        FileStatus target;
        const int result = system_.statusAt(platform::SystemCalls::workingFolder, item.path.c_str(),
                                            Links::follow, target);
        if (result < 0) return reasonOf(-result);
        if (asFolder && target.kind != EntryKind::folder) return reasonOf(ENOTDIR);
        return std::nullopt;
    }

    /// By the system's table, which knows mounted files too, and by where the item really is.
    [[nodiscard]] std::optional<std::string> refuseMountPoint(const HeldItem& item) const {
        for (const std::string& point : mountPoints_) {
            if (point == item.path) return tr("is a mount point");
            if (point.size() > item.path.size() && point[item.path.size()] == '/' &&
                point.starts_with(item.path)) {
                return tr("holds the mount point \"{}\"", point);
            }
        }
        if (item.status.isBeyondMountOf(item.parentStatus)) return tr("is a mount point");
        return std::nullopt;
    }

    const HomeFolders& home_;
    const std::vector<std::string>& mountPoints_;
    platform::SystemCalls& system_;
    Inside inside_;
    HeldTreeCheck tree_;
};

}  // namespace

std::vector<std::string> ShredArguments::paths() const {
    std::vector<std::string> all;
    for (const HeldItem& item : items) all.push_back(item.path);
    return all;
}

ShredArguments checkShredArguments(const std::vector<std::string>& arguments,
                                   const std::string& home,
                                   const std::vector<std::string>& mountPoints,
                                   platform::SystemCalls& system, Links links,
                                   const std::function<bool()>& stop, Inside inside) {
    std::vector<Candidate> candidates;
    std::vector<std::string> paths;
    std::unordered_map<std::string, std::size_t> known;
    candidates.reserve(arguments.size());
    paths.reserve(arguments.size());
    known.reserve(arguments.size());
    PathMaker maker;
    for (const std::string& argument : arguments) {
        Candidate& candidate = candidates.emplace_back(maker.make(argument));
        if (!candidate.reason.empty()) continue;
        const auto [entry, isNew] = known.try_emplace(candidate.path, paths.size());
        candidate.item = entry->second;
        if (isNew) paths.push_back(candidate.path);
    }

    // From here on each item is the one that is held, whatever its path may lead to.
    std::vector<HeldItem> held = holdAll(system, paths, links);
    std::vector<bool> refused(held.size());
    ShredArguments checked;
    HomeFolders homeFolders(home, system);
    Judge judge(homeFolders, mountPoints, system, stop, inside);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (stop && stop()) return {};
        std::string reason = candidates[i].reason;
        if (reason.empty()) {
            const std::size_t item = candidates[i].item;
            reason = judge.refuse(held[item], saysFolder(arguments[i])).value_or("");
            if (!reason.empty()) refused[item] = true;
        }
        if (!reason.empty()) checked.complaints.push_back({arguments[i], reason});
    }
    if (stop && stop()) return {};  // what was looked into last may not be known to its end
    checked.items.reserve(held.size());
    for (std::size_t i = 0; i < held.size(); ++i) {
        if (!refused[i]) checked.items.push_back(std::move(held[i]));
    }
    checked.protectedFolders = std::move(homeFolders.identities);
    return checked;
}

Result<ShredArguments> checkShredArguments(const std::vector<std::string>& arguments,
                                           platform::SystemCalls& system, Links links,
                                           const std::function<bool()>& stop, Inside inside) {
    const Result<std::vector<std::string>> mounted = platform::mountPoints();
    if (!mounted) return mounted.error();
    return checkShredArguments(arguments, platform::homeDirectory(), mounted.value(), system, links,
                               stop, inside);
}

}  // namespace dorvanel
