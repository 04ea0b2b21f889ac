// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SystemCalls.h"
#include "targets/traces/Obstacle.h"

namespace dorvanel::traces {

/// One component of a path to look for.
struct Component {
    std::string text;
    bool isLiteral = false;  ///< "*" and "?" are what they are: the name of a profile, say
};

/// The components of a relative path, in order.
std::vector<Component> componentsOf(std::string_view path, bool areLiteral);

/// Something that was found.
struct FoundPath {
    std::string path;
    platform::EntryKind kind = platform::EntryKind::unknown;  ///< a link is a link
};

/// Finds what is there below a root. No link below it is followed: one at the end is found as a
/// link, one on the way is an obstacle. Touches nothing.
class PathFinder {
  public:
    /// Both must outlive the finder.
    PathFinder(platform::SystemCalls& system, std::vector<Obstacle>& obstacles)
        : system_(system), obstacles_(obstacles) {}

    /// All that the components describe, by name. `root` is the path of a folder without links; no
    /// components describe the root itself.
    std::vector<FoundPath> find(const std::string& root, const std::vector<Component>& components);

    /// Whether there is a folder; what is on the way is an obstacle as above, and so is a link.
    bool isFolder(const std::string& root, const std::vector<Component>& components) {
        return isThere(root, components, platform::EntryKind::folder);
    }
    /// The same for a plain file.
    bool isFile(const std::string& root, const std::vector<Component>& components) {
        return isThere(root, components, platform::EntryKind::regular);
    }

  private:
    bool isThere(const std::string& root, const std::vector<Component>& components,
                 platform::EntryKind kind);
    void lookIn(int folder, const std::string& path, std::size_t number);
    void lookAt(int folder, const std::string& path, std::size_t number, const char* name);
    void meets(const std::string& path, int code);

    platform::SystemCalls& system_;
    std::vector<Obstacle>& obstacles_;
    const std::vector<Component>* components_ = nullptr;
    std::vector<FoundPath> found_;
};

}  // namespace dorvanel::traces
