// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engine/Outcome.h"

namespace dorvanel {

/// Something that a person should know of an item before it is shredded.
struct PlanNote {
    enum class Kind {
        link,        ///< what `target` names, the target of the link `path`, would be overwritten
        hardLink,    ///< the file has other names, which show the overwritten contents
        medium,      ///< overwriting may not reach the old contents: `detail` says why
        shared,      ///< the file shares blocks with a snapshot or a copy
        unreadable,  ///< what is in it could not be looked at, or it cannot be overwritten
        open,        ///< another process, which `detail` names, has the file open
    };
    Kind kind = Kind::link;
    std::string path;                  ///< bytes, absolute
    std::string target{};              ///< of a link: where it leads, absolute
    std::vector<std::string> names{};  ///< of a file with several: those within the item
    std::uint64_t links = 0;           ///< likewise: how many it has altogether
    std::string detail{};              ///< for people
};

/// One item of a plan, and, after it was carried out, what became of it.
struct PlanItem {
    enum class Action {
        shred,    ///< overwritten, renamed and removed
        clean,    ///< rows or keys are taken out of a file that stays
        mention,  ///< what the desktop remembers of a file that goes: a file, or entries of a list
    };
    std::string path;  ///< bytes, absolute
    Action action = Action::shred;
    std::string application{};  ///< "" for none
    std::string trace{};        ///< the kind of trace; "" for none
    std::string profile{};      ///< "" for none
    std::uint64_t files = 0;    ///< entries that are no folder, the item with them
    std::uint64_t folders = 0;  ///< the item with them
    std::uint64_t bytes = 0;    ///< that would be overwritten, those of links' targets with them
    std::uint64_t rows = 0;     ///< that a database would lose
    std::uint64_t keys = 0;     ///< that a JSON file would lose
    std::uint64_t entries = 0;  ///< that a list of the desktop would lose
    std::vector<PlanNote> notes{};
    std::uint64_t moreNotes = 0;  ///< that were only counted
    std::optional<ItemOutcome> outcome{};

    /// Whether it is entries of a list, which stays, rather than something that goes as a whole.
    [[nodiscard]] bool isOfList() const { return action == Action::mention && entries > 0; }
};

/// What a plan passes over, and why.
struct PlanSkip {
    enum class Reason { running, mount, unreadable, locked, corrupt, insecure };
    std::string path{};         ///< "" where an application is passed over as a whole
    std::string application{};  ///< "" for none
    Reason reason = Reason::unreadable;
    std::string detail{};  ///< for people; "" where the reason says it all
};

/// What would be shredded or cleaned, and what would be passed over and why: a value that holds
/// nothing of the disk. Making one touches nothing.
struct Plan {
    std::vector<PlanItem> items;  ///< in the order in which they go
    std::vector<PlanSkip> skipped;

    /// Notes that are kept of an item; beyond, they are only counted.
    static constexpr std::size_t mostNotes = 10'000;
};

/// What all items of a plan come to: of each the counts that its action has.
struct Totals {
    std::uint64_t items = 0;
    std::uint64_t files = 0;
    std::uint64_t folders = 0;
    std::uint64_t bytes = 0;
    std::uint64_t rows = 0;
    std::uint64_t keys = 0;
    std::uint64_t entries = 0;
};

Totals totalsOf(const Plan& plan);

/// Puts what became of each item into the plan's item of the same path. Where several have the
/// path, the first outcome goes to the first of them that has none yet. An outcome that finds no
/// item becomes a new one at the end, with what is known of it, unless nothing became of it.
void addOutcome(Plan& plan, const Outcome& outcome);

}  // namespace dorvanel
