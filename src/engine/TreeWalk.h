// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/SystemCalls.h"

namespace dorvanel {

/// An entry of a folder as the walk meets it.
struct TreeEntry {
    int folder;        ///< descriptor of the folder that holds it
    const char* name;  ///< NUL-terminated bytes, good during the call
    platform::EntryKind kind;
    const platform::FileStatus* in;  ///< that folder's status, good during the call
    std::uint64_t inode = 0;         ///< its number as the folder was listed; 0: not known
};

/// What is done on a walk.
class TreeVisitor {
  public:
    virtual ~TreeVisitor() = default;
    /// Before what is in the entry. Returns the open folder to walk into, which the walk then owns,
    /// or a negative number to walk past.
    virtual int enter(const TreeEntry& entry) = 0;
    /// The folder that `enter` opened, and what it is. False walks past it; the walk closes it.
    virtual bool walksInto(const TreeEntry& entry, int folder,
                           const platform::FileStatus& found) = 0;
    /// A folder was listed and is about to be walked.
    virtual void listed(const platform::FileStatus& /*folder*/,
                        const platform::FolderListing& /*listing*/) {}
    /// After what is in the entry; also for an entry that was walked past.
    virtual void leave(const TreeEntry& entry) = 0;
    /// A folder could not be listed, or the way back up to it was lost (errno): entries of it are
    /// missed. `relativePath` is relative to the walked folder, and empty for that one.
    virtual void missed(const std::string& relativePath, int code) = 0;
    /// Asked before each entry; true ends the walk at once, without leaving anything.
    virtual bool stops() = 0;
    /// Asked when the walk needs an open folder no longer; true takes it over.
    virtual bool keeps(int /*folder*/) { return false; }
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

    /// Walks one entry of a folder, and what is in it, as if the folder held nothing else. The
    /// descriptor stays the caller's.
    void walkEntry(const TreeEntry& entry, Order order, TreeVisitor& visitor);

    /// During a call of the visitor: the path of the entry at hand, relative to the walked folder.
    [[nodiscard]] std::string relativePath(const TreeEntry& entry) const;

    /// During `listed`: what to put before a name of that folder for the path of the entry.
    [[nodiscard]] std::string listedPath() const { return depth_ == 0 ? "" : currentPath() + "/"; }

    /// During a call of the visitor: the path of the folder that holds the entry at hand, with a
    /// slash before it; empty for the walked folder, and where it lies so deep that its path would
    /// help nobody.
    [[nodiscard]] std::string folderSuffix() const;

    /// Whether it lies so deep.
    [[nodiscard]] bool isDeep() const { return depth_ > deepestPath; }

    /// During `leave`: whether the entry was walked into.
    [[nodiscard]] bool walkedInto() const { return walkedInto_; }

    /// Whether the last walk ended since the way back up to a folder was lost: what that one and
    /// those above it hold was not met, or not left.
    [[nodiscard]] bool isLost() const { return isLost_; }

    /// Gives back the memory that walks have used.
    void releaseMemory() { levels_ = {}; }

  private:
    /// Folders kept open at a time, where the process is given descriptors enough; deeper walks
    /// close the upper ones.
    static constexpr int mostOpenFolders = 64;
    static constexpr std::size_t deepestPath = 64;

    struct Level {
        platform::FolderListing listing;
        std::size_t done = 0;  ///< entries finished
        std::size_t current = 0;
        int folder = -1;        ///< -1 while closed
        bool borrowed = false;  ///< the caller's to close
        platform::FileStatus identity;
    };

    [[nodiscard]] TreeEntry entryAt(const Level& level) const;
    Level& nextLevel();
    void walkLevels(Order order, TreeVisitor& visitor);
    bool descend(int folder, TreeVisitor& visitor);
    bool enterLevel(int folder, Level& level, TreeVisitor& visitor);
    bool ascend(TreeVisitor& visitor);
    void closeFolder(Level& level, TreeVisitor& visitor);
    void closeAll(TreeVisitor& visitor);
    [[nodiscard]] std::string currentPath() const;

    platform::SystemCalls& system_;
    std::size_t openFolders_;
    bool walkedInto_ = false;  ///< the entry that is being left
    bool isLost_ = false;
    std::vector<Level> levels_;  ///< kept from walk to walk for their memory
    std::size_t depth_ = 0;      ///< levels in use
};

}  // namespace dorvanel
