// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "engine/FlushBatch.h"
#include "engine/HeldItem.h"
#include "engine/HoldingFolders.h"
#include "engine/TreeWalk.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// Moves items into their holding folders, without copying what is in files.
class ItemMove {
  public:
    /// All of them must outlive this.
    ItemMove(platform::SystemCalls& system, FlushBatch& batch, TreeWalk& walk)
        : system_(system), batch_(batch), walk_(walk) {}

    /// Forgets the item before.
    void begin() { isInParts_ = false; }
    /// Moves the item into the holding folder, under this name. 0, or a negated errno: then the
    /// item is where it was, but for what of a folder could be moved by itself, if `isInParts`.
    int into(const HoldingFolder& holding, const HeldItem& item, const char* name);
    /// Puts back under its former name what `into` has moved and what bears `name` by now.
    int back(const HoldingFolder& holding, const HeldItem& item, const char* name);

    /// The file system could not move the folder as a whole: some of it may be in either place.
    [[nodiscard]] bool isInParts() const { return isInParts_; }

  private:
    int rename(const HoldingFolder& holding, const HeldItem& item, const char* name);
    int makeWritable(const HoldingFolder& holding, const HeldItem& item);
    int moveInParts(const HoldingFolder& holding, const HeldItem& item);

    platform::SystemCalls& system_;
    FlushBatch& batch_;
    TreeWalk& walk_;
    bool isInParts_ = false;
};

}  // namespace dorvanel
