// SPDX-License-Identifier: MIT
#pragma once

namespace dorvanel {

/// A preference's value: a number made from a boolean or from an integer. Compared by value, so
/// YES equals 1.
class Number {
  public:
    static constexpr Number fromBool(bool value) { return Number(value ? 1 : 0, true); }
    static constexpr Number fromInt(int value) { return Number(value, false); }

    [[nodiscard]] constexpr bool boolValue() const { return value_ != 0; }
    [[nodiscard]] constexpr int intValue() const { return value_; }
    [[nodiscard]] constexpr bool isBool() const { return isBool_; }

    friend constexpr bool operator==(Number a, Number b) { return a.value_ == b.value_; }

  private:
    constexpr Number(int value, bool isBool) : value_(value), isBool_(isBool) {}

    int value_;
    bool isBool_;
};

}  // namespace dorvanel
