// SPDX-License-Identifier: MIT

// What the overwriting of files comes to, said as plainly as possible, to compare the engine with.
// Shares no code with it: every word of every fill is a call of the C library's random(), in a
// process that called it never before.
//
// plain_overwrite PATTERN NUMBER_OF_WRITES DOD NSA REQUEST...
//
// A request is sizes of files joined by "+", overwritten one after another in a process of their
// own; a part "nK" draws K random names. Printed for each request: "request", then lines
// "name NAME", "progress PERCENT" (of all sizes of the request), "write OFFSET LENGTH HASH" and,
// for each file, "file LENGTH HASH" of its last contents.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "support/ContentHash.h"

namespace {

constexpr long blockBytes = 131072;

unsigned prefPattern;
unsigned prefWrites;
bool prefDoD;
bool prefNSA;

std::uint16_t buffer[65536];
char name[33];
unsigned overwritePattern;
unsigned long deepPathSize;
unsigned long deepShreddedSize;

void fill(std::uint16_t word) {
    for (std::uint16_t& each : buffer) each = word;
}

void randomize() {
    if (overwritePattern == 0 || overwritePattern == 2) {
        for (std::uint16_t& each : buffer) each = static_cast<std::uint16_t>(random());
    }
    if (overwritePattern == 3) fill(0x0000);
    if (overwritePattern == 4) fill(0xFFFF);
    if (overwritePattern == 5) fill(0x5555);
    if (overwritePattern == 6) fill(0xAAAA);
}

void randomizeName() {
    const char* letters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    const long last = (random() & 0xFFFF) % 24 + 8;
    name[last + 1] = '\0';
    for (long i = last; i >= 0; --i) name[i] = letters[random() % 64];
}

std::uint16_t passes() {
    std::uint16_t count = static_cast<std::uint16_t>((random() & 3) + 1);
    if (prefWrites != 0) count = static_cast<std::uint16_t>(prefWrites - 1);
    switch (count) {
        case 11:
            count = 15;
            break;
        case 12:
            count = 20;
            break;
        case 13:
            count = 25;
            break;
        case 14:
            count = 30;
            break;
        case 15:
            count = 35;
            break;
    }
    if (prefDoD && count <= 2) count = 3;
    if (prefNSA && count <= 2) count = 3;
    if (prefDoD && prefNSA && count <= 4) count = 5;
    return count;
}

void choose(unsigned counter, unsigned entryPattern) {
    if (prefDoD) {
        if (counter == 3) overwritePattern = 5;
        if (counter == 2) overwritePattern = 6;
        if (counter == 1) overwritePattern = 2;
        randomize();
        overwritePattern = entryPattern;
    }
    if (prefNSA) {
        if (counter == 3 || counter == 2) overwritePattern = 2;
        if (counter == 1) overwritePattern = 3;
        randomize();
        overwritePattern = entryPattern;
    }
    if (prefDoD && prefNSA) overwritePattern = entryPattern;
}

void write(std::vector<char>& file, long offset, long length) {
    if (length == 0) return;
    const auto end = static_cast<std::size_t>(offset + length);
    if (file.size() < end) file.resize(end);
    std::memcpy(file.data() + offset, buffer, static_cast<std::size_t>(length));
    std::printf("write %ld %ld %016lx\n", offset, length,
                dorvanel::test::contentHash(buffer, static_cast<std::size_t>(length)));
}

void shredOneFile(long size) {
    std::vector<char> file(static_cast<std::size_t>(size));
    const unsigned entryPattern = prefPattern;
    long remaining = size;
    long position = 0;
    long length = 0;
    overwritePattern = prefPattern;
    randomize();
    do {
        randomizeName();
        length = remaining < blockBytes ? remaining : blockBytes;
        deepShreddedSize += static_cast<unsigned long>(length);
        remaining -= length;
        const unsigned long percent = deepPathSize == 0 ? 0 : deepShreddedSize * 100 / deepPathSize;
        std::printf("progress %lu\n", percent);
        std::uint16_t counter = passes();
        for (;;) {
            choose(counter, entryPattern);
            write(file, position, length);
            --counter;
            if (entryPattern == 0 || entryPattern == 2) {
                overwritePattern = prefPattern;
                randomize();
            }
            if (counter == 0) break;
        }
        position += length;
    } while (remaining != 0);
    std::uint16_t counter = passes();
    do {
        overwritePattern = prefPattern;
        randomize();
        choose(counter, entryPattern);
        write(file, position, length);
        --counter;
    } while (counter != 0);
    std::printf("file %zu %016lx\n", file.size(),
                dorvanel::test::contentHash(file.data(), file.size()));
}

void serve(const std::string& request) {
    std::vector<std::string> parts{""};
    for (const char each : request) {
        if (each == '+') {
            parts.emplace_back();
        } else {
            parts.back() += each;
        }
    }
    for (const std::string& part : parts) {
        if (part[0] != 'n') deepPathSize += std::strtoul(part.c_str(), nullptr, 10);
    }
    std::puts("request");
    for (const std::string& part : parts) {
        if (part[0] != 'n') {
            shredOneFile(std::atol(part.c_str()));
            continue;
        }
        for (long i = std::atol(part.c_str() + 1); i > 0; --i) {
            randomizeName();
            std::printf("name %s\n", name);
        }
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 5) return 2;
    prefPattern = static_cast<unsigned>(std::atoi(arguments[1]));
    prefWrites = static_cast<unsigned>(std::atoi(arguments[2]));
    prefDoD = std::atoi(arguments[3]) != 0;
    prefNSA = std::atoi(arguments[4]) != 0;
    for (int i = 5; i < count; ++i) {
        std::fflush(stdout);
        const pid_t child = fork();  // the sequence begins anew in each
        if (child < 0) return 1;
        if (child == 0) {
            serve(arguments[i]);
            std::fflush(stdout);
            _exit(0);
        }
        int status = 0;
        if (waitpid(child, &status, 0) != child || status != 0) return 1;
    }
    return 0;
}
