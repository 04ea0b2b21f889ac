// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace dorvanel::ui {

/// The named colours that the program gives to its labels.
enum class Color { black, red, green, lightGray, darkGray };

/// A text field or label of the interface. Any thread may call; an implementation over a toolkit
/// brings the call to its own thread. Texts are bytes: a file's name need not be valid UTF-8.
class TextField {
  public:
    virtual ~TextField() = default;
    virtual void setStringValue(std::string_view text) = 0;
    virtual void setTextColor(Color color) = 0;
    /// Asks for a redraw now rather than when the main loop comes round.
    virtual void display() = 0;
};

/// The determinate progress bar, range 0 to 100. Threads as for TextField.
class ProgressIndicator {
  public:
    virtual ~ProgressIndicator() = default;
    virtual void setDoubleValue(double percent) = 0;
    virtual void display() = 0;
};

}  // namespace dorvanel::ui
