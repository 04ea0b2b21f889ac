// SPDX-License-Identifier: MIT
#include "targets/traces/HomeRoot.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/FileManager.h"

namespace dorvanel::traces {
namespace {

struct Variable {
    std::string_view name;
    std::string_view standard;  ///< below the home folder, where the variable says nothing
};

/// As the desktops of freedesktop.org agreed on them.
constexpr Variable variables[] = {{"XDG_CONFIG_HOME", "/.config"},
                                  {"XDG_CACHE_HOME", "/.cache"},
                                  {"XDG_DATA_HOME", "/.local/share"},
                                  {"XDG_STATE_HOME", "/.local/state"}};

/// "$XDG_CACHE_HOME/lynx" and "~/lynx" as paths; "" for anything else.
std::string written(const std::string& root) {
    const std::string home = platform::homeDirectory();
    if (root.starts_with("~/")) return home + root.substr(1);
    for (const Variable& variable : variables) {
        if (!root.starts_with("$" + std::string(variable.name))) continue;
        const char* set = std::getenv(variable.name.data());
        // A relative path is none, as they agreed too.
        const bool isSet = set != nullptr && set[0] == '/';
        return (isSet ? set : home + std::string(variable.standard)) +
               root.substr(variable.name.size() + 1);
    }
    return {};
}

std::string withoutLinks(const std::string& path) {
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? std::string() : real.native();
}

}  // namespace

std::string realHome() {
    const std::string home = platform::homeDirectory();
    return home.starts_with('/') ? withoutLinks(home) : std::string();
}

std::string pathBelow(const std::string& path, const std::string& above) {
    const bool isBelow =
        !above.empty() && path.size() > above.size() + 1 && path.starts_with(above + "/");
    return isBelow ? path.substr(above.size() + 1) : std::string();
}

std::string homeRoot(const std::string& root) {
    const std::string real = withoutLinks(written(root));
    return pathBelow(real, realHome()).empty() ? std::string() : real;
}

}  // namespace dorvanel::traces
