// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <set>
#include <string>

#include "prefs/PreferenceReader.h"

namespace dorvanel::test {

/// Preferences that a test sets as it likes: a key not set reads as NO and 0, and every
/// application is enabled but those in `disabled`.
class FakePreferences final : public PreferenceReader {
  public:
    Number objectForKey(Key key) const override {
        const auto found = values.find(key);
        return found == values.end() ? Number::fromInt(0) : found->second;
    }
    std::uint64_t changeCount() const override { return changes; }
    bool browserIsEnabled(std::string_view name) override {
        return disabled.find(name) == disabled.end();
    }
    bool areKnown() const override { return known; }
    void set(const std::string& key, bool value) {
        ++changes;
        values.insert_or_assign(Key::find(key).value(), Number::fromBool(value));
    }
    void set(const std::string& key, int value) {
        ++changes;
        values.insert_or_assign(Key::find(key).value(), Number::fromInt(value));
    }

    /// What `areKnown` answers.
    bool known = true;
    std::uint64_t changes = 0;
    std::map<Key, Number> values;
    std::set<std::string, std::less<>> disabled;
};

}  // namespace dorvanel::test
