// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace dorvanel::ui {

/// The panel in which the user picks files. Main thread.
class OpenPanel {
  public:
    virtual ~OpenPanel() = default;
    /// Whether more than one file may be picked.
    virtual void setAllowsMultipleSelection(bool allows) = 0;
    /// Runs the panel modally, starting in `directory`. The files picked, as absolute paths in
    /// bytes, or nothing when the user cancelled.
    virtual std::optional<std::vector<std::string>> runModalForDirectory(
        const std::string& directory) = 0;
};

}  // namespace dorvanel::ui
