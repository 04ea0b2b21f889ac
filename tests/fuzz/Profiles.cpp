// SPDX-License-Identifier: MIT
#include <algorithm>

#include "fuzz/FuzzInput.h"
#include "targets/traces/ProfileLists.h"

// Lists of profiles, which other programs write: any bytes are read, or refused with a reason. The
// first byte says whose list the others are: profiles.ini, installs.ini or a Local State.

using namespace dorvanel;
using dorvanel::test::insist;
using traces::ListedProfile;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string bytes = dorvanel::test::bytesOf(data + 1, size - 1);
    if (data[0] % 3 == 2) {
        const auto listed = traces::profilesOfLocalState(bytes);
        insist(listed.ok() || !listed.error().detail.empty(), "a refusal has a reason");
        if (!listed) return 0;
        for (const ListedProfile& profile : listed.value()) {
            const auto isSame = [&](const ListedProfile& other) {
                return other.path == profile.path;
            };
            insist(std::ranges::count_if(listed.value(), isSame) == 1, "a key is listed once");
        }
        return 0;
    }
    const std::vector<ListedProfile> listed =
        data[0] % 3 == 0 ? traces::profilesOfIni(bytes) : traces::profilesOfInstalls(bytes);
    for (const ListedProfile& profile : listed) {
        insist(!profile.path.empty(), "a profile has a path");
        insist(bytes.find(profile.path) != std::string::npos, "its path is one of the file's");
        insist(bytes.find(profile.name) != std::string::npos, "its name is one of the file's");
        insist((profile.path + profile.name).find('\n') == std::string::npos,
               "a value ends with its line");
    }
    return 0;
}
