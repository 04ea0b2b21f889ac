// SPDX-License-Identifier: MIT
#include "platform/LogFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>

#include "platform/FileManager.h"
#include "platform/UserSwitch.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/OpenWithoutLinks.h"

namespace dorvanel::platform {
namespace {

Error refusal(const std::string& path, const char* reason) {
    return Error{0, "open", path, reason};
}

/// Why the file must not be emptied; nothing where it may be.
std::optional<Error> refusalOf(const struct stat& file, const std::string& path) {
    if (!S_ISREG(file.st_mode)) return refusal(path, "not a regular file");
    if (file.st_nlink > 1 && file.st_uid != ::geteuid()) {
        return refusal(path, "a file of somebody else, with other names");
    }
    return std::nullopt;
}

/// Opens the file of a path; no link at all is followed where root works in another's home, and
/// none at the end anywhere.
class Opening {
  public:
    explicit Opening(const std::string& path)
        : path_(path), home_(isRootInAnothersHome() ? homeDirectory() : std::string()) {}

    [[nodiscard]] bool mayFollowLinks() const { return home_.empty(); }
    [[nodiscard]] FileDescriptor open(int flags) const {
        constexpr mode_t mode = 0666;  // less the umask, until it is opened to everybody
        if (mayFollowLinks())
            return FileDescriptor(::open(path_.c_str(), flags | O_NOFOLLOW, mode));
        return FileDescriptor(openWithoutLinks(home_, path_, flags, mode));
    }

  private:
    const std::string& path_;
    std::string home_;
};

/// Where the user's own link at the path leads; the path itself where it is no link.
Result<std::string> pastOwnLink(const std::string& path) {
    const FileDescriptor link(::open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    if (!link.isOpen() && errno == ENOENT) return path;
    struct stat status {};
    if (!link.isOpen() || ::fstat(link.get(), &status) != 0) return Error::fromErrno("open", path);
    if (!S_ISLNK(status.st_mode)) return path;
    if (status.st_uid != ::geteuid()) return refusal(path, "a link that somebody else made");
    std::string target(4096, '\0');  // PATH_MAX
    const ssize_t length = ::readlinkat(link.get(), "", target.data(), target.size());
    if (length < 0) return Error::fromErrno("open", path);
    target.resize(static_cast<std::size_t>(length));
    return (std::filesystem::path(path).parent_path() / target).native();
}

/// Follows the user's own links to the file that is meant.
Result<std::string> pastOwnLinks(std::string path) {
    constexpr int maximumLinks = 40;  // as many as the system itself follows
    for (int i = 0; i < maximumLinks; ++i) {
        Result<std::string> next = pastOwnLink(path);
        if (!next || next.value() == path) return next;
        path = next.value();
    }
    return Error{ELOOP, "open", path, {}};
}

}  // namespace

Result<std::FILE*> openLogFile(const std::string& path) {
    std::string end = path;
    if (Opening(path).mayFollowLinks()) {
        const Result<std::string> followed = pastOwnLinks(path);
        if (!followed) return followed.error();
        end = followed.value();
    }
    const Opening opening(end);
    struct stat status {};
    // Looked at before it is opened, since opening alone moves a tape or resets a line.
    if (const FileDescriptor there = opening.open(O_PATH | O_CLOEXEC); there.isOpen()) {
        if (::fstat(there.get(), &status) != 0) return Error::fromErrno("open", end);
        if (const auto refused = refusalOf(status, end)) return *refused;
    }
    FileDescriptor file = opening.open(O_WRONLY | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0) return Error::fromErrno("open", end);
    if (const auto refused = refusalOf(status, end)) return *refused;
    if (::ftruncate(file.get(), 0) != 0) return Error::fromErrno("empty", end);
    // Nobody is told when this fails: somebody else's log is written as long as that is allowed.
    [[maybe_unused]] const int ignored = ::fchmod(file.get(), 0777);
    std::FILE* stream = ::fdopen(file.get(), "w");
    if (stream == nullptr) return Error::fromErrno("open", end);
    file.release();
    return stream;
}

}  // namespace dorvanel::platform
