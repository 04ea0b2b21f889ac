// SPDX-License-Identifier: MIT
#include "base/ItemPath.h"

#include "base/PathComponents.h"

namespace dorvanel {

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
