// SPDX-License-Identifier: MIT
#include "engine/plan/ItemNotes.h"

#include <utility>

namespace dorvanel {

void ItemNotes::add(PlanNote note) {
    if (item_.notes.size() < Plan::mostNotes) {
        item_.notes.push_back(std::move(note));
    } else {
        ++item_.moreNotes;
    }
}

void ItemNotes::addName(const platform::FileStatus& file,
                        const std::function<std::string()>& path) {
    const auto [known, isNew] = notesOfFiles_.try_emplace(Identity::of(file), none);
    if (isNew && item_.notes.size() >= Plan::mostNotes) {
        ++item_.moreNotes;
        return;
    }
    if (!isNew && (known->second == none || names_ >= mostNames)) return;
    ++names_;
    const std::string name = path();
    if (isNew) {
        known->second = item_.notes.size();
        item_.notes.push_back(
            {.kind = PlanNote::Kind::hardLink, .path = name, .links = file.links});
    }
    item_.notes[known->second].names.push_back(name);
}

}  // namespace dorvanel
