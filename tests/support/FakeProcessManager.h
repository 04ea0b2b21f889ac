// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/ProcessManager.h"

namespace dorvanel::test {

/// Processes that a test makes up; remembers who was asked to quit.
class FakeProcessManager final : public platform::ProcessManager {
  public:
    struct Process {
        platform::ProcessSerialNumber serial;
        platform::ProcessInfoRec information;
        bool readable = true;
    };

    /// Adds one and returns its number.
    platform::ProcessSerialNumber add(const std::string& name, const char (&type)[5],
                                      const char (&signature)[5]) {
        const platform::ProcessSerialNumber serial{0, ++last_};
        processes.push_back({serial, {name, fourCharCode(type), fourCharCode(signature)}, true});
        return serial;
    }

    platform::ProcessSerialNumber GetCurrentProcess() const override { return current; }
    OSErr GetNextProcess(platform::ProcessSerialNumber& process) override {
        if (process == platform::kNoProcess) {
            ++walks;
            if (onWalk) onWalk();
        }
        bool take = process == platform::kNoProcess;
        for (const Process& candidate : processes) {
            if (take) {
                process = candidate.serial;
                return noErr;
            }
            take = candidate.serial == process;
        }
        return procNotFound;
    }
    OSErr GetProcessInformation(const platform::ProcessSerialNumber& process,
                                platform::ProcessInfoRec& information) override {
        for (const Process& candidate : processes) {
            if (candidate.serial != process) continue;
            if (!candidate.readable) break;
            information = candidate.information;
            return noErr;
        }
        return procNotFound;
    }
    bool SameProcess(const platform::ProcessSerialNumber& one,
                     const platform::ProcessSerialNumber& other) const override {
        return one == other;
    }
    OSErr SendQuit(const platform::ProcessSerialNumber& process) override {
        quits.push_back(process);
        return quitResult;
    }

    std::vector<Process> processes;
    platform::ProcessSerialNumber current{0, 9999};
    OSErr quitResult = noErr;
    std::vector<platform::ProcessSerialNumber> quits;
    int walks = 0;
    std::function<void()> onWalk;

  private:
    std::uint32_t last_ = 100;
};

}  // namespace dorvanel::test
