// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <cerrno>

#include "support/ForwardingSystemCalls.h"

namespace dorvanel::test {

/// Passes on what only looks. Whoever makes a call that changes something, or that opens a file for
/// that, fails the test and is told that it may not.
class OnlyLookingSystemCalls final : public ForwardingSystemCalls {
  public:
    using ForwardingSystemCalls::ForwardingSystemCalls;

    int openFile(int, const char* name, Links) override { return refuse("openFile", name); }
    int changeMode(int, std::uint32_t) override { return refuse("changeMode", ""); }
    int changeModeAt(int, const char* name, std::uint32_t) override {
        return refuse("changeModeAt", name);
    }
    int makeFolder(int, const char* name, std::uint32_t) override {
        return refuse("makeFolder", name);
    }
    int rename(int, const char* from, int, const char*) override { return refuse("rename", from); }
    int removeFile(int, const char* name) override { return refuse("removeFile", name); }
    int removeFolder(int, const char* name) override { return refuse("removeFolder", name); }
    std::ptrdiff_t writeAt(int, const void*, std::size_t, std::uint64_t) override {
        return refuse("writeAt", "");
    }
    int flushFile(int) override { return refuse("flushFile", ""); }
    int flushFileSystem(int) override { return refuse("flushFileSystem", ""); }
    int statusAt(int folder, const char* name, Links links, platform::FileStatus& status) override {
        ++looks;
        return inner_.statusAt(folder, name, links, status);
    }

    std::size_t looks = 0;  ///< by name

  private:
    static int refuse(const char* operation, const char* name) {
        ADD_FAILURE() << "a call that changes something: " << operation << " " << name;
        return -EPERM;
    }
};

}  // namespace dorvanel::test
