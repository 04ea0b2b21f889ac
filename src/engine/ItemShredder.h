// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/DeletionHandler.h"
#include "engine/HeldItem.h"
#include "engine/HoldingFolders.h"
#include "engine/ItemMove.h"
#include "engine/Manifest.h"
#include "engine/TakenItems.h"
#include "engine/TreeVisitors.h"
#include "engine/TreeWalk.h"

namespace dorvanel {

/// What was found out about an item before anything was done.
struct MeasuredItem {
    std::uint64_t bytes = 0;
    std::shared_ptr<Manifest> manifest;  ///< of a folder
    std::string refusal;                 ///< why the item is left whole; empty: it is not
};

/// Measures items, and shreds one after another: each is moved into a holding folder, given random
/// names, overwritten and handed to the batch. What went wrong is in the outcome.
class ItemShredder {
  public:
    /// All of them must outlive the shredder.
    struct Parts {
        DeletionHandler::Parts deletion;
        const platform::Clock& clock;
        LinkTargets& targets;
        const std::vector<Identity>& spared;     ///< folders that are never shredded
        UnfinishedRecord* unfinished = nullptr;  ///< of holding folders; null: none
    };
    explicit ItemShredder(Parts parts);

    /// Looks at an item that is there, and at all that is in it. Changes nothing.
    MeasuredItem measure(const HeldItem& item);

    /// Shreds it. Returns whether it was taken from its place. Holds the item itself no longer: on
    /// some file systems that keeps the folder of a removed name busy. `taken`: the items before
    /// it, which are not missed where they lay in this one.
    bool shred(HeldItem& item, MeasuredItem& measured, const TakenItems& taken);

    /// Moves the item into its holding folder and gives random names to all that is in it. Returns
    /// the folder's path, which is nobody's concern from then on; "" where it could not be made.
    std::string moveAndRename(const HeldItem& item);

    HoldingFolders& holdings() { return holdings_; }
    TreeWalk& walk() { return walk_; }
    /// An item is neither done nor given up: the request was ended in it.
    [[nodiscard]] bool isInWork() const { return isInWork_; }
    void clear() { isInWork_ = false; }
    /// An item that is in work, should it have been moved.
    struct InWork {
        std::uint32_t item = ItemOutcomes::none;
        std::string path;  ///< where it lies; "" where there is none
        std::string was;   ///< where it lay; "" likewise, and where more than the item lies there
    };
    [[nodiscard]] InWork inWork();

  private:
    using Links = platform::SystemCalls::Links;

    int openItem(const HeldItem& item);
    std::uint64_t rememberTarget(const HeldItem& item);
    bool move(const HeldItem& item);
    int moveInto(const HoldingFolder& holding, const HeldItem& item);
    void tellNotMoved(const HeldItem& item, int code);
    bool isTheItem(const HeldItem& item);
    void putBack(const HeldItem& item);
    void renameContents(const HeldItem& item, Manifest* manifest, const TakenItems& taken);
    void overwriteContents(HeldItem& item, const Manifest* manifest);
    void tellVanished(const HeldItem& item, const std::string& reason);
    template <typename Visitor>
    void walkHolding(TreeWalk::Order order, Visitor& visitor);
    [[nodiscard]] bool stops() const {
        return parts_.deletion.stop.load(std::memory_order_relaxed);
    }

    Parts parts_;
    platform::SystemCalls& system_;
    FlushBatch& batch_;
    Outcome& outcome_;
    ItemOutcomes& items_;
    TreeWalk walk_;
    HoldingFolders holdings_;
    ItemMove move_;
    bool isInWork_ = false;
    TopEntry top_;  ///< the item in its holding folder
    platform::EntryKind topKind_ = platform::EntryKind::unknown;
    bool isNamed_ = false;       ///< the item was moved to its random name
    std::uint64_t renamed_ = 0;  ///< entries that the renaming met
    bool heldTaken_ = false;     ///< an earlier item lay in this one
};

}  // namespace dorvanel
