// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SystemCalls.h"

/// The trash of a desktop: in each of its folders what was put there lies in "files", what is known
/// of it in "info", sizes of folders in "directorysizes", and what could not be removed from it in
/// "expunged".
namespace dorvanel::trash {

/// One of the user's trash folders, as it was when it was looked at.
struct TrashFolder {
    std::string path;               ///< without links
    platform::FileStatus status;    ///< its own
    platform::FileStatus files;     ///< of kind unknown where there is none
    platform::FileStatus expunged;  ///< likewise
    platform::FileStatus info;      ///< likewise

    [[nodiscard]] std::string filesPath() const { return path + "/files"; }
    [[nodiscard]] std::string expungedPath() const { return path + "/expunged"; }
    [[nodiscard]] std::string infoPath() const { return path + "/info"; }
    [[nodiscard]] std::string sizesPath() const { return path + "/directorysizes"; }
    /// Of the item of this name in "files".
    [[nodiscard]] std::string infoPathOf(const std::string& name) const {
        return infoPath() + "/" + name + std::string(infoExtension);
    }
    static constexpr std::string_view infoExtension = ".trashinfo";
};

/// A trash folder, or a part of one, that is left as it is.
struct Refusal {
    std::string path;
    bool isInsecure = true;  ///< others could have planted it; else it cannot be looked at
    std::string reason;
};

struct FoundTrash {
    std::vector<TrashFolder> folders;
    std::vector<Refusal> refused;
};

/// The trash folder at this path where it is a real folder of this user's and so is what is in it.
/// Nothing is found, and nothing refused, where there is none.
void addTrashFolder(platform::SystemCalls& system, const std::string& path, bool mayOthersWrite,
                    FoundTrash& found);

/// The trash of the home folder, in `dataFolder` ("" for none), and those of the user on what is
/// mounted at these points: ".Trash/UID", where ".Trash" is a real folder with the sticky bit, and
/// ".Trash-UID". Each once, by whatever mounts it is seen. Touches nothing.
FoundTrash findTrashFolders(platform::SystemCalls& system, const std::string& dataFolder,
                            const std::vector<std::string>& mountPoints);

/// The trash folder in whose "files" the path of an item lies directly, by its place and name
/// alone: `home` is that of the home folder. "" where it lies in none.
std::string trashFolderOf(const std::string& item, const std::string& home, std::uint32_t user);
/// Whether a folder of this path is a trash folder, by its place and name alone.
bool isTrashFolder(const std::string& path, const std::string& home, std::uint32_t user);

}  // namespace dorvanel::trash
