// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace dorvanel::test {

/// How far a program came that was run call by call.
struct TracedRun {
    long calls = 0;       ///< system calls begun, those that started it included
    long firstWrite = 0;  ///< which of them was the first pwrite
    int status = -1;      ///< as a shell has it; -1 where no program can be traced here
};

/// Runs `command` with its output thrown away and does `act` once when it has begun its `call`-th
/// system call, before the call does anything; with 0 never. `act` is given the process's number.
TracedRun runToCall(const std::vector<std::string>& command, long call,
                    const std::function<void(int)>& act);

/// The same at its first call with this number (SYS_mkdirat, say).
TracedRun runToFirst(long number, const std::vector<std::string>& command,
                     const std::function<void()>& act);

/// A system call as it began.
struct BegunCall {
    long number;
    std::array<std::uint64_t, 6> arguments;
    bool isOfPipe = false;  ///< its first argument is the descriptor of a pipe
};

/// Runs `command` likewise and returns all calls of its threads, those that started it too; none
/// where no program can be traced here.
std::vector<BegunCall> callsOf(const std::vector<std::string>& command);

}  // namespace dorvanel::test
