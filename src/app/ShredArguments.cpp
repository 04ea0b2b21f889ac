#include "app/ShredArguments.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>
#include <unordered_set>

namespace dorvanel {
namespace {

namespace fs = std::filesystem;
using platform::EntryKind;
using platform::FileStatus;
using Links = platform::SystemCalls::Links;

/// Looks at paths; keeps what must never be shredded because the home folder hangs on it.
class Checker {
  public:
    Checker(const std::string& home, const std::vector<std::string>& mountPoints,
            platform::SystemCalls& system)
        : mountPoints_(mountPoints), system_(system) {
        if (home.empty()) return;
        std::error_code error;
        const fs::path absolute = fs::absolute(home, error);
        protect(absolute);
        protect(fs::weakly_canonical(absolute, error));
    }

    /// The reason to refuse `argument`, or none and `path` is what it stands for.
    std::optional<std::string> refuse(const std::string& argument, std::string& path) const {
        if (argument.empty()) return "an empty name stands for nothing";
        std::string trimmed = argument;
        while (trimmed.ends_with('/')) trimmed.pop_back();
        if (trimmed.empty()) return "is the root of the file system";
        const std::size_t slash = trimmed.rfind('/');
        const std::string name = trimmed.substr(slash + 1);  // npos + 1 is 0
        if (name == "." || name == "..") return "is never shredded";

        const std::string folder = slash == std::string::npos ? "."
                                   : slash == 0               ? "/"
                                                              : trimmed.substr(0, slash);
        std::error_code error;
        path = fs::canonical(folder, error) / name;
        if (error) return reasonOf(error.value());
        FileStatus status;
        if (const int result = look(path, Links::stay, status); result < 0)
            return reasonOf(-result);
        const bool saysFolder = trimmed.size() != argument.size();
        if (status.kind == EntryKind::link) {
            if (std::optional<std::string> reason = refuseLink(path, saysFolder)) return reason;
        } else if (saysFolder && status.kind != EntryKind::folder) {
            return reasonOf(ENOTDIR);
        }
        if (holdsHome(path, status)) return "is the home folder or a folder above it";
        return status.kind == EntryKind::link ? std::nullopt : refuseMountPoint(path);
    }

  private:
    int look(const std::string& path, Links links, FileStatus& status) const {
        return system_.statusAt(platform::SystemCalls::workingFolder, path.c_str(), links, status);
    }

    /// Every folder on the way to `path`, and links among them, as they stand and as they lead.
    void protect(const fs::path& path) {
        fs::path way;
        for (const fs::path& component : path) {
            way /= component;
            for (const Links links : {Links::stay, Links::follow}) {
                FileStatus status;
                if (look(way, links, status) >= 0) protected_.push_back(status);
            }
            protectedPaths_.push_back(way.lexically_normal());
        }
    }

    bool holdsHome(const std::string& path, const FileStatus& status) const {
        return std::find(protectedPaths_.begin(), protectedPaths_.end(), path) !=
                   protectedPaths_.end() ||
               std::any_of(protected_.begin(), protected_.end(),
                           [&](const FileStatus& other) { return other.isSameAs(status); });
    }

    std::optional<std::string> refuseLink(const std::string& path, bool saysFolder) const {
        FileStatus target;
        const int result = look(path, Links::follow, target);
        if (result == -ELOOP) return "is a symbolic link that leads in a circle";
        if (result < 0) {
            std::error_code error;
            const std::string text = fs::read_symlink(path, error);
            const std::string reason = std::generic_category().message(-result);
            if (result == -ENOENT) {
                return "is a symbolic link to \"" + text + "\", which does not exist";
            }
            return "is a symbolic link to \"" + text + "\": " + reason;
        }
        if (saysFolder && target.kind != EntryKind::folder) return reasonOf(ENOTDIR);
        return std::nullopt;
    }

    std::optional<std::string> refuseMountPoint(const std::string& path) const {
        for (const std::string& point : mountPoints_) {
            if (point == path) return "is a mount point";
            if (point.starts_with(path + "/")) return "holds the mount point \"" + point + "\"";
        }
        return std::nullopt;
    }

    static std::string reasonOf(int code) {
        if (code == ENOENT) return "does not exist";
        return "cannot be looked at: " + std::generic_category().message(code);
    }

    const std::vector<std::string>& mountPoints_;
    platform::SystemCalls& system_;
    std::vector<FileStatus> protected_;
    std::vector<std::string> protectedPaths_;
};

}  // namespace

ShredArguments checkShredArguments(const std::vector<std::string>& arguments,
                                   const std::string& home,
                                   const std::vector<std::string>& mountPoints,
                                   platform::SystemCalls& system) {
    const Checker checker(home, mountPoints, system);
    ShredArguments checked;
    std::unordered_set<std::string> known;
    for (const std::string& argument : arguments) {
        std::string path;
        if (const std::optional<std::string> reason = checker.refuse(argument, path)) {
            checked.complaints.push_back({argument, *reason});
        } else if (known.insert(path).second) {
            checked.paths.push_back(path);
        }
    }
    return checked;
}

}  // namespace dorvanel
