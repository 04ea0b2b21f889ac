// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "realfs/Mounts.h"
#include "support/Disk.h"
#include "support/TemporaryFolder.h"

/// Ends a test that cannot be made here, and tells it.
#define NEEDS(condition) \
    if (!(condition)) GTEST_SKIP() << "this machine lets us have no such thing: " #condition

namespace dorvanel::test {

/// How the program ended and what it said.
struct Ran {
    int status = -1;  ///< as a shell has it
    std::string out;
    std::string err;
};

std::ostream& operator<<(std::ostream& stream, const Ran& ran);

/// How often something is tried that goes wrong by chance: `usual` times in the tests of every day,
/// an eighth of it under a sanitizer, and DORVANEL_ATTEMPTS times where that is set.
int attempts(int usual);

/// The program itself, a home of its own, and a place for mounts that only this test sees.
class RealFsTest : public ::testing::Test {
  protected:
    RealFsTest();

    /// Runs `dorvanel --home HOME WORDS...`; `first` is done in the new process before it starts.
    Ran dorvanel(const std::vector<std::string>& words, const std::function<void()>& first = {});
    Ran shred(const std::string& path) { return dorvanel({"shred", path}); }

    /// A folder of 3 folders with `files` files each, of three blocks of text.
    static void makeTree(const std::string& folder, int files = 4);

    TemporaryFolder place;
    std::string base = place.path();
    std::string home = base + "/home";
    std::string mounted = base + "/mounted";  ///< for what the test mounts
};

}  // namespace dorvanel::test
