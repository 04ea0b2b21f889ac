// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>
#include <utility>

#include "support/Disk.h"
#include "support/EngineFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::Field;

constexpr const char* kContents = "not in the item";

/// Somebody who may write in all folders of an item, and files of other people outside of it.
class HostileNeighbourTest : public EngineFixture {
  protected:
    void SetUp() override {
        writeFile(victims / "file", kContents);
        writeFile(victims / "folder/inner", kContents);
        writeFile(victims / "parent/tree/a", kContents);
        writeFile(victims / "parent/tree/sub/b", kContents);
        forEachVictim([](const fs::path& victim) { setMode(victim, 0640); });
        setMode(victims / "folder", 0750);
    }

    void makeItem() const {
        const fs::path tree = folder.path() / "parent/tree";
        writeFile(tree / "a", std::string(300, 'a'));
        writeFile(tree / "sub/b", std::string(300, 'b'));
        writeFile(tree / "sub/deeper/c", std::string(300, 'c'));
        fs::create_directory(tree / "empty");
    }

    /// The victims are as they were, all of them there.
    void expectVictimsUnharmed(const std::string& when) {
        int seen = 0;
        forEachVictim([&](const fs::path& victim) {
            ++seen;
            EXPECT_EQ(readFile(victim), kContents) << victim << " " << when;
            EXPECT_EQ(modeOf(victim), 0640U) << victim << " " << when;
        });
        EXPECT_EQ(seen, 4) << when;
        EXPECT_EQ(modeOf(victims / "folder"), 0750U) << when;
    }

    /// Every file and folder of the item, wherever it is by now, becomes a link to a victim.
    void swapAll(bool files, bool folders) const {
        std::vector<fs::path> entries;
        std::error_code ignored;
        for (fs::recursive_directory_iterator entry(folder.path(), ignored), end; entry != end;
             entry.increment(ignored)) {
            if (ignored) break;
            entries.push_back(entry->path());
        }
        for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
            if (entry->filename() == "parent") continue;
            const bool isFolder = fs::is_directory(fs::symlink_status(*entry, ignored));
            if (isFolder ? folders : files) swap(*entry, isFolder);
        }
    }
    void swap(const fs::path& entry, bool isFolder) const {
        std::error_code ignored;
        fs::rename(entry, asides / std::to_string(++swaps_), ignored);
        fs::create_symlink(victims / (isFolder ? "folder" : "file"), entry, ignored);
    }
    /// The folder that a run works in by now; empty before there is one.
    [[nodiscard]] fs::path holding() const {
        for (const auto& entry : fs::directory_iterator(folder.path() / "parent")) {
            if (entry.path().filename().string().starts_with("Dorvanel X Items (")) {
                return entry.path();
            }
        }
        return {};
    }

    /// Makes an item and shreds it while `attack` happens before the call of number 0, then an
    /// item with the attack before call number 1, and so on, as long as there are calls. Calls
    /// count from the first one of `from` on: when the item has been measured.
    void attackAtEveryCall(const std::function<void()>& attack,
                           const std::string& from = "makeFolder") {
        bool attacked = true;
        for (int at = 0; attacked; ++at) {
            attacked = false;
            for (const std::string& name : namesIn(folder.path())) fs::remove_all(folder / name);
            makeItem();
            int calls = -1;
            std::string when;
            faulty.before = [&](const std::string& operation, const std::string& name) {
                if (calls < 0 && operation != from) return;
                if (++calls != at) return;
                attacked = true;
                when = "attacked before " + operation + " " + name;
                attack();
            };
            shred({folder / "parent/tree"});
            faulty.before = {};
            expectVictimsUnharmed(when);
            if (HasFailure()) return;
            attacks_ += attacked ? 1 : 0;
        }
        EXPECT_GT(attacks_, 20);
    }

    /// Shreds the tree with a link in it whose way leads to the victims from the first `operation`
    /// on.
    void turnTheLinkBefore(const std::string& operation) {
        writeFile(folder / "way/file", "the user's");
        fs::create_directories(folder / "parent/tree");
        fs::create_symlink(folder / "way/file", folder / "parent/tree/link");
        bool turned = false;
        faulty.before = [&](const std::string& next, const std::string&) {
            if (next != operation || std::exchange(turned, true)) return;
            fs::rename(folder / "way", folder / "former way");
            fs::create_symlink(victims.path(), folder / "way");
        };
        const Outcome& outcome = shred({folder / "parent/tree"});
        faulty.before = {};
        EXPECT_TRUE(turned);
        expectVictimsUnharmed("with the way turned");
        EXPECT_EQ(readFile(folder / "former way/file"), "the user's");
        EXPECT_EQ(outcome.notOverwritten, 1U);
        EXPECT_THAT(outcome.troubles, Contains(Field(&Outcome::Trouble::operation, "follow")));
    }

    TemporaryFolder victims;
    TemporaryFolder asides;  ///< what was swapped
    mutable std::atomic<int> swaps_ = 0;
    int attacks_ = 0;

  private:
    template <typename Look>
    void forEachVictim(Look look) const {
        for (const auto& entry : fs::recursive_directory_iterator(victims.path())) {
            if (entry.is_regular_file() && !entry.is_symlink()) look(entry.path());
        }
    }
};

TEST_F(HostileNeighbourTest, FilesSwappedForLinksLeadNowhereAtAnyMoment) {
    attackAtEveryCall([this] { swapAll(true, false); });
}

