// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>

#include "engine/LeftFolders.h"
#include "engine/UnfinishedFiles.h"
#include "platform/CleaningCalls.h"
#include "platform/SystemCalls.h"

namespace dorvanel {

/// The user's own list of holding folders, on the machine's disk. Root has none in the home folder
/// of somebody else: whoever owns that would read there what root shreds.
class MachinesUnfinished {
  public:
    MachinesUnfinished();

    /// What the engine writes to; the thread of the request.
    UnfinishedFiles& record() { return record_; }

    /// The listed folders that nobody works on; see `findListedFolders`. Main thread.
    Result<Done> find(LeftFolders& found);
    /// How many of them there are, as far as can be told.
    [[nodiscard]] std::size_t count();

    /// Shreds what was written down of holding folders that are gone: where one was finished by
    /// another request than its own, nothing else does. What cannot be read now stays for later.
    void forgetGone();

    /// The list's folder, for who changes it. Main thread.
    UnfinishedFolder& folder() { return folder_; }

  private:
    // The request's own, since it may have a thread of its own.
    std::unique_ptr<platform::SystemCalls> recordsSystem_ = platform::makeSystemCalls();
    std::unique_ptr<platform::SystemCalls> system_ = platform::makeSystemCalls();
    std::unique_ptr<platform::CleaningCalls> files_ = platform::makeCleaningCalls();
    UnfinishedFiles record_;
    UnfinishedFolder folder_;
};

}  // namespace dorvanel
