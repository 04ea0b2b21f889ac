// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace dorvanel::platform {

/// The file manager as everything but the shredding engine uses it: whole paths, in bytes.
/// Results say success; reasons are not told, as nobody above asks for them. Main thread.
class FileManager {
  public:
    virtual ~FileManager() = default;

    /// Follows links: a link to nothing does not exist.
    [[nodiscard]] virtual bool fileExistsAtPath(const std::string& path) const = 0;
    /// Whether `path` is a folder, links followed.
    [[nodiscard]] virtual bool isDirectoryAtPath(const std::string& path) const = 0;
    /// The entries of a folder, one level, in the file system's own order, without "." and "..";
    /// empty when it cannot be read.
    [[nodiscard]] virtual std::vector<std::string> directoryContentsAtPath(
        const std::string& path) const = 0;
    /// Renames; false, and nothing changed, when `from` is missing or `to` already exists.
    virtual bool movePath(const std::string& from, const std::string& to) = 0;
    /// Copies a file or a whole folder (links as links), with the modes, and as root with the
    /// owners, of the originals; false when `to` exists or a part could not be copied, and then
    /// nothing is left at `to`.
    virtual bool copyPath(const std::string& from, const std::string& to) = 0;
};

/// The real file manager; lives as long as the process.
FileManager& defaultFileManager();

/// The user's home folder: HOME, else the password database's, else "".
std::string homeDirectory();

/// Where programs keep what they know from one start to the next: XDG_STATE_HOME where that is an
/// absolute path, else ".local/state" in the home folder; "" without one.
std::string stateFolder();

/// `path` with a leading "~" replaced by the home folder; any other path as it stands.
std::string expandingTilde(const std::string& path);

}  // namespace dorvanel::platform
