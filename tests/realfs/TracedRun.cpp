// SPDX-License-Identifier: MIT
#include "realfs/TracedRun.h"

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace dorvanel::test {
namespace {

[[noreturn]] void beTraced(std::vector<std::string> command) {
    std::vector<char*> arguments;
    for (std::string& word : command) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const int nowhere = open("/dev/null", O_RDWR);
    for (int descriptor = 0; descriptor < 3; ++descriptor) dup2(nowhere, descriptor);
    setenv("ASAN_OPTIONS", "detect_leaks=0", 1);  // it cannot look while another one traces
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(126);
    raise(SIGSTOP);
    execv(arguments.front(), arguments.data());
    _exit(127);
}

int shellStatus(int status) {
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

/// The call that a stopped thread begins; its number is -1 where it stopped for something else.
BegunCall beginningCall(pid_t thread) {
    __ptrace_syscall_info information{};
    if (ptrace(PTRACE_GET_SYSCALL_INFO, thread, sizeof information, &information) < 0 ||
        information.op != PTRACE_SYSCALL_INFO_ENTRY) {
        return {-1, {}, false};
    }
    BegunCall call{static_cast<long>(information.entry.nr), {}, false};
    std::copy_n(information.entry.args, call.arguments.size(), call.arguments.begin());
    return call;
}

/// `atCall` is given each call and the number of the process; counts are in `run` by then.
TracedRun runTraced(const std::vector<std::string>& command,
                    const std::function<void(const TracedRun&, const BegunCall&, int)>& atCall) {
    TracedRun run;
    const pid_t program = fork();
    if (program == 0) beTraced(command);
    int status = 0;
    if (program < 0 || waitpid(program, &status, 0) != program || !WIFSTOPPED(status)) return run;
    ptrace(PTRACE_SETOPTIONS, program, nullptr,
           PTRACE_O_EXITKILL | PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACECLONE);
    ptrace(PTRACE_SYSCALL, program, nullptr, nullptr);
    while (true) {
        const pid_t thread = waitpid(-1, &status, __WALL);
        if (thread < 0) return run;
        if (!WIFSTOPPED(status)) {
            if (thread != program) continue;
            run.status = shellStatus(status);
            return run;
        }
        long signal = WSTOPSIG(status);
        if (signal == (SIGTRAP | 0x80)) {
            signal = 0;
            if (const BegunCall call = beginningCall(thread); call.number >= 0) {
                if (call.number == SYS_pwrite64 && run.firstWrite == 0) {
                    run.firstWrite = run.calls + 1;
                }
                ++run.calls;
                atCall(run, call, program);
            }
        } else if (signal == SIGTRAP || signal == SIGSTOP) {
            signal = 0;  // a new program, a new thread
        }
        ptrace(PTRACE_SYSCALL, thread, nullptr, signal);
    }
}

}  // namespace

TracedRun runToCall(const std::vector<std::string>& command, long call,
                    const std::function<void(int)>& act) {
    return runTraced(command, [&](const TracedRun& run, const BegunCall&, int program) {
        if (run.calls == call) act(program);
    });
}

TracedRun runToFirst(long number, const std::vector<std::string>& command,
                     const std::function<void()>& act) {
    bool done = false;
    return runTraced(command, [&](const TracedRun&, const BegunCall& begun, int) {
        if (begun.number == number && !std::exchange(done, true)) act();
    });
}

std::vector<BegunCall> callsOf(const std::vector<std::string>& command) {
    std::vector<BegunCall> calls;
    const auto note = [&](const TracedRun&, const BegunCall& call, int program) {
        std::error_code error;
        const std::string descriptor = std::to_string(call.arguments[0]);
        const std::string what = std::filesystem::read_symlink(
            "/proc/" + std::to_string(program) + "/fd/" + descriptor, error);
        calls.push_back({call.number, call.arguments, what.starts_with("pipe:")});
    };
    const TracedRun run = runTraced(command, note);
    return run.status < 0 ? std::vector<BegunCall>() : calls;
}

}  // namespace dorvanel::test
