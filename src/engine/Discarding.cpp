// SPDX-License-Identifier: MIT
#include "engine/Discarding.h"

#include <algorithm>
#include <system_error>

#include "base/PathComponents.h"

namespace dorvanel {

using platform::FileSystemPlace;
using platform::FreeSpace;

std::string DiscardedSpace::line(const PathText& pathText) const {
    const std::string place = pathText(mountPoint);
    const std::string failed = "the free space of " + place + " was not discarded: ";
    switch (result.answer) {
        case FreeSpace::Answer::discarded:
            return "discarded the free space of " + place;
        case FreeSpace::Answer::notPermitted:
            return failed + "not permitted; as root: fstrim " + place;
        case FreeSpace::Answer::notSupported:
            return failed + "the medium or its file system does not support it";
        case FreeSpace::Answer::failed:
            break;
    }
    return failed + std::generic_category().message(result.code);
}

void Discarding::add(const Plan& plan) {
    for (const PlanItem& item : plan.items) {
        addItem(item.path);
        for (const PlanNote& note : item.notes) {
            if (note.kind == PlanNote::Kind::link) addItem(note.target);
        }
    }
}

void Discarding::addItem(const std::string& path) {
    std::string folder = ItemPath(path).folder;
    if (folder == lastFolder_) return;
    lastFolder_ = folder;
    Result<FileSystemPlace> place = freeSpace_.placeOf(folder);
    // A folder that has gone was no mount point: the one above lies where it lay.
    while (!place && place.error().code == ENOENT && folder != "/") {
        folder = ItemPath(folder).folder;
        place = freeSpace_.placeOf(folder);
    }
    if (!place) return;
    const std::string& device = place.value().device;
    if (std::ranges::find(places_, device, &FileSystemPlace::device) == places_.end()) {
        places_.push_back(place.value());
    }
}

std::vector<DiscardedSpace> Discarding::discard() {
    std::vector<DiscardedSpace> spaces;
    for (const FileSystemPlace& place : places_) {
        spaces.push_back({place.mountPoint, freeSpace_.discard(place.mountPoint)});
    }
    return spaces;
}

}  // namespace dorvanel
