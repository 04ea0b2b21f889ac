// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace dorvanel::test {

/// The system calls of the program under test that take part in replacing a file, wrapped by the
/// linker: recorded in their order, and the n-th of them made to fail or to be the last.
struct FaultyCalls {
    enum class Fault { none, fail, shortWrite, kill };

    /// Forgets what was recorded; the call number `at` (from 1) meets the fault.
    void start(Fault fault = Fault::none, int at = 0, int error = 0);
    /// Records nothing more and lets everything through.
    void stop();

    /// For the wrappers: records the call; whether it meets the fault.
    bool meets(const std::string& call);

    std::vector<std::string> calls;
    Fault fault = Fault::none;
    int error = 0;

  private:
    bool isRecording_ = false;
    int at_ = 0;
};

extern FaultyCalls faultyCalls;

}  // namespace dorvanel::test
