// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

namespace dorvanel::platform {

enum class LockState {
    free,  ///< not there, or left over: nobody holds it
    held,
    unknown  ///< cannot be examined, not understood, or of another machine
};

/// Tells whether a program holds a lock of its own on its files. Any thread.
class LockProbe {
  public:
    virtual ~LockProbe() = default;

    /// Of a regular file, whether another process has a record lock on it; of a symbolic link that
    /// says HOST-PID, or ADDRESS:+PID, whether that process lives. Changes nothing. Record locks
    /// that this very process holds on the file do not show, and would be lost.
    [[nodiscard]] virtual LockState stateOf(const std::string& path) const = 0;
};

/// The locks of this machine's files.
std::unique_ptr<LockProbe> makeLockProbe();

}  // namespace dorvanel::platform
