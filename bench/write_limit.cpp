// SPDX-License-Identifier: MIT

// The machine's own limit: write(2) of 128 KiB blocks over an existing file, each block PASSES
// times, and one flush at the end; nothing is computed and nothing removed. Prints the seconds.
//
// usage: bench_write_limit PASSES FILE
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

std::array<char, 131072> buffer;

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3 || std::atoi(argv[1]) < 1) {
        std::fprintf(stderr, "usage: %s PASSES FILE\n", argv[0]);
        return 2;
    }
    const int passes = std::atoi(argv[1]);
    const int file = open(argv[2], O_RDWR | O_CLOEXEC);
    struct stat status {};
    if (file < 0 || fstat(file, &status) != 0) {
        std::perror(argv[2]);
        return 1;
    }
    buffer.fill('x');
    const auto start = std::chrono::steady_clock::now();
    const auto block = static_cast<off_t>(buffer.size());
    for (off_t offset = 0; offset < status.st_size; offset += block) {
        const off_t left = status.st_size - offset;
        const auto size = static_cast<std::size_t>(left < block ? left : block);
        for (int pass = 0; pass < passes; ++pass) {
            if (pwrite(file, buffer.data(), size, offset) != static_cast<ssize_t>(size)) {
                std::perror(argv[2]);
                return 1;
            }
        }
    }
    if (fdatasync(file) != 0) {
        std::perror(argv[2]);
        return 1;
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    std::printf("%.6f\n", taken.count());
    close(file);
    return 0;
}
