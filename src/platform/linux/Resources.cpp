// SPDX-License-Identifier: MIT
#include "platform/Resources.h"

#include <filesystem>
#include <system_error>

namespace dorvanel::platform {

std::string resourcesFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return {};
    return (program.parent_path().parent_path() / "share" / "dorvanel-x").native();
}

}  // namespace dorvanel::platform
