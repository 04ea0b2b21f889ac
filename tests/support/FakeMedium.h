// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

#include "platform/Medium.h"

namespace dorvanel::test {

/// Media as a test sets them; overwritable elsewhere.
class FakeMedium final : public platform::MediumInspector {
  public:
    platform::Medium mediumAt(const std::string& path) override {
        ++asked;
        const auto found = media.find(path);
        return found == media.end() ? platform::Medium{} : found->second;
    }

    void forgetDisks() override { ++forgotten; }

    int asked = 0;
    int forgotten = 0;
    std::map<std::string, platform::Medium> media;
};

}  // namespace dorvanel::test
