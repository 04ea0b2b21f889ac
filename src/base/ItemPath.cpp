#include "base/ItemPath.h"

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
    path.resize(slash);
    while (path.ends_with('/')) path.pop_back();
    if (path.empty()) path.push_back('/');
    folder = std::move(path);
}

}  // namespace dorvanel
