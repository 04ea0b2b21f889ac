// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "engine/HeldItem.h"
#include "engine/LinkTargets.h"
#include "engine/TreeWalk.h"
#include "engine/plan/FileCount.h"
#include "engine/plan/LinkWay.h"
#include "engine/plan/MovedItems.h"

namespace dorvanel {

/// A relative link that leads somewhere from the item's holding folder. Whether it is followed
/// there shows once it is known what all links of the request lead to.
struct StrayLink {
    std::size_t item;  ///< number in the plan
    std::string link;  ///< its path
    LinkWay::Found target;
};

/// Looks at one item and at what is in it as the shredding will meet it. Touches nothing.
class PlanVisitor final : public TreeVisitor {
  public:
    using Links = platform::SystemCalls::Links;

    /// All of them must outlive the visitor.
    struct Parts {
        const FileCount::Parts& files;
        LinkTargets& targets;     ///< of the request
        const MovedItems& moved;  ///< the items before this one, and this one
        const std::vector<Identity>& spared;
        const std::function<bool()>& stop;  ///< may be empty
        std::vector<StrayLink>& strays;
    };
    /// `parent`: a descriptor of the folder that holds the item. `number`: the item's in the plan.
    PlanVisitor(const Parts& parts, const TreeWalk& walk, const HeldItem& item, int parent,
                PlanItem& planned, std::size_t number);

    /// The item itself; a folder without what is in it.
    void lookAtItem();
    void couldNotOpen(int code);

    int enter(const TreeEntry& entry) override;
    bool walksInto(const TreeEntry& entry, int folder, const platform::FileStatus& found) override;
    void leave(const TreeEntry&) override {}
    void missed(const std::string& relativePath, int code) override;
    bool stops() override;

    std::string mountPoint;    ///< the first one found, relative to the item; empty: none
    std::string sparedFolder;  ///< likewise
    bool isStopped = false;

  private:
    int enterFolder(const TreeEntry& entry);
    void lookAtLink(const TreeEntry& entry);
    void follow(int folder, const char* name, std::size_t depth, const FileCount::Path& path);
    void followStray(const std::string& text, std::size_t depth, const FileCount::Path& path);
    [[nodiscard]] std::string pathOf(const TreeEntry& entry) const;

    const Parts& parts_;
    platform::SystemCalls& system_;
    const TreeWalk& walk_;
    const HeldItem& item_;
    int parent_;
    PlanItem& planned_;
    std::size_t number_;
    FileCount files_;
    LinkWay way_;
    std::string inside_;  ///< what stands before the relative paths
    unsigned entries_ = 0;
};

}  // namespace dorvanel
