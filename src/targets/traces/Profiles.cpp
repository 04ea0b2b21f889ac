// SPDX-License-Identifier: MIT
#include "targets/traces/Profiles.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <system_error>

#include "base/PathComponents.h"
#include "platform/FileManager.h"
#include "platform/ReplaceFile.h"
#include "targets/traces/HomeRoot.h"
#include "targets/traces/PathFinder.h"
#include "targets/traces/ProfileLists.h"

namespace dorvanel::traces {
namespace {

using platform::EntryKind;

/// Larger lists are nobody's: Chromium's Local State has some hundred kibibytes.
constexpr std::size_t largestList = std::size_t{16} << 20;

/// Whether a path of a list can be followed component by component and stays where it begins.
bool isPlain(std::string_view path) {
    for (const Component& component : componentsOf(path, true)) {
        if (component.text.empty() || component.text == "." || component.text == ".." ||
            component.text.find('\0') != std::string::npos) {
            return false;
        }
    }
    return !path.empty() && path.size() < 4096;
}

std::string reasonOf(const Error& error) {
    return error.detail.empty() ? std::generic_category().message(error.code) : error.detail;
}

/// Collects the profiles of one root.
class Search {
  public:
    Search(const std::string& root, platform::SystemCalls& system, std::vector<Obstacle>& obstacles)
        : root_(root), obstacles_(obstacles), finder_(system, obstacles) {}

    void mozilla() {
        addAll(read("profiles.ini", [](const std::string& bytes) {
            return Result<std::vector<ListedProfile>>(profilesOfIni(bytes));
        }));
        addAll(read("installs.ini", [](const std::string& bytes) {
            return Result<std::vector<ListedProfile>>(profilesOfInstalls(bytes));
        }));
        for (const FoundPath& store :
             finder_.find(root_, {{"Profile Groups", true}, {"*.sqlite", false}})) {
            if (store.kind != EntryKind::regular) continue;
            const auto listed = profilesOfStore(store.path);
            if (listed) {
                addAll(listed.value());
            } else {
                obstacles_.push_back({store.path, reasonOf(listed.error())});
            }
        }
    }

    void chromium() {
        addAll(read("Local State",
                    [](const std::string& bytes) { return profilesOfLocalState(bytes); }));
        // Profiles that no list names, and all where there is no list.
        for (const char* name : {"Default", "Profile *", "Guest Profile", "System Profile"}) {
            for (const FoundPath& settings :
                 finder_.find(root_, {{name, false}, {"Preferences", true}})) {
                add({pathBelow(ItemPath(settings.path).folder, root_), {}});
            }
        }
    }

    void matching(const std::string& pattern) {
        for (const FoundPath& found : finder_.find(root_, componentsOf(pattern, false))) {
            const std::string path = pathBelow(found.path, root_);
            if (found.kind == EntryKind::folder || found.kind == EntryKind::link) add({path, {}});
        }
    }

    std::vector<Profile> profiles;

  private:
    template <typename Parse>
    std::vector<ListedProfile> read(const char* name, Parse parse) {
        const std::string path = root_ + "/" + name;
        if (!finder_.isFile(root_, {{name, true}})) return {};
        const auto bytes = platform::readWholeFile(path, largestList, root_);
        if (!bytes) {
            obstacles_.push_back({path, reasonOf(bytes.error())});
            return {};
        }
        if (!bytes.value()) return {};
        if (bytes.value()->size() > largestList) {
            obstacles_.push_back({path, "is too large"});
            return {};
        }
        auto listed = parse(*bytes.value());
        if (listed) return listed.value();
        obstacles_.push_back({path, listed.error().detail});
        return {};
    }

    void addAll(const std::vector<ListedProfile>& listed) {
        for (const ListedProfile& one : listed) add(one);
    }

    void add(const ListedProfile& listed) {
        const bool isAbsolute = listed.path.starts_with('/');
        std::string below = isAbsolute ? pathBelow(listed.path, root_) : listed.path;
        std::string root = root_;
        if (isAbsolute && below.empty()) {
            root = realHome();
            below = belowHome(listed.path);
        }
        if (!isPlain(below)) {
            obstacles_.push_back({isAbsolute ? listed.path : root_ + "/" + listed.path,
                                  "leads out of the home folder or its root"});
            return;
        }
        const std::string folder = root + "/" + below;
        const bool isKnown =
            std::ranges::find(profiles, folder, &Profile::folder) != profiles.end();
        if (isKnown || !finder_.isFolder(root, componentsOf(below, true))) return;
        profiles.push_back({folder, pathBelow(folder, root_),
                            listed.name.empty() ? ItemPath(folder).name : listed.name});
    }

    /// The path below the home folder, by either of the home's names.
    static std::string belowHome(const std::string& path) {
        const std::string below = pathBelow(path, realHome());
        return below.empty() ? pathBelow(path, platform::homeDirectory()) : below;
    }

    std::string root_;
    std::vector<Obstacle>& obstacles_;
    PathFinder finder_;
};

}  // namespace

std::vector<Profile> findProfiles(const ProfileRoot& root, platform::SystemCalls& system,
                                  std::vector<Obstacle>& obstacles) {
    Search search(root.folder, system, obstacles);
    switch (root.profiles.list) {
        case catalogue::Profiles::List::mozilla:
            search.mozilla();
            break;
        case catalogue::Profiles::List::chromium:
            search.chromium();
            break;
        case catalogue::Profiles::List::pattern:
            search.matching(root.profiles.pattern);
            break;
    }
    return search.profiles;
}

}  // namespace dorvanel::traces
