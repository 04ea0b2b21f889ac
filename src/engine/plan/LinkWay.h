// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "engine/HeldItem.h"
#include "engine/plan/MovedItems.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// Where a link's text leads once some items have left their places: resolved step by step, links
/// on the way too, so that a step through such an item is noticed. Opens references only.
class LinkWay {
  public:
    enum class End {
        reached,  ///< `status` and `path` say what
        moved,    ///< a step leads through an item that has left its place
        nowhere,  ///< it is not there, or the way to it cannot be gone
    };
    struct Found {
        End end = End::nowhere;
        platform::FileStatus status{};
        std::string path{};  ///< absolute, without links where the start was
    };

    /// Both must outlive this.
    LinkWay(platform::SystemCalls& system, const MovedItems& moved)
        : system_(system), moved_(moved) {}

    [[nodiscard]] Found fromRoot(const std::string& text);
    /// From a folder, which `path` leads to.
    [[nodiscard]] Found from(int folder, const std::string& path, const std::string& text);

  private:
    using Folder = std::shared_ptr<const HeldDescriptor>;

    Folder reference(int folder, const char* name);
    Found resolve(Folder folder, std::string path, std::string text);

    platform::SystemCalls& system_;
    const MovedItems& moved_;
};

}  // namespace dorvanel
