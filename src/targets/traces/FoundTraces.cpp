// SPDX-License-Identifier: MIT
#include "targets/traces/FoundTraces.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include "apps/catalogue/EntryCheck.h"
#include "targets/traces/HomeRoot.h"
#include "targets/traces/PathFinder.h"
#include "targets/traces/Profiles.h"

namespace dorvanel::traces {
namespace {

using catalogue::PathPattern;

/// One way of installing that is there: its roots, and its profiles.
struct Installed {
    std::map<std::string, std::string> roots;
    std::vector<Profile> profiles;
};

/// What is behind the root of a pattern.
std::string_view restOf(std::string_view pattern) {
    const std::size_t end = pattern.find('}');
    return pattern.size() > end + 1 ? pattern.substr(end + 2) : std::string_view();
}

bool namesProfile(std::string_view pattern) {
    return pattern.find("{profile") != std::string_view::npos;
}

class Search {
  public:
    Search(const catalogue::Entry& entry, platform::SystemCalls& system)
        : entry_(entry), system_(system), finder_(system, found_.obstacles) {}

    FoundTraces search() {
        lookEverywhere();
        found_.isInstalled = !installed_.empty();
        for (const catalogue::Trace& trace : entry_.traces) {
            forEachPlace([&](const Installed& place, const Profile* profile) {
                collect(trace, place, profile);
            });
        }
        tidy();
        return std::move(found_);
    }

    std::vector<std::string> locks() {
        lookEverywhere();
        std::set<std::string> locks;
        for (const PathPattern& lock : entry_.locks) {
            forEachPlace([&](const Installed& place, const Profile* profile) {
                for (FoundPath& path : find(lock, place, profile)) locks.insert(path.path);
            });
        }
        return {locks.begin(), locks.end()};
    }

  private:
    void lookEverywhere() {
        for (const catalogue::Install& install : entry_.installs) look(install);
    }

    void look(const catalogue::Install& install) {
        Installed place;
        for (const auto& [name, root] : install.roots) {
            std::string folder = homeRoot(root);
            if (!folder.empty()) place.roots.emplace(name, std::move(folder));
        }
        if (place.roots.empty()) return;
        if (entry_.profiles) {
            for (const FoundPath& root : find(entry_.profiles->root, place, nullptr)) {
                place.profiles =
                    findProfiles({*entry_.profiles, root.path}, system_, found_.obstacles);
            }
        }
        installed_.push_back(std::move(place));
    }

    /// Calls `work` for each place without a profile, then for each profile of it.
    void forEachPlace(const std::function<void(const Installed&, const Profile*)>& work) {
        for (const Installed& place : installed_) {
            work(place, nullptr);
            for (const Profile& profile : place.profiles) work(place, &profile);
        }
    }

    void collect(const catalogue::Trace& trace, const Installed& place, const Profile* profile) {
        const auto add = [&](TraceItem::Action action, const PathPattern& pattern,
                             const std::function<void(TraceItem&)>& complete = {}) {
            if (namesProfile(pattern) != (profile != nullptr)) return;
            for (FoundPath& path : find(pattern, place, profile)) {
                TraceItem item{.action = action,
                               .path = std::move(path.path),
                               .trace = &trace,
                               .profile = profile == nullptr ? std::string() : profile->name};
                if (complete) complete(item);
                const void* part = item.database;
                if (item.json != nullptr) part = item.json;
                if (known_.emplace(&trace, item.action, part, item.path).second) {
                    found_.items.push_back(std::move(item));
                }
            }
        };
        for (const PathPattern& path : trace.shred) add(TraceItem::Action::shred, path);
        for (const PathPattern& path : trace.empty) add(TraceItem::Action::empty, path);
        for (const catalogue::DatabaseCleaning& cleaning : trace.clean) {
            add(TraceItem::Action::clean, cleaning.database, [&](TraceItem& item) {
                item.database = &cleaning;
                for (const auto& [name, pattern] : cleaning.attach) {
                    item.attach[name] = onlyOne(pattern, place, profile);
                }
            });
        }
        for (const catalogue::JsonCleaning& cleaning : trace.json) {
            add(TraceItem::Action::json, cleaning.file,
                [&](TraceItem& item) { item.json = &cleaning; });
        }
    }

