// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>
#include <unordered_set>
#include <utility>

#include "engine/Plan.h"

namespace dorvanel {

/// The most that a run takes: what a plan holds that somebody has seen and agreed to. A value; what
/// the plan says of sizes and rows bounds nothing.
class RunLimit {
  public:
    explicit RunLimit(const Plan& shown);

    /// Whether the plan has that kind of trace there, or takes the path along with a folder.
    [[nodiscard]] bool allows(const std::string& path, const std::string& trace = {}) const;
    /// Whether the plan names the path at all, also as one that is passed over.
    [[nodiscard]] bool isKnown(const std::string& path) const;

  private:
    [[nodiscard]] bool liesInFolder(const std::string& path) const;

    std::set<std::pair<std::string, std::string>> items_;  ///< paths, and the kinds of trace
    std::unordered_set<std::string> named_;
    std::unordered_set<std::string> folders_;  ///< that go with all that is in them
};

}  // namespace dorvanel
