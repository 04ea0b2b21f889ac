// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Result.h"

namespace dorvanel::platform {

/// The program's own domain of the user's defaults: a property list of key/value pairs, one per
/// user. Reads and writes work on memory; `synchronize` brings memory and file together.
/// Main thread only.
class UserDefaults {
  public:
    virtual ~UserDefaults() = default;

    /// False where what is stored could not be read. Nobody can tell then what the user chose:
    /// every key reads as absent, changes are dropped and `synchronize` fails, until
    /// `startAfresh`.
    [[nodiscard]] virtual bool isKnown() const { return true; }

    /// Where the stored list cannot be read, sets it aside under a new name that replaces nothing,
    /// and stores what this process knows in its place: nothing, or what it read before the damage.
    /// A list that can be read stays, and is read. On failure nothing is known that was not before.
    virtual Result<Done> startAfresh() { return Done{}; }

    /// Whether anything, of any kind, is stored under the key.
    [[nodiscard]] virtual bool hasObjectForKey(const std::string& key) const = 0;

    /// The stored object read as a boolean: booleans as they are, numbers by "not zero", strings
    /// "YES", "true" (any case, first letter decides) and numbers that are not zero as true; all
    /// else, and an absent key, false.
    [[nodiscard]] virtual bool boolForKey(const std::string& key) const = 0;

    /// The stored object read as an integer: reals cut toward zero, strings by their leading
    /// digits, booleans as 0 and 1; all else, and an absent key, 0.
    [[nodiscard]] virtual int integerForKey(const std::string& key) const = 0;

    /// The strings of a stored array (other members are left out); nothing when the key is absent
    /// or holds no array. An empty array is an answer.
    [[nodiscard]] virtual std::optional<std::vector<std::string>> arrayForKey(
        const std::string& key) const = 0;

    /// The arrays of strings of a stored dictionary, by key (members of other kinds are left out);
    /// nothing when the key is absent or holds no dictionary.
    using StringLists = std::map<std::string, std::vector<std::string>>;
    [[nodiscard]] virtual std::optional<StringLists> dictionaryForKey(
        const std::string& key) const = 0;

    virtual void setBool(bool value, const std::string& key) = 0;
    virtual void setInteger(int value, const std::string& key) = 0;
    virtual void setArray(const std::vector<std::string>& strings, const std::string& key) = 0;
    virtual void setDictionary(const StringLists& lists, const std::string& key) = 0;
    virtual void removeObjectForKey(const std::string& key) = 0;

    /// Writes what this process changed since it last read or wrote, over what the file holds now,
    /// and reads what others changed. On failure the file is as it was, and the changes stay in
    /// memory for the next call.
    virtual Result<Done> synchronize() = 0;
};

}  // namespace dorvanel::platform
