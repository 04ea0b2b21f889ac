// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>

#include "base/Result.h"
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

    /// What the scheduler knows of a process.
    struct Facts {
        std::string name;  ///< the first 15 bytes of its program's, or what it chose to be called
        pid_t parent = 0;
        std::uint64_t startTime = 0;  ///< clock ticks from the machine's start to the process's
        bool hasThreads = false;      ///< more than one
        bool isKernels = false;       ///< a thread of the kernel
        bool hasEnded = false;        ///< all of it, though perhaps nobody has waited for it
    };

    explicit ProcessFolder(pid_t process, const std::string& processFolder = "/proc");

    /// The real user of the process, as kill() and `ps -U` go by.
    [[nodiscard]] Result<uid_t> user() const;
    /// Clock ticks from the machine's start to the process's.
    [[nodiscard]] std::optional<std::uint64_t> startTime() const;
    /// Nothing for a kernel thread, a process of somebody else, and one that has ended, also when
    /// its parent has not yet asked for its status.
    [[nodiscard]] std::optional<Executable> executable() const;
    /// The executable's path, with " (deleted)" behind it when it is no longer there; "" when it
    /// cannot be told.
    [[nodiscard]] std::string executablePath() const;

    [[nodiscard]] Result<Facts> facts() const;
    /// What stands in a file of the folder, or its first 64 KiB. The error of a process that has
    /// gone is ENOENT or ESRCH.
    [[nodiscard]] Result<std::string> text(const std::string& name) const;
    /// What a symbolic link of the folder says.
    [[nodiscard]] Result<std::string> link(const std::string& name) const;
    /// Whether there is such a file in the folder, or in what its links lead to; in doubt there is.
    [[nodiscard]] bool hasFile(const std::string& name) const;

  private:
    int openError_ = 0;
    FileDescriptor folder_;
};

}  // namespace dorvanel::platform
