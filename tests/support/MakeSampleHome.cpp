// SPDX-License-Identifier: MIT

// make-sample-home DIR SEED: fills the folder DIR with what programs of today leave in a home
// folder on Linux, and with a Mac home folder of former years, for trying the program on. DIR must
// be missing or empty, so that nobody's own home is written into.

#include <charconv>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "support/SampleHome.h"
#include "support/SampleProfiles.h"

int main(int count, char** arguments) {
    std::uint32_t seed = 0;
    if (count == 3) {
        const std::string_view text = arguments[2];
        const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), seed);
        if (failure != std::errc() || end != text.data() + text.size()) count = 0;
    }
    if (count != 3) {
        std::fputs("usage: make-sample-home DIR SEED\n", stderr);
        return 2;
    }
    try {
        const std::filesystem::path home = arguments[1];
        if (std::filesystem::exists(home) && !std::filesystem::is_empty(home)) {
            std::fprintf(stderr, "make-sample-home: %s is not empty\n", arguments[1]);
            return 2;
        }
        dorvanel::test::SampleProfiles(home, seed).addEverything();
        dorvanel::test::SampleHome(home, seed).addEverything();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make-sample-home: %s\n", error.what());
        return 1;
    }
    return 0;
}
