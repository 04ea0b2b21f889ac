// SPDX-License-Identifier: MIT

// Runs a command and writes "WALL CPU PEAK STATUS" to a file: seconds, seconds, KiB, exit status.
// A program of its own, as small as can be: what starts a command passes its own peak of memory
// on to it, and that of an interpreter would hide what is measured.
//
// usage: bench_measure RESULT COMMAND [ARGUMENT...]
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>

namespace {

double now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s RESULT COMMAND [ARGUMENT...]\n", argv[0]);
        return 2;
    }
    const double start = now();
    const pid_t child = fork();
    if (child == 0) {
        execvp(argv[2], argv + 2);
        std::perror(argv[2]);
        _exit(127);
    }
    int status = 0;
    rusage used{};
    if (child < 0 || wait4(child, &status, 0, &used) != child) {
        std::perror("bench_measure");
        return 1;
    }
    const double wall = now() - start;
    std::FILE* result = std::fopen(argv[1], "w");
    if (result == nullptr) {
        std::perror(argv[1]);
        return 1;
    }
    std::fprintf(result, "%.6f %.6f %ld %d\n", wall,
                 seconds(used.ru_utime) + seconds(used.ru_stime), used.ru_maxrss,
                 WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status));
    return std::fclose(result) == 0 ? 0 : 1;
}
