#pragma once

#include <atomic>
#include <optional>
#include <string>

#include "engine/FileOverwriter.h"
#include "engine/FlushBatch.h"
#include "engine/LinkTargets.h"
#include "engine/Outcome.h"
#include "engine/TreeWalk.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// What happens to each entry while a holding folder is deleted: it is made writable, overwritten
/// if it is a file, and removed; a folder is taken before what is in it and removed after.
///
/// A neighbour who may write in the folders can put something else in an entry's place at any time.
/// What is written to, or made writable, is therefore looked at once it is open: a link leads where
/// it led when the item was measured, or nowhere, and other entries are never followed.
class DeletionHandler final : public TreeVisitor {
  public:
    struct Parts {
        platform::SystemCalls& system;
        FileOverwriter& overwriter;
        FlushBatch& batch;
        const LinkTargets& targets;
        const std::atomic<bool>& stop;
        Outcome& outcome;
    };

    /// `place`: the path of the folder that `walk` walks, for naming what went wrong.
    DeletionHandler(Parts parts, const TreeWalk& walk, std::string place)
        : parts_(parts), walk_(walk), place_(std::move(place)) {}

    /// Before an entry is removed: permission bits 0777, then the contents overwritten if it is not
    /// a folder. What a link leads to is treated in the link's place. Returns a folder, opened, or
    /// a negative number.
    int fileManagerWillProcessPath(const TreeEntry& entry);

    /// After a removal failed with `code`: forces it. Returns true: the rest of the tree goes on.
    bool fileManagerShouldProceedAfterError(const TreeEntry& entry, int code);

    int enter(const TreeEntry& entry) override { return fileManagerWillProcessPath(entry); }
    void leave(const TreeEntry& entry) override;
    /// As `leave`, for the holding folder, which is entered by its descriptor.
    void leaveHolding(const TreeEntry& entry, int holding);
    void missed(const std::string& relativePath, int code) override;
    bool stops() override { return parts_.stop.load(std::memory_order_relaxed); }

    /// Overwrites one file and hands it to the batch; also for a file that stays.
    void shredOneFile(const TreeEntry& entry);

    /// The holding folder itself is made and removed by us and not counted.
    void setUncounted(const char* holdingName) { uncounted_ = holdingName; }

  private:
    using Links = platform::SystemCalls::Links;

    int openFolder(const TreeEntry& entry);
    int openWritable(const TreeEntry& entry, Links links);
    int openOurs(const TreeEntry& entry, Links links);
    void makeWritable(const TreeEntry& entry, Links links);
    void remove(const TreeEntry& entry);
    [[nodiscard]] bool isOurs(const TreeEntry& entry, const platform::FileStatus& found) const;
    void overwriteOpen(int file, const TreeEntry& entry);
    void overwriteNothing(const TreeEntry& entry, platform::EntryKind kind);
    void countNotOverwritten(const TreeEntry& entry, const char* operation, int code);
    void countRemoved(const TreeEntry& entry, bool isFolder);
    [[nodiscard]] std::string pathOf(const TreeEntry& entry) const;

    Parts parts_;
    const TreeWalk& walk_;
    std::string place_;
    const char* uncounted_ = nullptr;
    /// What the entry at hand was when it was opened; nothing where it was not.
    std::optional<platform::FileStatus> atHand_;
};

}  // namespace dorvanel
