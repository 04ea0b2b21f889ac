// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace dorvanel::ui {

/// Which button ended a sheet.
enum class SheetCode { otherButton = -1, alternateButton = 0, defaultButton = 1 };

/// The main window. Main thread.
class Window {
  public:
    virtual ~Window() = default;
    /// The window keeps its place and size from launch to launch under this name.
    virtual void setFrameAutosaveName(const std::string& name) = 0;
    virtual void center() = 0;
    virtual void makeKeyAndOrderFront() = 0;
    /// Shows a sheet on the window and returns; `didDismiss` is called once it has gone. While one
    /// is up no other is shown: that one is brought to the front, and nothing else comes of it.
    virtual void beginSheet(const std::string& title, const std::string& message,
                            const std::string& defaultButton, const std::string& alternateButton,
                            const std::string& otherButton,
                            std::function<void(SheetCode)> didDismiss) = 0;
};

}  // namespace dorvanel::ui
