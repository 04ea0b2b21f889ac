// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace dorvanel::ui {

/// The user's desktop as a whole. Main thread.
class Workspace {
  public:
    virtual ~Workspace() = default;
    /// Opens an address in the program that the user has for it; returns at once.
    virtual void openURL(const std::string& url) = 0;
};

}  // namespace dorvanel::ui
