// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/HeldItem.h"
#include "engine/TreeWalk.h"

namespace dorvanel {

/// Looks through all folders of items, without touching any, for what must not be shredded with
/// them.
class HeldTreeCheck {
  public:
    /// Both must outlive the check. `stop`, which may be empty, is asked now and then: true ends a
    /// look, which then knows of no reason.
    HeldTreeCheck(platform::SystemCalls& system, const std::vector<Identity>& protectedFolders,
                  std::function<bool()> stop = {})
        : system_(system), protected_(protectedFolders), stop_(std::move(stop)), walk_(system) {}

    [[nodiscard]] bool isProtected(const platform::FileStatus& status) const;

    /// Why a folder that is held must not be shredded: what it holds, or that this cannot be told.
    /// Nothing where it may be. A folder that its owner has closed to themselves is not looked
    /// into.
    std::optional<std::string> refuse(const HeldItem& folder);

  private:
    platform::SystemCalls& system_;
    const std::vector<Identity>& protected_;
    std::function<bool()> stop_;
    TreeWalk walk_;
};

}  // namespace dorvanel
