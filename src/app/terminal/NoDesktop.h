// SPDX-License-Identifier: MIT
#pragma once

#include "ui/Window.h"
#include "ui/Workspace.h"

namespace dorvanel::terminal {

/// The window of a program that has none.
class NoWindow final : public ui::Window {
  public:
    void setFrameAutosaveName(const std::string&) override {}
    void center() override {}
    void makeKeyAndOrderFront() override {}
    void beginSheet(const std::string&, const std::string&, const std::string&, const std::string&,
                    const std::string&, std::function<void(ui::SheetCode)>) override {}
};

/// Nothing of the terminal program opens an address.
class NoWorkspace final : public ui::Workspace {
  public:
    void openURL(const std::string&) override {}
};

}  // namespace dorvanel::terminal
