// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Result.h"
#include "platform/FolderLock.h"

namespace dorvanel::platform {

/// Puts a file of these bytes (mode 0600) in the place of `path`, so that at any moment, a crash of
/// the machine included, either the old or the new file is there, whole: a new file
/// ".NAME.new" in the same folder, flushed, renamed over `path`, and the folder flushed. A file of
/// that name, left by a process that was killed, is removed first. On failure `path` is as it was
/// and the temporary file is gone; only when the folder's own flush failed is the new file in place
/// already. Written by root, the file belongs to the owner of the folder. `lock` is the folder's:
/// where it is not held, the temporary name has the number of the process in it.
Result<Done> replaceFile(const std::string& path, std::string_view bytes, const FolderLock& lock);

/// Renames `path` to a name beside it that is not taken, "NAME (damaged N)", and returns the new
/// path.
Result<std::string> setFileAside(const std::string& path);

/// The bytes of a regular file; nothing where there is no file. More than `limit` bytes are not
/// read: the result is then longer than `limit`, cut. A link below the folder `linksUpTo` is
/// refused; where that is empty, links are followed.
Result<std::optional<std::string>> readWholeFile(const std::string& path, std::size_t limit,
                                                 const std::string& linksUpTo = {});

/// `path` with symbolic links at its end followed, also where they lead to nothing yet.
std::string followingLinks(const std::string& path);

}  // namespace dorvanel::platform
