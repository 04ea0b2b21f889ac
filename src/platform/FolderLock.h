// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "base/Result.h"

namespace dorvanel::platform {

class FileDescriptor;

/// Keeps other processes that ask for the same lock waiting as long as it lives; the system gives
/// it back when the process ends, however it ends. The folder itself is locked, so no lock file
/// is left about.
class FolderLock {
  public:
    /// Waits for the lock. A file system without locks is no failure: the lock is then not held.
    static Result<FolderLock> take(const std::string& folder);
    /// The same without waiting; nothing where another process has the lock.
    static Result<std::optional<FolderLock>> takeIfFree(const std::string& folder);

    [[nodiscard]] bool isHeld() const { return isHeld_; }

  private:
    FolderLock(std::shared_ptr<FileDescriptor> folder, bool isHeld)
        : folder_(std::move(folder)), isHeld_(isHeld) {}

    std::shared_ptr<FileDescriptor> folder_;
    bool isHeld_;
};

}  // namespace dorvanel::platform