TEST_F(HostileNeighbourTest, FoldersSwappedForLinksLeadNowhereAtAnyMoment) {
    attackAtEveryCall([this] { swapAll(false, true); });
}

TEST_F(HostileNeighbourTest, EverythingSwappedForLinksLeadsNowhereAtAnyMoment) {
    attackAtEveryCall([this] { swapAll(true, true); });
}

TEST_F(HostileNeighbourTest, LinksThatAreAddedLeadNowhereAtAnyMoment) {
    attackAtEveryCall([this] {
        const fs::path in = holding();
        if (in.empty()) return;
        std::error_code ignored;
        for (const auto& entry : fs::recursive_directory_iterator(in, ignored)) {
            if (!entry.is_directory() || entry.is_symlink()) continue;
            fs::create_symlink(victims / "file", entry.path() / "link", ignored);
            fs::create_symlink(victims / "folder", entry.path() / "folder link", ignored);
        }
        fs::create_symlink(victims / "file", in / "link", ignored);
        fs::create_symlink(victims / "folder", in / "folder link", ignored);
    });
}

TEST_F(HostileNeighbourTest, AParentFolderSwappedForALinkLeadsNowhereAtAnyMoment) {
    const auto swapParent = [this] {
        fs::rename(folder / "parent", folder / "former parent");
        fs::create_symlink(victims / "parent", folder / "parent");
    };
    attackAtEveryCall(swapParent, "openFolder");  // also while the item is measured
    EXPECT_THAT(namesIn(victims / "parent"), testing::ElementsAre("tree"));
}

TEST_F(HostileNeighbourTest, AHoldingFolderSwappedForALinkLeadsNowhereAtAnyMoment) {
    attackAtEveryCall([this] {
        const fs::path in = holding();
        if (in.empty()) return;
        fs::rename(in, folder / "aside");
        fs::create_symlink(victims / "folder", in);
    });
}

TEST_F(HostileNeighbourTest, AHoldingFolderSwappedForAnotherFolderIsNotTheHoldingFolder) {
    attackAtEveryCall([this] {
        const fs::path in = holding();
        if (in.empty()) return;
        if (fs::is_empty(in)) return;  // what is there before it is opened is used
        fs::rename(in, folder / "aside");
        fs::create_directory(in);
        fs::create_hard_link(victims / "file", in / "name of a victim");
    });
}

TEST_F(HostileNeighbourTest, AHoldingFolderSwappedForAFileOfAnotherIsNotMadeWritable) {
    attackAtEveryCall([this] {
        const fs::path in = holding();
        if (in.empty()) return;
        if (fs::is_empty(in)) return;  // what is there before it is opened is used
        fs::rename(in, folder / "aside");
        fs::create_hard_link(victims / "file", in);
    });
}

TEST_F(HostileNeighbourTest, AHoldingFolderThatIsThereAsALinkIsNotUsed) {
    clock.step = {};
    makeItem();
    fs::create_symlink(victims / "folder", folder / "parent/Dorvanel X Items (1000000000)");
    const Outcome& outcome = shred({folder / "parent/tree"});
    expectVictimsUnharmed("with a link in the way");
    EXPECT_EQ(outcome.notRemoved, 1U);
    EXPECT_EQ(readFile(folder / "parent/tree/a"), std::string(300, 'a'));
}

TEST_F(HostileNeighbourTest, ALinkThatTheUserHadIsFollowedToWhereItLed) {
    makeItem();
    writeFile(folder / "target", "the user's");
    fs::create_symlink(folder / "target", folder / "parent/tree/sub/link");
    shred({folder / "parent/tree"});
    EXPECT_EQ(readFile(folder / "target").size(), 20U);
    EXPECT_EQ(readFile(folder / "target").find("user"), std::string::npos);
}

TEST_F(HostileNeighbourTest, ALinkOfTheUserThatIsTurnedElsewhereOnItsWayIsNotFollowedAndIsTold) {
    makeItem();
    turnTheLinkBefore("makeFolder");
}

TEST_F(HostileNeighbourTest, ALinkOfTheUserThatIsTurnedAfterTheLookIsNotWrittenThroughAndIsTold) {
    turnTheLinkBefore("openFile");
}

TEST_F(HostileNeighbourTest, SwappingForThousandsOfRoundsHarmsNobody) {
    constexpr int rounds = 2000;
    std::mutex preparing;
    std::atomic<bool> measured = false;
    faulty.before = [&](const std::string& operation, const std::string&) {
        if (operation == "makeFolder") measured = true;
    };
    const auto swapAndSwap = [&](const std::stop_token& end) {
        for (unsigned turn = 0; !end.stop_requested(); ++turn) {
            while (!measured && !end.stop_requested()) std::this_thread::yield();
            const std::lock_guard lock(preparing);
            if (measured) swapAll(turn % 3 != 0, turn % 3 != 1);
        }
    };
    {
        const std::jthread neighbour(swapAndSwap);
        for (int round = 0; round < rounds; ++round) {
            {
                const std::lock_guard lock(preparing);
                measured = false;
                for (const TemporaryFolder* place : {&folder, &asides}) {
                    for (const std::string& name : namesIn(place->path())) {
                        fs::remove_all(*place / name);
                    }
                }
                makeItem();
            }
            shred({folder / "parent/tree"});
            measured = false;
        }
    }
    expectVictimsUnharmed("after all rounds");
    EXPECT_GT(swaps_, rounds);
}

}  // namespace
}  // namespace dorvanel::test
