// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <variant>
#include <vector>

#include "platform/UserDefaults.h"

namespace dorvanel::test {

/// User defaults in memory that remember the order of the calls which change or save them.
class FakeUserDefaults final : public platform::UserDefaults {
  public:
    using Value = std::variant<bool, int, std::vector<std::string>, StringLists>;

    bool hasObjectForKey(const std::string& key) const override { return values.contains(key); }
    bool boolForKey(const std::string& key) const override { return integerForKey(key) != 0; }
    int integerForKey(const std::string& key) const override {
        const auto found = values.find(key);
        if (found == values.end()) return 0;
        if (const bool* flag = std::get_if<bool>(&found->second)) return *flag ? 1 : 0;
        if (const int* number = std::get_if<int>(&found->second)) return *number;
        return 0;
    }
    std::optional<std::vector<std::string>> arrayForKey(const std::string& key) const override {
        const auto found = values.find(key);
        if (found == values.end()) return std::nullopt;
        if (const auto* strings = std::get_if<std::vector<std::string>>(&found->second)) {
            return *strings;
        }
        return std::nullopt;
    }
    std::optional<StringLists> dictionaryForKey(const std::string& key) const override {
        const auto found = values.find(key);
        if (found == values.end()) return std::nullopt;
        const auto* lists = std::get_if<StringLists>(&found->second);
        return lists == nullptr ? std::nullopt : std::optional(*lists);
    }
    void setBool(bool value, const std::string& key) override {
        values[key] = value;
        calls.push_back("set " + key + (value ? " YES" : " NO"));
    }
    void setInteger(int value, const std::string& key) override {
        values[key] = value;
        calls.push_back("set " + key + " " + std::to_string(value));
    }
    void setArray(const std::vector<std::string>& strings, const std::string& key) override {
        values[key] = strings;
        std::string line = "set " + key + " [";
        for (const std::string& string : strings) line += string + ";";
        calls.push_back(line + "]");
    }
    void setDictionary(const StringLists& lists, const std::string& key) override {
        values[key] = lists;
        calls.push_back("set " + key + " of " + std::to_string(lists.size()));
    }
    void removeObjectForKey(const std::string& key) override {
        values.erase(key);
        calls.push_back("remove " + key);
    }
    Result<Done> synchronize() override {
        calls.emplace_back("synchronize");
        if (cannotStore) return Error{28, "save preferences", "/home/prefs.plist", {}};
        return Done{};
    }

    bool isKnown() const override { return known; }
    Result<Done> startAfresh() override {
        calls.emplace_back("startAfresh");
        known = true;
        return Done{};
    }

    /// What `isKnown` answers.
    bool known = true;
    /// Whether there is no room on the disk to save anything.
    bool cannotStore = false;
    std::map<std::string, Value> values;
    std::vector<std::string> calls;
};

}  // namespace dorvanel::test
