// SPDX-License-Identifier: MIT
#include "platform/linux/OpenWithoutLinks.h"

#include <fcntl.h>

#include <cerrno>
#include <string_view>
#include <utility>

#include "platform/linux/FileDescriptor.h"

namespace dorvanel::platform {

int openWithoutLinks(const std::string& folder, const std::string& path, int flags, int mode) {
    if (!path.starts_with(folder + "/")) {
        errno = EINVAL;
        return -1;
    }
    FileDescriptor at(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    std::string_view rest = std::string_view(path).substr(folder.size() + 1);
    while (at.isOpen()) {
        while (rest.starts_with('/')) rest.remove_prefix(1);
        const std::string name(rest.substr(0, rest.find('/')));
        rest.remove_prefix(name.size());
        if (name.empty() || name == "..") {
            errno = EINVAL;
            return -1;
        }
        if (rest.empty()) return ::openat(at.get(), name.c_str(), flags | O_NOFOLLOW, mode);
        constexpr int folderFlags = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
        at = FileDescriptor(::openat(at.get(), name.c_str(), folderFlags));
    }
    return -1;
}

}  // namespace dorvanel::platform
