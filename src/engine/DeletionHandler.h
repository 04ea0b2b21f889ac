// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "engine/FileOverwriter.h"
#include "engine/FlushBatch.h"
#include "engine/GrownFiles.h"
#include "engine/HeldItem.h"
#include "engine/ItemOutcomes.h"
#include "engine/LinkTargets.h"
#include "engine/Manifest.h"
#include "engine/Outcome.h"
#include "engine/TreeWalk.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// What happens to each entry while a holding folder is deleted: it is made writable for its owner
/// where it must be, overwritten if it is a file, and handed to the batch, which removes it; a
/// folder is taken before what is in it and removed after.
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
        LinkTargets& targets;
        GrownFiles& grown;
        const std::atomic<bool>& stop;
        Outcome& outcome;
        ItemOutcomes& items;
        std::uint32_t user;  ///< that the process acts as
    };

    using Links = platform::SystemCalls::Links;

    /// `place`: the path of the folder that `walk` walks, for naming what went wrong. `links`:
    /// whether what they lead to is treated in their place.
    DeletionHandler(Parts parts, const TreeWalk& walk, std::string place, Links links)
        : parts_(parts), walk_(walk), place_(std::move(place)), links_(links) {}

    /// Before an entry is removed: the contents overwritten if it is not a folder. What a link
    /// leads to is treated in the link's place. Returns a folder, opened, or a negative number.
    int fileManagerWillProcessPath(const TreeEntry& entry);

    int enter(const TreeEntry& entry) override;
    bool walksInto(const TreeEntry& entry, int folder, const platform::FileStatus& found) override;
    void leave(const TreeEntry& entry) override;
    void missed(const std::string& relativePath, int code) override;
    bool stops() override;
    bool keeps(int folder) override { return parts_.batch.takesOver(folder); }

    /// Overwrites one file, which stays.
    void shredOneFile(const TreeEntry& entry);

    /// The first entry must be this file, which was looked at earlier. It is held no longer once it
    /// is open.
    void expect(HeldItem& item) { expected_ = &item; }
    /// It was another one, which stays as it was.
    [[nodiscard]] bool foundAnother() const { return foundAnother_; }

    std::uint64_t entries = 0;      ///< met so far
    Manifest::FileSum sharedFiles;  ///< opened so far in folders that others may write in

  private:
    void overwriteEntry(const TreeEntry& entry);
    void keepWritten(const TreeEntry& entry);
    void overwriteTarget(const TreeEntry& entry);
    void overwritePlain(const TreeEntry& entry, Links links);
    int openFolder(const TreeEntry& entry);
    int openWritable(const TreeEntry& entry, Links links);
    int openAfterLease(const TreeEntry& entry, Links links);
    int openWithOwnersBits(const TreeEntry& entry, Links links, int denied);
    bool addOwnersBits(const TreeEntry& entry, int reference, const platform::FileStatus& found,
                       std::uint32_t bits);
    bool isExpected(const platform::FileStatus& found);
    bool isNoneOfOurs(int file, const TreeEntry& entry, const platform::FileStatus& found);
    void overwriteOpen(int file, const TreeEntry& entry);
    WriteHolder* holderFor(const TreeEntry& entry);
    void account(const TreeEntry& entry, const FileOverwriter::Written& written);
    void overwriteNothing(const TreeEntry& entry, platform::EntryKind kind, Links links);
    void countNotOverwritten(const TreeEntry& entry, const char* operation, int code);
    void countVanished(const TreeEntry& entry);
    void spare(const TreeEntry& entry, const char* operation, int code, std::string reason = {});
    [[nodiscard]] bool othersMayWrite(const platform::FileStatus& folder) const;
    [[nodiscard]] std::string pathOf(const TreeEntry& entry) const;

    Parts parts_;
    const TreeWalk& walk_;
    std::string place_;
    Links links_;
    HeldItem* expected_ = nullptr;
    bool foundAnother_ = false;
    bool spared_ = false;     ///< the entry at hand keeps its name
    bool isDecided_ = false;  ///< the walk goes by what `enter` found of the stop
    bool isStopped_ = false;
    WrittenFile written_;  ///< the entry at hand, or what it leads to, where it was written to
};

}  // namespace dorvanel
