// SPDX-License-Identifier: MIT

// Mount points inside of items: never crossed, and the item left whole.
#include <gmock/gmock.h>
#include <sys/mount.h>

#include <filesystem>

#include "support/Disk.h"
#include "support/EngineFixture.h"
#include "support/MountNamespace.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

/// An item, something outside of it, and mounts that end with the child that makes them.
class MountsTest : public ::testing::Test {
  protected:
    MountsTest() {
        writeFile(folder / "tree/a", "contents");
        writeFile(folder / "tree/sub/point/b", "contents");
        writeFile(folder / "outside/victim", "not in the item");
    }

    void expectInNamespace(const std::function<std::string()>& work) {
        const std::optional<std::string> problem = inMountNamespace(work);
        if (!problem) return sayNotRun("no mount is allowed here");
        EXPECT_EQ(*problem, "");
    }
    [[nodiscard]] bool bind(const std::string& from, const std::string& to) const {
        return mount((folder / from).c_str(), (folder / to).c_str(), nullptr, MS_BIND, nullptr) ==
               0;
    }
    /// What is wrong after the item, which holds a mount point, was handed over.
    [[nodiscard]] std::string problemOf(const Outcome& outcome, const std::string& reason) const {
        if (readFile(folder / "outside/victim") != "not in the item") return "the victim";
        if (readFile(folder / "tree/a") != "contents") return "the item is not whole";
        if (outcome.notRemoved != 1 || outcome.filesRemoved != 0) return "the counts";
        if (outcome.troubles.size() != 1) return "nothing is told";
        if (outcome.troubles[0].reason != reason) return outcome.troubles[0].reason;
        return {};
    }

    TemporaryFolder folder;
};

TEST_F(MountsTest, AnItemThatHoldsAFolderOfAnotherFileSystemIsLeftWhole) {
    expectInNamespace([&]() -> std::string {
        if (!mountTmpfs(folder / "tree/sub/point")) return {};
        TestEngine engine;
        return problemOf(engine.shred({folder / "tree"}),
                         "holds the mount point \"" + (folder / "tree/sub/point") + "\"");
    });
}

TEST_F(MountsTest, ABindMountOfTheSameFileSystemIsSeen) {
    expectInNamespace([&]() -> std::string {
        if (!bind("outside", "tree/sub/point")) return "no bind mount";
        TestEngine engine;
        return problemOf(engine.shred({folder / "tree"}),
                         "holds the mount point \"" + (folder / "tree/sub/point") + "\"");
    });
}

TEST_F(MountsTest, AFileThatIsAMountPointIsSeen) {
    expectInNamespace([&]() -> std::string {
        if (!bind("outside/victim", "tree/sub/point/b")) return "no bind mount";
        TestEngine engine;
        return problemOf(engine.shred({folder / "tree"}),
                         "holds the mount point \"" + (folder / "tree/sub/point/b") + "\"");
    });
}

TEST_F(MountsTest, AnItemThatIsAMountPointIsLeftWhole) {
    expectInNamespace([&]() -> std::string {
        for (const char* item : {"tree/sub/point", "tree/a"}) {
            if (!bind(fs::is_directory(folder / item) ? "outside" : "outside/victim", item)) {
                return "no bind mount";
            }
            TestEngine engine;
            const Outcome& outcome = engine.shred({folder / item});
            if (outcome.notRemoved != 1 || outcome.troubles.size() != 1) return "the counts";
            if (outcome.troubles[0].reason != "is a mount point") return "the reason";
            if (readFile(folder / "outside/victim") != "not in the item") return "the victim";
        }
        return {};
    });
}

TEST_F(MountsTest, OtherItemsAreShreddedAllTheSame) {
    expectInNamespace([&]() -> std::string {
        if (!bind("outside", "tree/sub/point")) return "no bind mount";
        writeFile(folder / "second/file", "x");
        TestEngine engine;
        const Outcome& outcome = engine.shred({folder / "tree", folder / "second"});
        if (fs::exists(folder / "second")) return "the second item is there";
        return outcome.notRemoved == 1 && outcome.filesOverwritten == 1 ? "" : "the counts";
    });
}

TEST_F(MountsTest, AMountThatAppearsLaterIsNotCrossedAtAnyMoment) {
    expectInNamespace([&]() -> std::string {
        for (int at = 0;; ++at) {
            writeFile(folder / "tree/a", "contents");
            writeFile(folder / "tree/sub/point/b", "contents");
            int calls = -1;
            bool mounted = false;
            TestEngine engine;
            std::string point;
            engine.faulty.before = [&](const std::string& operation, const std::string&) {
                if (calls < 0 && operation != "makeFolder") return;
                if (++calls != at) return;
                for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
                    if (!entry.is_directory() || entry.path() == folder / "outside") continue;
                    point = entry.path();  // the deepest, wherever it is by now
                }
                if (point.empty()) return;
                mounted = mount((folder / "outside").c_str(), point.c_str(), nullptr, MS_BIND,
                                nullptr) == 0;
            };
            const Outcome outcome = engine.shred({folder / "tree"});
            const std::string when = " at call " + std::to_string(at);
            if (readFile(folder / "outside/victim") != "not in the item") return "victim" + when;
            if (calls < at) return at > 20 ? "" : "too few calls";
            if (!mounted) continue;
            if (outcome.notRemoved == 0) return "nothing is told" + when;
            // Wherever it was moved meanwhile.
            std::string moved;
            for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
                const fs::path above = entry.path().parent_path();
                if (entry.path().filename() == "victim" && above != folder / "outside") {
                    moved = above;
                }
            }
            if (umount(moved.c_str()) != 0) return "cannot unmount" + when;
            for (const std::string& name : namesIn(folder.path())) {
                if (name != "outside") fs::remove_all(folder / name);
            }
        }
    });
}

TEST_F(MountsTest, AFolderOfALowerLayerOfAnOverlayIsShredded) {
    writeFile(folder / "lower/item/sub/inner/b", recognisable(500));
    writeFile(folder / "lower/item/a", recognisable(500));
    setMode(folder / "lower/item/sub", 0555);
    expectInNamespace([&]() -> std::string {
        // The upper layer must lie where extended attributes of the kind that it needs are kept.
        if (!mountTmpfs(folder / "layers")) return "no tmpfs";
        if (!mountOverlay(folder / "lower", folder / "layers/shown")) return {};
        const std::string shown = folder / "layers/shown";
        TestEngine engine;
        int refused = 0;
        const Outcome& outcome = engine.shred({shown + "/item"});
        for (const auto& call : engine.system.callsOf("makeFolder")) refused += call.name == "sub";
        if (!namesIn(shown).empty()) return "something is left";
        if (outcome.filesOverwritten != 2 || outcome.foldersRemoved != 3) return "the counts";
        if (refused != 1) return "the folder was moved as a whole: nothing is tested";
        return outcome.troubles.empty() ? "" : outcome.troubles[0].operation;
    });
}

}  // namespace
}  // namespace dorvanel::test
