// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "prefs/KeyTable.h"

namespace dorvanel {

/// One of the preferences. Made from its name, which is looked up when the program is compiled: a
/// key that does not exist does not compile.
class Key {
  public:
    consteval Key(const char* name) : index_(indexOf(name)) {
        if (index_ == none) throw "no such preference";
    }
    /// The key of a row of the table.
    static constexpr Key of(const PreferenceKey& row) {
        return Key(static_cast<std::size_t>(&row - preferenceKeys.data()));
    }
    /// For names that somebody typed.
    static constexpr std::optional<Key> find(std::string_view name) {
        const std::size_t index = indexOf(name);
        if (index == none) return std::nullopt;
        return Key(index);
    }

    /// The key's row. There must be one: not for a `BoolKey` of no preference.
    [[nodiscard]] constexpr const PreferenceKey& row() const { return preferenceKeys[index_]; }
    [[nodiscard]] constexpr std::string_view name() const { return row().name; }

    friend constexpr bool operator==(Key, Key) = default;
    friend constexpr bool operator<(Key a, Key b) { return a.index_ < b.index_; }

  protected:
    static constexpr std::size_t none = preferenceKeys.size();

    explicit constexpr Key(std::size_t index) : index_(index) {}

    static constexpr std::size_t indexOf(std::string_view name) {
        std::size_t index = 0;
        while (index < none && preferenceKeys[index].name != name) ++index;
        return index;
    }

    std::size_t index_;
};

/// A preference that is on or off.
class BoolKey : public Key {
  public:
    /// No preference at all: for the end of lists.
    constexpr BoolKey() : Key(none) {}
    consteval BoolKey(const char* name) : Key(name) {
        if (!row().isBool()) throw "not a preference that is on or off";
    }
    [[nodiscard]] constexpr bool isNone() const { return index_ == none; }
};

/// A preference that is the index of an item in a pop-up menu.
class IndexKey : public Key {
  public:
    consteval IndexKey(const char* name) : Key(name) {
        if (row().isBool()) throw "not a preference that is an index";
    }
};

}  // namespace dorvanel
