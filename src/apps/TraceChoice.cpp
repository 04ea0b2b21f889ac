// SPDX-License-Identifier: MIT
#include "apps/TraceChoice.h"

#include <algorithm>

namespace dorvanel {
namespace {

constexpr const char* preferenceKey = "Traces";

bool holds(const TraceChoice::Kinds& kinds, const std::string& kind) {
    return std::ranges::find(kinds, kind) != kinds.end();
}

}  // namespace

std::map<std::string, TraceChoice::Kinds> TraceChoice::chosen() const {
    auto choice =
        defaults_.dictionaryForKey(preferenceKey).value_or(std::map<std::string, Kinds>());
    std::erase_if(choice, [](const auto& application) { return application.second.empty(); });
    return choice;
}

bool TraceChoice::isChosen(const std::string& application, const std::string& kind) const {
    const auto choice = chosen();
    const auto found = choice.find(application);
    return found != choice.end() && holds(found->second, kind);
}

Result<Done> TraceChoice::select(const std::string& application, const Kinds& kinds) {
    return select({{application, kinds}});
}

Result<Done> TraceChoice::select(const std::map<std::string, Kinds>& kinds) {
    auto choice = chosen();
    for (const auto& [application, added] : kinds) {
        Kinds& ofApplication = choice[application];
        for (const std::string& kind : added) {
            if (!holds(ofApplication, kind)) ofApplication.push_back(kind);
        }
    }
    return store(choice);
}

Result<Done> TraceChoice::deselect(const std::string& application, const Kinds& kinds) {
    auto choice = chosen();
    const auto found = choice.find(application);
    if (found == choice.end()) return Done{};
    std::erase_if(found->second, [&](const std::string& kind) { return holds(kinds, kind); });
    if (kinds.empty() || found->second.empty()) choice.erase(found);
    return store(choice);
}

Result<Done> TraceChoice::store(const std::map<std::string, Kinds>& choice) {
    const auto former = chosen();
    set(choice);
    Result<Done> stored = defaults_.synchronize();
    // Else it would be stored after all, with whatever is changed next.
    if (!stored) set(former);
    return stored;
}

void TraceChoice::set(const std::map<std::string, Kinds>& choice) {
    if (choice.empty()) {
        defaults_.removeObjectForKey(preferenceKey);
    } else {
        defaults_.setDictionary(choice, preferenceKey);
    }
}

}  // namespace dorvanel
