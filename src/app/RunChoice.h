// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/UserDefaults.h"
#include "prefs/Preferences.h"

namespace dorvanel {

/// All that a person has chosen that decides what a run takes, as it was at one moment. A value,
/// for any thread.
struct RunChoice {
    std::shared_ptr<const PreferenceValues> values;  ///< never null
    bool areKnown = true;
    std::set<std::string, std::less<>> enabledApplications;
    std::optional<std::vector<std::string>> profiles;
    std::optional<platform::UserDefaults::StringLists> traces;
    bool withQuicktime = false;

    /// As it is now. Main thread.
    static RunChoice now(Preferences& preferences, const platform::UserDefaults& defaults,
                         bool withQuicktime);
    bool operator==(const RunChoice&) const = default;
};

/// The preferences of a choice. One thread at a time.
class ChosenPreferences final : public PreferenceReader {
  public:
    /// `choice` must outlive this.
    explicit ChosenPreferences(const RunChoice& choice) : choice_(choice) {}
    [[nodiscard]] Number objectForKey(Key key) const override;
    [[nodiscard]] std::uint64_t changeCount() const override { return 0; }
    [[nodiscard]] bool browserIsEnabled(std::string_view name) override {
        return choice_.enabledApplications.contains(name);
    }
    [[nodiscard]] bool areKnown() const override { return choice_.areKnown; }

  private:
    const RunChoice& choice_;
};

/// The user's defaults of a choice: what was chosen of profiles and traces, and nothing else. They
/// cannot be changed. One thread at a time.
class ChosenDefaults final : public platform::UserDefaults {
  public:
    /// `choice` must outlive this.
    explicit ChosenDefaults(const RunChoice& choice) : choice_(choice) {}
    [[nodiscard]] bool hasObjectForKey(const std::string& key) const override {
        return arrayForKey(key).has_value() || dictionaryForKey(key).has_value();
    }
    [[nodiscard]] bool boolForKey(const std::string&) const override { return false; }
    [[nodiscard]] int integerForKey(const std::string&) const override { return 0; }
    [[nodiscard]] std::optional<std::vector<std::string>> arrayForKey(
        const std::string& key) const override;
    [[nodiscard]] std::optional<StringLists> dictionaryForKey(
        const std::string& key) const override;
    void setBool(bool, const std::string&) override {}
    void setInteger(int, const std::string&) override {}
    void setArray(const std::vector<std::string>&, const std::string&) override {}
    void setDictionary(const StringLists&, const std::string&) override {}
    void removeObjectForKey(const std::string&) override {}
    Result<Done> synchronize() override { return Done{}; }

  private:
    const RunChoice& choice_;
};

}  // namespace dorvanel
