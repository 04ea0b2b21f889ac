// SPDX-License-Identifier: MIT
#include "base/PathComponents.h"

#include <utility>

namespace dorvanel {

std::string_view withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
    return path;
}

std::string appendingPathComponent(std::string_view path, std::string_view component) {
    while (component.starts_with('/')) component.remove_prefix(1);
    path = withoutTrailingSlashes(path);
    if (component.empty()) return std::string(path);
    std::string joined(path);
    if (!joined.ends_with('/')) joined += '/';
    joined += withoutTrailingSlashes(component);
    return joined;
}

std::string appendingPathExtension(std::string_view path, std::string_view extension) {
    std::string extended(path);
    extended += '.';
    extended += extension;
    return extended;
}

std::string pathExtension(std::string_view name) {
    const std::size_t stop = name.rfind('.');
    return stop == std::string_view::npos ? std::string() : std::string(name.substr(stop + 1));
}

ItemPath::ItemPath(std::string path) {
    while (path.size() > 1 && (path.ends_with('/') || path.ends_with("/."))) path.pop_back();
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        folder.push_back('.');
        name = std::move(path);
        return;
    }
    name = path.substr(slash + 1);
    folder = withoutTrailingSlashes(std::string_view(path).substr(0, slash + 1));
}

}  // namespace dorvanel
