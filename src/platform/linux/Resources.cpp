// SPDX-License-Identifier: MIT
#include "platform/Resources.h"

#include <filesystem>
#include <system_error>

namespace dorvanel::platform {

namespace {

/// A folder of ../share as seen from the program's own folder.
std::string shared(const char* name) {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return {};
    return (program.parent_path().parent_path() / "share" / name).native();
}

}  // namespace

std::string resourcesFolder() {
    return shared("dorvanel-x");
}

std::string catalogueFolder() {
    return shared("dorvanel/applications");
}

std::string translationsFolder() {
    return shared("locale");
}

}  // namespace dorvanel::platform