    std::string onlyOne(const PathPattern& pattern, const Installed& place,
                        const Profile* profile) {
        std::vector<FoundPath> paths = find(pattern, place, profile);
        return paths.size() == 1 ? std::move(paths.front().path) : std::string();
    }

    /// What a pattern describes; nothing where the place has no such root or profile.
    std::vector<FoundPath> find(const PathPattern& pattern, const Installed& place,
                                const Profile* profile) {
        const std::string_view root = catalogue::rootOf(pattern);
        std::string folder;
        if (root == "profile") {
            if (profile == nullptr) return {};
            folder = profile->folder;
        } else {
            const auto found = place.roots.find(std::string(root));
            if (found == place.roots.end()) return {};
            folder = found->second;
        }
        const auto components = filledIn(restOf(pattern), profile);
        if (!components) return {};
        return finder_.find(folder, *components);
    }

    /// The components with the profile's path and name in their place; nothing where there is none.
    static std::optional<std::vector<Component>> filledIn(std::string_view rest,
                                                          const Profile* profile) {
        std::vector<Component> all;
        for (Component& component : componentsOf(rest, false)) {
            if (component.text.find('{') == std::string::npos) {
                all.push_back(std::move(component));
                continue;
            }
            if (profile == nullptr) return std::nullopt;
            const std::optional<std::string> text = filledIn(component.text, *profile);
            if (!text) return std::nullopt;
            for (Component& part : componentsOf(*text, true)) all.push_back(std::move(part));
        }
        return all;
    }

    /// One component with what its braces stand for; nothing where that would leave its place, or
    /// lead to what holds all profiles.
    static std::optional<std::string> filledIn(std::string text, const Profile& profile) {
        constexpr std::string_view path = "{profile.path}";
        constexpr std::string_view name = "{profile.name}";
        if (text == path) return profile.path.empty() ? std::nullopt : std::optional(profile.path);
        const auto isOneName = [](const std::string& value) {
            return !value.empty() && value.find('/') == std::string::npos &&
                   value.find('\0') == std::string::npos;
        };
        for (const auto& [brace, value] :
             {std::pair(path, profile.path), std::pair(name, profile.name)}) {
            for (std::size_t at = text.find(brace); at != std::string::npos;
                 at = text.find(brace, at + value.size())) {
                if (!isOneName(value)) return std::nullopt;
                text.replace(at, brace.size(), value);
            }
        }
        if (text == "." || text == "..") return std::nullopt;
        return text;
    }

    /// What is looked for twice is told once.
    void tidy() {
        std::ranges::stable_sort(found_.obstacles, {}, &Obstacle::path);
        const auto repeated = std::unique(
            found_.obstacles.begin(), found_.obstacles.end(),
            [](const Obstacle& one, const Obstacle& other) { return one.path == other.path; });
        found_.obstacles.erase(repeated, found_.obstacles.end());
    }

    const catalogue::Entry& entry_;
    platform::SystemCalls& system_;
    FoundTraces found_;
    PathFinder finder_;
    std::vector<Installed> installed_;
    /// What has been found already: several ways of installing may share a folder.
    std::set<std::tuple<const catalogue::Trace*, TraceItem::Action, const void*, std::string>>
        known_;
};

}  // namespace

FoundTraces findTraces(const catalogue::Entry& entry, platform::SystemCalls& system) {
    return Search(entry, system).search();
}

std::vector<std::string> findLocks(const catalogue::Entry& entry, platform::SystemCalls& system) {
    return Search(entry, system).locks();
}

}  // namespace dorvanel::traces
