// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "engine/plan/ItemNotes.h"
#include "platform/OpenFiles.h"
#include "platform/SharedExtents.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// Counts what would be overwritten for one item, file by file, with what there is to say of each.
class FileCount {
  public:
    using Links = platform::SystemCalls::Links;
    using Path = std::function<std::string()>;

    /// Must outlive this.
    struct Parts {
        platform::SystemCalls& system;
        const platform::OpenFiles* openFiles;    ///< null: nobody has anything open
        platform::SharedExtents* sharedExtents;  ///< null: not looked for
        std::uint32_t user;                      ///< that the process acts as
    };
    /// `item` must stay at its place as long as this lives.
    FileCount(const Parts& parts, PlanItem& item) : parts_(parts), item_(item), notes_(item) {}

    /// A plain file under this name, or what a link of this name leads to. `path` is asked for only
    /// where there is something to say. False where it could not be overwritten, which is noted.
    bool add(int folder, const char* name, Links links, const platform::FileStatus& status,
             const Path& path);
    /// Something that cannot be looked at, with the words for it.
    void addUnreadable(std::string path, const std::string& what, int code);

    ItemNotes& notes() { return notes_; }

  private:
    const Parts& parts_;
    PlanItem& item_;
    ItemNotes notes_;
};

}  // namespace dorvanel
