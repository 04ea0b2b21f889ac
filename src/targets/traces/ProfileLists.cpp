// SPDX-License-Identifier: MIT
#include "targets/traces/ProfileLists.h"

#include <nlohmann/json.hpp>

#include "targets/traces/IniFile.h"

namespace dorvanel::traces {
namespace {

using nlohmann::json;

/// A Local State is flat; deeper ones are not Chromium's, and taking them apart recurses.
constexpr int deepestJson = 100;

const json* member(const json* object, const char* key) {
    if (object == nullptr || !object->is_object()) return nullptr;
    const auto found = object->find(key);
    return found == object->end() ? nullptr : &*found;
}

}  // namespace

std::vector<ListedProfile> profilesOfIni(std::string_view bytes) {
    std::vector<ListedProfile> profiles;
    std::vector<ListedProfile> ofInstalls;
    for (const IniSection& section : readIni(bytes)) {
        if (section.name.starts_with("Profile")) {
            const std::string path = section.value("Path");
            if (!path.empty()) profiles.push_back({path, section.value("Name")});
        } else if (section.name.starts_with("Install")) {
            const std::string path = section.value("Default");
            if (!path.empty()) ofInstalls.push_back({path, {}});
        }
    }
    profiles.insert(profiles.end(), ofInstalls.begin(), ofInstalls.end());
    return profiles;
}

std::vector<ListedProfile> profilesOfInstalls(std::string_view bytes) {
    std::vector<ListedProfile> profiles;
    for (const IniSection& section : readIni(bytes)) {
        const std::string path = section.value("Default");
        if (!path.empty()) profiles.push_back({path, {}});
    }
    return profiles;
}

Result<std::vector<ListedProfile>> profilesOfLocalState(std::string_view bytes) {
    bool isTooDeep = false;
    const auto watchDepth = [&](int depth, json::parse_event_t, json&) {
        isTooDeep = isTooDeep || depth > deepestJson;
        return !isTooDeep;
    };
    const json state = json::parse(bytes, watchDepth, false);
    const json* cache = member(member(&state, "profile"), "info_cache");
    if (isTooDeep || state.is_discarded() || !state.is_object() ||
        (cache != nullptr && !cache->is_object())) {
        return Error{0, "parse", "Local State", "does not list profiles"};
    }
    std::vector<ListedProfile> profiles;
    if (cache == nullptr) return profiles;
    for (const auto& [path, described] : cache->items()) {
        const json* name = member(&described, "name");
        const bool isNamed = name != nullptr && name->is_string();
        profiles.push_back({path, isNamed ? name->get<std::string>() : std::string()});
    }
    return profiles;
}

}  // namespace dorvanel::traces
