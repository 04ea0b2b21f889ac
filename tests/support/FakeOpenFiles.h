// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <utility>

#include "platform/OpenFiles.h"

namespace dorvanel::test {

/// Files that a test says others have open.
class FakeOpenFiles final : public platform::OpenFiles {
  public:
    void look() override { ++looked; }
    [[nodiscard]] bool empty() const override { return holders.empty(); }
    [[nodiscard]] std::string holdersOf(std::uint64_t device, std::uint64_t inode) const override {
        const auto found = holders.find({device, inode});
        return found == holders.end() ? std::string() : found->second;
    }

    int looked = 0;
    std::map<std::pair<std::uint64_t, std::uint64_t>, std::string> holders;
};

}  // namespace dorvanel::test
