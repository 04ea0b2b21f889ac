#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/SystemCalls.h"

namespace dorvanel {

/// An entry of a folder as the walk meets it.
struct TreeEntry {
    int folder;        ///< descriptor of the folder that holds it
    const char* name;  ///< NUL-terminated bytes, good during the call
    platform::EntryKind kind;
};

/// What is done on a walk.
class TreeVisitor {
  public:
    virtual ~TreeVisitor() = default;
    /// Before what is in the entry. Returns the open folder to walk into, which the walk then owns,
    /// or a negative number to walk past.
    virtual int enter(const TreeEntry& entry) = 0;
    /// After what is in the entry; also for an entry that was walked past.
    virtual void leave(const TreeEntry& entry) = 0;
    /// A folder could not be listed, or the way back up to it was lost (errno): entries of it are
    /// missed. `relativePath` is relative to the walked folder, and empty for that one.
    virtual void missed(const std::string& relativePath, int code) = 0;
    /// Asked before each entry; true ends the walk at once, without leaving anything.
    virtual bool stops() = 0;
};

/// Walks a tree depth first, relative to open folders, each folder listed whole before anything in
/// it is changed. Any depth: the levels lie in a vector, and only the lowest few folders are kept
/// open; the way up goes by "..", checked to lead to the folder that it came from.
class TreeWalk {
  public:
    enum class Order {
        forward,  ///< entries as the file system lists them
        backward  ///< the other way round: `leave` calls come in reverse order of forward `enter`s
    };

    explicit TreeWalk(platform::SystemCalls& system);

    /// Walks what is in `folder`, an open descriptor that the walk takes over and closes.
    void walk(int folder, Order order, TreeVisitor& visitor);

    /// During a call of the visitor: the path of the entry at hand, relative to the walked folder.
    [[nodiscard]] std::string relativePath(const TreeEntry& entry) const;

    /// During `leave`: the folder that was walked into, whatever bears its name by now; null for an
    /// entry that was walked past.
    [[nodiscard]] const platform::FileStatus* walkedFolder() const {
        return walkedInto_ ? &levels_[depth_].identity : nullptr;
    }

  private:
    /// Folders kept open at a time, where the process is given descriptors enough; deeper walks
    /// close the upper ones.
    static constexpr int mostOpenFolders = 64;

    struct Level {
        platform::FolderListing listing;
        std::size_t done = 0;  ///< entries finished
        std::size_t current = 0;
        int folder = -1;  ///< -1 while closed
        platform::FileStatus identity;
    };

    [[nodiscard]] TreeEntry entryAt(const Level& level) const;
    bool descend(int folder, TreeVisitor& visitor);
    bool ascend(TreeVisitor& visitor);
    void closeAll();
    [[nodiscard]] std::string currentPath() const;

    platform::SystemCalls& system_;
    std::size_t openFolders_;
    bool walkedInto_ = false;    ///< the entry that is being left
    std::vector<Level> levels_;  ///< kept from walk to walk for their memory
    std::size_t depth_ = 0;      ///< levels in use
};

}  // namespace dorvanel
