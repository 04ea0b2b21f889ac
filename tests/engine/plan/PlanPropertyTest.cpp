// SPDX-License-Identifier: MIT

// What a plan says is what then happens, for trees of all sorts: of each, the plan is made first,
// and then the engine is let loose on it.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <set>

#include "engine/plan/ItemPlanner.h"
#include "engine/plan/RandomTree.h"
#include "support/Disk.h"
#include "support/EngineFixture.h"
#include "support/OnlyLookingSystemCalls.h"
#include "support/Seeds.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using Links = platform::SystemCalls::Links;

constexpr unsigned seeds = seedsOf(30);

struct Sum {
    std::uint64_t files = 0;
    std::uint64_t folders = 0;
    std::uint64_t bytes = 0;
    bool operator==(const Sum&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Sum& sum) {
    return stream << sum.files << " files, " << sum.folders << " folders, " << sum.bytes
                  << " bytes";
}

Sum sumOf(const Plan& plan) {
    Sum sum;
    for (const PlanItem& item : plan.items) {
        sum.files += item.files;
        sum.folders += item.folders;
        sum.bytes += item.bytes;
    }
    return sum;
}

std::uint64_t inodeOf(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

/// What is in all plain files with something in them, by their inode numbers.
std::map<std::uint64_t, std::string> contentsIn(const std::string& place) {
    std::map<std::uint64_t, std::string> contents;
    if (!fs::exists(place)) return contents;
    for (const auto& entry : fs::recursive_directory_iterator(place)) {
        if (entry.is_symlink() || !entry.is_regular_file()) continue;
        if (entry.file_size() > 0) contents[inodeOf(entry.path())] = readFile(entry.path());
    }
    return contents;
}

/// The files that will have other contents, though perhaps not all their names go.
std::set<std::uint64_t> notedIn(const Plan& plan) {
    std::set<std::uint64_t> noted;
    for (const PlanItem& item : plan.items) {
        for (const PlanNote& note : item.notes) {
            if (note.kind == PlanNote::Kind::link) noted.insert(inodeOf(note.target));
            if (note.kind == PlanNote::Kind::hardLink) noted.insert(inodeOf(note.path));
        }
    }
    return noted;
}

/// Plans the items of the tree of this seed, shreds them, and compares: the first item alone, then
/// two, and so on, so that each item's own part is compared.
void compare(unsigned seed, Links links) {
    for (std::size_t items = 1;; ++items) {
        const TemporaryFolder folder(quickPlace());
        const std::string place = folder / "place";
        const RandomTree tree(place, seed);
        if (items > tree.items.size()) return;
        std::vector<std::string> paths(tree.items.begin(),
                                       tree.items.begin() + static_cast<std::ptrdiff_t>(items));

        TestEngine engine;
        OnlyLookingSystemCalls looking(*engine.real);
        std::vector<HeldItem> held = holdAll(looking, paths, links);
        const Plan plan = planOf(held, {.system = looking});
        const std::set<std::uint64_t> noted = notedIn(plan);
        const auto contents = contentsIn(place);
        engine.access.shredItems(held);
        const Outcome& outcome = engine.access.outcome();

        SCOPED_TRACE("seed " + std::to_string(seed) + ", " + std::to_string(items) + " items");
        const Sum happened{outcome.filesRemoved, outcome.foldersRemoved, outcome.bytesOverwritten};
        ASSERT_EQ(sumOf(plan), happened);
        ASSERT_EQ(outcome.notRemoved, plan.skipped.size());
        ASSERT_EQ(outcome.notOverwritten, 0U);
        for (const auto& [inode, text] : contentsIn(place)) {
            const bool isNoted = noted.contains(inode);
            ASSERT_EQ(contents.at(inode) != text, isNoted) << "inode " << inode;
        }
    }
}

class PlanPropertyTest : public ::testing::TestWithParam<unsigned> {
    TemporaryHome home_;
    LogCapture log_;
};

TEST_P(PlanPropertyTest, WhatIsPlannedHappensWithLinksFollowed) {
    compare(GetParam(), Links::follow);
}

TEST_P(PlanPropertyTest, WhatIsPlannedHappensWithLinksThatStay) {
    compare(GetParam(), Links::stay);
}

INSTANTIATE_TEST_SUITE_P(OfEachSeed, PlanPropertyTest, ::testing::Range(1U, seeds + 1));

}  // namespace
}  // namespace dorvanel::test
