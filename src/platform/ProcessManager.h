// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "base/FourCharCode.h"

namespace dorvanel::platform {

/// Tells one process from every other, also from a later one that got its number.
struct ProcessSerialNumber {
    std::uint32_t highLongOfPSN = 0;
    std::uint32_t lowLongOfPSN = 0;

    friend bool operator==(const ProcessSerialNumber&, const ProcessSerialNumber&) = default;
};

/// Where a walk starts.
constexpr ProcessSerialNumber kNoProcess{0, 0};

struct ProcessInfoRec {
    std::string processName;            ///< at most 31 bytes, any bytes
    FourCharCode processType = 0;       ///< 'APPL' for an application
    FourCharCode processSignature = 0;  ///< the creator code
};

/// The running applications of the current user, this one included. One thread at a time.
class ProcessManager {
  public:
    virtual ~ProcessManager() = default;

    [[nodiscard]] virtual ProcessSerialNumber GetCurrentProcess() const = 0;

    /// Moves `process` on to the next one; from kNoProcess, which takes a new look at what runs,
    /// to the first. procNotFound at the end, `process` is then as it was.
    virtual OSErr GetNextProcess(ProcessSerialNumber& process) = 0;

    /// Fills in `information`; on failure (the process has gone) it is as it was.
    virtual OSErr GetProcessInformation(const ProcessSerialNumber& process,
                                        ProcessInfoRec& information) = 0;

    [[nodiscard]] virtual bool SameProcess(const ProcessSerialNumber& one,
                                           const ProcessSerialNumber& other) const = 0;

    /// Asks a process to quit and does not wait for it. Nothing is sent, and the code is not
    /// noErr, when the process has gone, is not what it was when the walk met it, or is this one.
    virtual OSErr SendQuit(const ProcessSerialNumber& process) = 0;
};

/// The processes of this machine.
std::unique_ptr<ProcessManager> makeProcessManager();

}  // namespace dorvanel::platform
