// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "engine/MediumNotice.h"
#include "engine/Plan.h"
#include "platform/FreeSpace.h"

namespace dorvanel {

/// What came of discarding the free space of one file system.
struct DiscardedSpace {
    std::string mountPoint;  ///< bytes
    platform::FreeSpace::Discarded result;

    /// One line for people, without a newline.
    [[nodiscard]] std::string line(const PathText& pathText) const;
};

/// After a request, tells the media that held its items that what is free there holds nothing of
/// use: where new contents go to other blocks than the old ones, those are free only now. The file
/// systems are found out before the request, since the items' folders may go with it.
class Discarding {
  public:
    /// `freeSpace` must outlive this.
    explicit Discarding(platform::FreeSpace& freeSpace) : freeSpace_(freeSpace) {}

    /// The file systems that the plan's items lie on, and those of the link targets that its notes
    /// name. To be called before the request.
    void add(const Plan& plan);
    /// The one on which the item lies, or lay.
    void addItem(const std::string& path);

    /// Discards the free space of each file system once, in the order in which they were added.
    [[nodiscard]] std::vector<DiscardedSpace> discard();

  private:
    platform::FreeSpace& freeSpace_;
    std::vector<platform::FileSystemPlace> places_;
    std::string lastFolder_;  ///< known already: most items lie beside another
};

}  // namespace dorvanel
