// SPDX-License-Identifier: MIT
#include "app/TrashLook.h"

#include "app/ShredArguments.h"
#include "targets/UserFolders.h"

namespace dorvanel {

Result<LookedAtTrash> lookAtTrash(LookServices& services, const std::function<bool()>& stop) {
    const Result<std::vector<std::string>> mounted = services.mountPoints();
    if (!mounted) return mounted.error();
    LookedAtTrash looked;
    looked.protectedFolders =
        checkShredArguments({}, platform::homeDirectory(), mounted.value(), *services.system)
            .protectedFolders;
    looked.trash = std::make_shared<TrashShredding>(
        mentions::Mentions::Parts{*services.system, *services.cleaningCalls, services.clock});
    looked.trash->find(userDataFolder(), mounted.value(),
                       services.planning.parts(*services.system, stop, looked.protectedFolders));
    return looked;
}

}  // namespace dorvanel
