// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/FileDescriptor.h"

namespace dorvanel::platform {

/// One process's folder in /proc, held open: what is read through it is that process's, or an
/// error once that process has gone, whoever has its number by then.
class ProcessFolder {
  public:
    /// The file that a process executes, whatever its name is by now.
    struct Executable {
        dev_t device;
        ino_t inode;

        friend bool operator==(const Executable&, const Executable&) = default;
    };

    explicit ProcessFolder(pid_t process);

    /// The real user of the process, as kill() and `ps -U` go by.
    [[nodiscard]] std::optional<uid_t> user() const;
    /// Clock ticks from the machine's start to the process's.
    [[nodiscard]] std::optional<std::uint64_t> startTime() const;
    /// Nothing for a kernel thread, a process of somebody else, and one that has ended, also when
    /// its parent has not yet asked for its status.
    [[nodiscard]] std::optional<Executable> executable() const;
    /// The executable's path, with " (deleted)" behind it when it is no longer there; "" when it
    /// cannot be told.
    [[nodiscard]] std::string executablePath() const;

  private:
    [[nodiscard]] std::string read(const char* name) const;

    FileDescriptor folder_;
};

}  // namespace dorvanel::platform
