// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace dorvanel::mentions {

/// Calls `visit` with the path and with each folder above it but "/", from the longest on, until it
/// says true; whether it did.
template <typename Visit>
bool forEachAbove(std::string_view path, Visit visit) {
    while (path.size() > 1 && path.front() == '/') {
        if (visit(path)) return true;
        path = path.substr(0, path.rfind('/'));
    }
    return false;
}

/// A set of paths that is asked by parts of a text.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>{}(text);
    }
};
using PathSet = std::unordered_set<std::string, TextHash, std::equal_to<>>;

/// The items whose mentions are looked for: files, and folders with all that is in them.
class Subjects {
  public:
    /// Absolute paths whose folders are free of links.
    explicit Subjects(const std::vector<std::string>& items);

    /// The path by which the program knows what is mentioned as `path`, where that is an item or
    /// lies in one; it may be mentioned by a way with links in it. A way that has been found once
    /// is known from then on, also when it leads nowhere any more.
    std::optional<std::string> subjectOf(const std::string& path);

  private:
    /// A folder's path without links; "" where it leads nowhere.
    const std::string& withoutLinks(std::string_view folder);

    PathSet items_;
    PathSet names_;  ///< of the items, without their folders
    std::unordered_map<std::string, std::string> folders_;
};

/// Tells what is gone, once items have been shredded.
class Remains {
  public:
    /// `left`: where that lay, before it was moved, which is still there somewhere.
    explicit Remains(const std::vector<std::string>& left);

    /// Whether there may still be something of what lay under this path, wherever it is now.
    [[nodiscard]] bool include(const std::string& path) const;

  private:
    PathSet left_;
    PathSet above_;  ///< folders that lead to them
};

}  // namespace dorvanel::mentions
