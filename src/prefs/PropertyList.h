// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Result.h"

namespace dorvanel {

/// A property list whose root is a dictionary: values of any kind by key, the order of the keys
/// kept. Numbers are read and written the same way in every locale. One thread at a time.
class PropertyList {
  public:
    /// The kinds of value that the program stores itself.
    using StringLists = std::map<std::string, std::vector<std::string>>;
    using Value = std::variant<bool, std::int64_t, std::vector<std::string>, StringLists>;

    /// Larger lists, and deeper ones, are not parsed: the library that reads and writes them
    /// recurses, and half a mebibyte is a thousand times what preferences need.
    static constexpr std::size_t maximumBytes = std::size_t{512} * 1024;
    static constexpr int maximumDepth = 200;

    /// An empty dictionary.
    PropertyList();
    PropertyList(PropertyList&&) noexcept;
    PropertyList& operator=(PropertyList&&) noexcept;
    ~PropertyList();

    /// Reads the XML or the binary form. An error, whose `detail` says why, when the bytes are not
    /// a whole property list with a dictionary at its root, and when the list could not be read
    /// back once it is written: too large then, or with text that the library cannot carry.
    static Result<PropertyList> parse(std::string_view bytes);

    /// The list as XML; in the binary form where a string holds a character that XML cannot carry.
    [[nodiscard]] std::string serialized() const;

    [[nodiscard]] bool has(const std::string& key) const;
    /// The value as the program would have stored it; nothing for an absent key and for any other
    /// kind of value.
    [[nodiscard]] std::optional<Value> value(const std::string& key) const;
    /// Conversions of a value of any kind, as UserDefaults has them.
    [[nodiscard]] bool asBool(const std::string& key) const;
    [[nodiscard]] int asInteger(const std::string& key) const;
    /// The text of a string; nothing for an absent key and for any other kind of value.
    [[nodiscard]] std::optional<std::string> asString(const std::string& key) const;
    [[nodiscard]] std::optional<std::vector<std::string>> asStrings(const std::string& key) const;
    [[nodiscard]] std::optional<StringLists> asStringLists(const std::string& key) const;

    void set(const std::string& key, const Value& value);
    void remove(const std::string& key);

  private:
    struct Node;
    explicit PropertyList(std::unique_ptr<Node> root);
    std::unique_ptr<Node> root_;
};

}  // namespace dorvanel
