// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <cstring>

#include "support/OwnProcesses.h"

// The main() of the tests that look at what runs, or have the program look: they see no process
// but their own. Those that mount file systems are root among them.
#ifdef DORVANEL_TEST_MOUNTS
constexpr bool asRoot = true;
#else
constexpr bool asRoot = false;
#endif

int main(int count, char** arguments) {
    const bool onlyLists =
        count > 1 && std::strncmp(arguments[1], "--gtest_list", std::strlen("--gtest_list")) == 0;
    if (!onlyLists) {
        if (const auto status = dorvanel::test::runAmongOwnProcesses(arguments, asRoot))
            return *status;
    }
    ::testing::InitGoogleMock(&count, arguments);
    return RUN_ALL_TESTS();
}
