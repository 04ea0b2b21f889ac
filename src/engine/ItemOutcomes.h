// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/HeldItem.h"
#include "engine/Manifest.h"
#include "engine/Outcome.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// Where a thing that something is told about lies now.
struct Whereabouts {
    int folder = -1;             ///< an open descriptor; negative: nothing is to be found out
    const char* name = nullptr;  ///< NUL-terminated bytes, good during the call
    Identity known{};            ///< of what lay there when it was listed; inode 0: not known
};

/// What became of each item of a request. An item is known by its number in `Outcome::perItem`,
/// since its names go in batches that reach over items. What is left bears a random name by then:
/// the one it had is found by its inode number among those that were there at the measuring.
class ItemOutcomes {
  public:
    using Trouble = ItemOutcome::Trouble;
    /// What is no item's concern.
    static constexpr std::uint32_t none = ~std::uint32_t{0};

    /// Both must outlive this.
    ItemOutcomes(platform::SystemCalls& system, Outcome& outcome)
        : system_(system), outcome_(outcome) {}

    /// A request begins, or has ended: nothing belongs to an item.
    void clear();
    /// An item of the request has its turn; it is the current one from now on. `manifest` may be
    /// null. Should memory run out, nothing has changed.
    void begin(const HeldItem& item, std::shared_ptr<Manifest> manifest = {});
    [[nodiscard]] std::uint32_t current() const { return current_; }
    /// What the current item is moved into holds what a former run has left: not all that is met is
    /// the item's.
    void sharesItsFolder();
    /// No name of an item before the current one waits any longer.
    void settle();

    void countOverwritten(std::uint64_t bytes);
    void countRemoved(std::uint32_t item);
    void countVerified(std::uint32_t item);

    /// It is still there. What was told of it as gone is taken back, and nothing is told twice.
    void addLeft(std::uint32_t item, Trouble trouble, const Whereabouts& place = {});
    /// It went, or will go, without being wholly overwritten.
    void addUnwritten(std::uint32_t item, Trouble trouble, const Whereabouts& place = {});
    void addUnverified(std::uint32_t item, Trouble trouble, const Whereabouts& place = {});
    /// What was told last to go unwritten stays: the request was ended at it.
    void keepLastUnwritten(std::uint32_t item, const std::string& path);
    /// Whether something that is left in this folder is told. With `none`: of any item.
    [[nodiscard]] bool tellsOfLeftIn(std::uint32_t item, const std::string& folder) const;

  private:
    struct Record {
        Identity identity;
        std::shared_ptr<Manifest> manifest;
        bool isAlone = true;  ///< a file or link, and nothing else can be met in its turn
    };

    [[nodiscard]] ItemOutcome* find(std::uint32_t item);
    void add(std::vector<Trouble>& list, std::size_t& count, std::uint32_t item, Trouble trouble,
             const Whereabouts& place);
    [[nodiscard]] std::string formerPath(std::uint32_t item, const Whereabouts& place);

    platform::SystemCalls& system_;
    Outcome& outcome_;
    std::vector<Record> records_;  ///< as many as there are in `Outcome::perItem`
    std::uint32_t current_ = none;
    std::size_t settled_ = 0;  ///< records whose manifests have been dropped
    std::size_t left_ = 0;     ///< troubles that are kept, of all items together
    std::size_t unwritten_ = 0;
    std::size_t unverified_ = 0;
};

}  // namespace dorvanel
