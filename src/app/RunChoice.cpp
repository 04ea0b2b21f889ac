// SPDX-License-Identifier: MIT
#include "app/RunChoice.h"

#include "apps/Applications.h"

namespace dorvanel {
namespace {

/// The lists that collectors ask the user's defaults for.
constexpr const char* profilesKey = "ProfilesMenu";
constexpr const char* tracesKey = "Traces";

}  // namespace

RunChoice RunChoice::now(Preferences& preferences, const platform::UserDefaults& defaults,
                         bool withQuicktime) {
    RunChoice choice{.values = preferences.preferences(),
                     .areKnown = preferences.areKnown(),
                     .enabledApplications = {},
                     .profiles = defaults.arrayForKey(profilesKey),
                     .traces = defaults.dictionaryForKey(tracesKey),
                     .withQuicktime = withQuicktime};
    for (const SupportedApplication& application : applications) {
        if (preferences.browserIsEnabled(application.name)) {
            choice.enabledApplications.emplace(application.name);
        }
    }
    return choice;
}

Number ChosenPreferences::objectForKey(Key key) const {
    const auto found = choice_.values->find(key);
    return found == choice_.values->end() ? Number::fromInt(0) : found->second;
}

std::optional<std::vector<std::string>> ChosenDefaults::arrayForKey(const std::string& key) const {
    return key == profilesKey ? choice_.profiles : std::nullopt;
}

std::optional<platform::UserDefaults::StringLists> ChosenDefaults::dictionaryForKey(
    const std::string& key) const {
    return key == tracesKey ? choice_.traces : std::nullopt;
}

}  // namespace dorvanel
