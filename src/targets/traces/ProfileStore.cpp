// SPDX-License-Identifier: MIT
#include <chrono>

#include "platform/CleaningCalls.h"
#include "platform/Clock.h"
#include "targets/cleaning/Connection.h"
#include "targets/cleaning/HeldDatabase.h"
#include "targets/traces/ProfileLists.h"

namespace dorvanel::traces {
namespace {

/// A list of a few rows; one that takes longer was made to.
constexpr std::chrono::seconds patience{10};
constexpr std::size_t mostProfiles = 10'000;

/// "PATH: reason" has the path already.
Error withoutPath(const cleaning::Trouble& trouble, const std::string& path) {
    return Error{trouble.error.code, trouble.error.operation, path, trouble.error.detail};
}

}  // namespace

Result<std::vector<ListedProfile>> profilesOfStore(const std::string& path) {
    const auto calls = platform::makeCleaningCalls();
    platform::Clock& clock = platform::systemClock();
    const auto held = cleaning::holdDatabase(*calls, clock, path, cleaning::Holding::looking);
    if (!held) return withoutPath(held.trouble(), path);
    cleaning::ImageFiles files(*calls);
    cleaning::showDatabase(files, "profiles", *held.value());
    auto store =
        cleaning::Connection::open(files, "profiles", path, {clock, clock.now() + patience, {}});
    if (!store) return withoutPath(store.trouble(), path);
    const auto rows = store.value()->ask("SELECT path, name FROM Profiles ORDER BY id LIMIT " +
                                         std::to_string(mostProfiles));
    if (!rows) return withoutPath(rows.trouble(), path);
    std::vector<ListedProfile> profiles;
    for (const auto& row : rows.value()) {
        profiles.push_back({row[0].value_or(""), row[1].value_or("")});
    }
    return profiles;
}

}  // namespace dorvanel::traces
