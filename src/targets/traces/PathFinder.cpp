// SPDX-License-Identifier: MIT
#include "targets/traces/PathFinder.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/FolderListing.h"
#include "targets/traces/NamePattern.h"

namespace dorvanel::traces {
namespace {

using platform::EntryKind;
using platform::SystemCalls;

constexpr const char* isLink = "is a link, which is not followed";

}  // namespace

std::vector<Component> componentsOf(std::string_view path, bool areLiteral) {
    std::vector<Component> components;
    while (!path.empty()) {
        const std::size_t slash = path.find('/');
        components.push_back({std::string(path.substr(0, slash)), areLiteral});
        path.remove_prefix(slash == std::string_view::npos ? path.size() : slash + 1);
    }
    return components;
}

std::vector<FoundPath> PathFinder::find(const std::string& root,
                                        const std::vector<Component>& components) {
    found_.clear();
    if (components.empty()) return {{root, EntryKind::folder}};
    components_ = &components;
    const int folder = system_.openFolder(SystemCalls::workingFolder, root.c_str());
    if (folder < 0) {
        meets(root, -folder);
        return {};
    }
    lookIn(folder, root, 0);
    system_.close(folder);
    std::ranges::sort(found_, {}, &FoundPath::path);
    return std::exchange(found_, {});
}

bool PathFinder::isThere(const std::string& root, const std::vector<Component>& components,
                         EntryKind kind) {
    const std::vector<FoundPath> found = find(root, components);
    if (found.empty()) return false;
    if (found.front().kind == EntryKind::link) {
        obstacles_.push_back({found.front().path, isLink});
    }
    return found.front().kind == kind;
}

/// Looks for component `number` in an open folder.
void PathFinder::lookIn(int folder, const std::string& path, std::size_t number) {
    const Component& component = (*components_)[number];
    if (component.isLiteral || !isNamePattern(component.text)) {
        return lookAt(folder, path, number, component.text.c_str());
    }
    platform::FolderListing listing;
    if (const int result = system_.readFolder(folder, listing); result < 0) {
        return meets(path, -result);
    }
    for (std::size_t i = 0; i < listing.size(); ++i) {
        if (matchesName(component.text, listing.name(i))) {
            lookAt(folder, path, number, listing.name(i));
        }
    }
}

void PathFinder::lookAt(int folder, const std::string& path, std::size_t number, const char* name) {
    const std::string found = path + "/" + name;
    platform::FileStatus status;
    const int result = system_.statusAt(folder, name, SystemCalls::Links::stay, status);
    if (result < 0) return meets(found, -result);
    if (number + 1 == components_->size()) {
        found_.push_back({found, status.kind});
    } else if (status.kind == EntryKind::link) {
        obstacles_.push_back({found, isLink});
    } else if (status.kind == EntryKind::folder) {
        const int next = system_.openFolder(folder, name);
        if (next < 0) return meets(found, -next);
        lookIn(next, found, number + 1);
        system_.close(next);
    }
}

void PathFinder::meets(const std::string& path, int code) {
    if (code == ENOENT || code == ENOTDIR) return;  // nothing there
    obstacles_.push_back({path, std::generic_category().message(code)});
}

}  // namespace dorvanel::traces
