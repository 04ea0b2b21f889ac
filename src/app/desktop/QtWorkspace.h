// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SystemSound.h"
#include "ui/Workspace.h"

namespace dorvanel::desktop {

/// The desktop that the program runs on.
class QtWorkspace final : public ui::Workspace, public platform::SystemSound {
  public:
    void openURL(const std::string& url) override;
    void beep() override;
};

}  // namespace dorvanel::desktop
