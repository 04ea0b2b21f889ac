// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "platform/ProcessManager.h"

namespace dorvanel::test {

/// The real processes, of which only those that the test started can be seen or reached.
class OnlyTheseProcesses final : public platform::ProcessManager {
  public:
    explicit OnlyTheseProcesses(std::vector<pid_t> pids) : pids_(std::move(pids)) {}

    platform::ProcessSerialNumber GetCurrentProcess() const override {
        return real_->GetCurrentProcess();
    }
    OSErr GetNextProcess(platform::ProcessSerialNumber& process) override {
        OSErr error = noErr;
        platform::ProcessSerialNumber next = process;
        do {
            error = real_->GetNextProcess(next);
        } while (error == noErr && !isMine(next));
        if (error == noErr) process = next;
        return error;
    }
    OSErr GetProcessInformation(const platform::ProcessSerialNumber& process,
                                platform::ProcessInfoRec& information) override {
        return real_->GetProcessInformation(process, information);
    }
    bool SameProcess(const platform::ProcessSerialNumber& one,
                     const platform::ProcessSerialNumber& other) const override {
        return real_->SameProcess(one, other);
    }
    OSErr SendQuit(const platform::ProcessSerialNumber& process) override {
        return isMine(process) ? real_->SendQuit(process) : procNotFound;
    }

  private:
    [[nodiscard]] bool isMine(const platform::ProcessSerialNumber& process) const {
        return std::count(pids_.begin(), pids_.end(), static_cast<pid_t>(process.lowLongOfPSN)) !=
               0;
    }

    std::unique_ptr<platform::ProcessManager> real_ = platform::makeProcessManager();
    std::vector<pid_t> pids_;
};

}  // namespace dorvanel::test
