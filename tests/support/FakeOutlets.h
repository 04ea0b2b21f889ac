// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/Outlets.h"

namespace dorvanel::test {

/// Remembers every text and colour it was given, in order.
class FakeTextField final : public ui::TextField {
  public:
    void setStringValue(std::string_view text) override {
        texts.emplace_back(text);
        if (onSet) onSet();
    }
    void setTextColor(ui::Color color) override { colors.push_back(color); }
    void display() override { ++displays; }

    std::function<void()> onSet;
    std::vector<std::string> texts;
    std::vector<ui::Color> colors;
    int displays = 0;
};

/// Remembers every value it was given, in order.
class FakeProgressIndicator final : public ui::ProgressIndicator {
  public:
    void setDoubleValue(double percent) override { values.push_back(percent); }
    void display() override { ++displays; }

    std::vector<double> values;
    int displays = 0;
};

}  // namespace dorvanel::test
