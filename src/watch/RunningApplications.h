// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "apps/catalogue/Entry.h"
#include "platform/LockProbe.h"
#include "platform/ProgramListing.h"

namespace dorvanel {

/// Which of the described applications run: told by the programs that processes execute and the
/// sandboxes that they are in, never by what stands in a command line, and by locks that are held.
/// One thread at a time.
class RunningApplications {
  public:
    /// Descriptions that somebody else owns, none of them null.
    using Entries = std::vector<const catalogue::Entry*>;
    /// The processes of each application that has any, by ID.
    using Processes = std::map<std::string, std::vector<platform::RunningProgram>>;
    /// The lock files of an application, as paths, where its description has patterns.
    using LockPaths = std::function<std::vector<std::string>(const catalogue::Entry&)>;

    /// The listing and the probe outlive it.
    RunningApplications(platform::ProgramListing& listing, const platform::LockProbe& locks,
                        LockPaths lockPaths);

    /// Nothing where it cannot be told: each may have some then.
    [[nodiscard]] std::optional<Processes> processes(const Entries& entries) const;
    /// Whether a lock of the application is held, or may be.
    [[nodiscard]] bool holdsLock(const catalogue::Entry& entry) const;

    /// Those of `entries` that run, or may run, in their order: all of them where the processes
    /// cannot be told.
    [[nodiscard]] Entries running(const Entries& entries) const;

    /// Asks the applications to quit, by the topmost processes of each, and does not wait for
    /// them. How many processes were asked; nothing where the processes cannot be told, and then
    /// none was.
    std::optional<std::size_t> askToQuit(const Entries& entries) const;

  private:
    platform::ProgramListing& listing_;
    const platform::LockProbe& locks_;
    LockPaths lockPaths_;
};

}  // namespace dorvanel
