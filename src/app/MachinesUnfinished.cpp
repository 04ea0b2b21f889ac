// SPDX-License-Identifier: MIT
#include "app/MachinesUnfinished.h"

#include <string>

#include "engine/ListedFolders.h"
#include "platform/UserSwitch.h"

namespace dorvanel {
namespace {

std::string ownFolder() {
    return platform::isRootInAnothersHome() ? std::string() : unfinishedFolderPath();
}

}  // namespace

MachinesUnfinished::MachinesUnfinished()
    : record_(*recordsSystem_, *files_, ownFolder()), folder_(*system_, *files_, ownFolder()) {}

Result<Done> MachinesUnfinished::find(LeftFolders& found) {
    return findListedFolders(folder_, *system_, *files_, found);
}

std::size_t MachinesUnfinished::count() {
    LeftFolders found;
    const Result<Done> looked = find(found);
    folder_.close();
    return looked ? found.folders.size() : 0;
}

void MachinesUnfinished::forgetGone() {
    LeftFolders found;
    if (find(found) && !found.spent.empty()) folder_.shred(found.spent);
    folder_.close();
}

}  // namespace dorvanel
