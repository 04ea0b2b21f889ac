// SPDX-License-Identifier: MIT

// Other people on the same machine, while somebody shreds what is theirs alone in a folder that all
// may write in.
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <ctime>

#include "realfs/Markers.h"
#include "realfs/Neighbour.h"
#include "realfs/RealFsFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

class ThievesTest : public RealFsTest {
  protected:
    bool prepare(unsigned mode) {
        memory = mountMemory(mounted);
        if (!memory || !isRoot()) return false;
        fs::create_directories(loot);
        setMode(shared, mode);
        setMode(loot, 0777);
        return chown(loot.c_str(), nobody, nobody) == 0;
    }

    /// A folder that nobody else may look into.
    void makePrivateTree() const {
        for (unsigned i = 1; i <= 30; ++i) {
            writeFile(shared + "/tree/" + std::to_string(i % 3) + "/" + std::to_string(i),
                      markedContents(i, 8));
        }
        setMode(shared + "/tree", 0700);
        giveAway(shared + "/tree");
        for (const auto& entry : fs::recursive_directory_iterator(shared + "/tree")) {
            setMode(entry.path(), entry.is_directory() ? 0700 : 0600);
            giveAway(entry.path());
        }
    }

    static void giveAway(const std::string& path) {
        EXPECT_EQ(lchown(path.c_str(), victim, victim), 0);
    }

    Ran shredAsVictim(const std::string& path) {
        return dorvanel({"shred", path}, [] { become(victim); });
    }

    /// Takes every file that can be had, else its contents, and moves folders about.
    void steal(const std::string& folder) {
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            const std::string path = entry->path();
            if (path == loot) continue;
            const std::string here = loot + "/" + std::to_string(++taken);
            std::error_code not_had;
            if (entry->is_directory(not_had)) {
                steal(path);
                // To another folder only who may write in it can move it.
                if (taken % patience == 0) {
                    fs::rename(path, folder + "/moved " + std::to_string(taken), not_had);
                }
            } else {
                fs::rename(path, here, not_had);
                if (not_had) fs::copy_file(path, here, not_had);
            }
        }
    }

    /// What is wrong with a shredding among thieves: whoever is told that all went well must find
    /// that nothing is left anywhere.
    [[nodiscard]] std::string problemOf(const Ran& ran) const {
        const std::string left = without(markersBelow(shared), {});
        if (ran.status == 0) return left.empty() ? "" : "told nothing: " + left;
        if (ran.status == 1 || ran.status == 2) return ran.err.empty() ? "no word of it" : "";
        return "status " + std::to_string(ran.status) + ": " + ran.err;
    }

    void shredAmongThieves(unsigned mode) {
        NEEDS(prepare(mode));
        int whole = 0;
        for (int i = 0; i < attempts(40); ++i) {
            makePrivateTree();
            patience = std::array{500, 5000, 50000}.at(static_cast<std::size_t>(i % 3));
            Ran ran;
            {
                const Neighbour thief(nobody, [this] { steal(shared); });
                NEEDS(thief.works());
                ran = shredAsVictim(shared + "/tree");
            }
            whole += ran.status == 0 ? 1 : 0;
            EXPECT_EQ(problemOf(ran), "") << "attempt " << i << ": " << ran;
            for (const std::string& name : namesIn(shared)) {
                if (shared + "/" + name != loot) fs::remove_all(shared + "/" + name);
            }
            for (const std::string& name : namesIn(loot)) fs::remove_all(loot + "/" + name);
        }
        std::printf("%d of %d went undisturbed\n", whole, attempts(40));
    }

    MountPointer memory;
    std::string shared = mounted + "/shared";
    std::string loot = shared + "/loot";
    int taken = 0;
    int patience = 7;  ///< what a thief takes of others before it moves a folder
};

TEST_F(ThievesTest, InAFolderThatAllMayWriteInNothingIsTakenInSilence) {
    shredAmongThieves(0777);
}

TEST_F(ThievesTest, InAStickyFolderNothingIsTakenInSilence) {
    shredAmongThieves(01777);
}

TEST_F(ThievesTest, AHoldingFolderThatSomebodyElseHasMadeIsNotUsed) {
    NEEDS(prepare(01777));
    for (int i = 0; i < attempts(20); ++i) {
        for (int link = 0; link < 2; ++link) {
            const std::string file = shared + "/file";
            writeFile(file, markedContents(1, 8));
            setMode(file, 0600);
            giveAway(file);
            // As it will be called in this second, and in the next ones.
            std::vector<std::string> baits;
            for (int second = 0; second < 30; ++second) {
                const auto when = static_cast<long long>(std::time(nullptr)) + second;
                baits.push_back(shared + "/Dorvanel X Items (" + std::to_string(when) + ")");
                if (link == 1) {
                    fs::create_directory_symlink(loot, baits.back());
                } else {
                    fs::create_directory(baits.back());
                    setMode(baits.back(), 0777);
                }
                ASSERT_EQ(lchown(baits.back().c_str(), nobody, nobody), 0);
            }
            const Ran ran = shredAsVictim(file);
            EXPECT_EQ(ran.status, 1) << ran;
            EXPECT_THAT(ran.err, ::testing::HasSubstr(file + ": could not move"));
            EXPECT_TRUE(readFile(file) == markedContents(1, 8));
            EXPECT_EQ(modeOf(file), 0600U);
            EXPECT_THAT(namesIn(loot), ::testing::IsEmpty());
            for (const std::string& bait : baits) fs::remove_all(bait);
        }
    }
}

TEST_F(ThievesTest, DevicesInATreeThatRootShredsAreNeverOpenToOthers) {
    NEEDS(prepare(0755));
    const std::string outside = shared + "/device";
    ASSERT_EQ(mknod(outside.c_str(), S_IFCHR | 0600, 1 << 8 | 3), 0);  // null
    const std::string opened = loot + "/opened";
    const Neighbour neighbour(nobody, [&] {
        if (access(outside.c_str(), R_OK) == 0 || access(outside.c_str(), W_OK) == 0) {
            writeFile(opened, "opened");
        }
    });
    NEEDS(neighbour.works());
    for (int i = 0; i < attempts(10); ++i) {
        makePrivateTree();
        hardLink(outside, shared + "/tree/device");
        const Ran ran = dorvanel({"shred", shared + "/tree"});
        EXPECT_EQ(ran.status, 0) << ran;
        EXPECT_EQ(modeOf(outside), 0600U);
        ASSERT_FALSE(fs::exists(opened));
    }
}

TEST_F(ThievesTest, WhatALinkLeadsToKeepsItsBitsUnlessItIsAFile) {
    NEEDS(prepare(0755));
    const std::string others = shared + "/others";
    fs::create_directory(others);
    setMode(others, 0700);
    ASSERT_EQ(mknod((shared + "/device").c_str(), S_IFCHR | 0600, 1 << 8 | 3), 0);
    ASSERT_EQ(mkfifo((shared + "/fifo").c_str(), 0600), 0);
    makePrivateTree();
    fs::create_symlink(others, shared + "/tree/to a folder");
    fs::create_symlink(shared + "/device", shared + "/tree/to a device");
    fs::create_symlink(shared + "/fifo", shared + "/tree/to a FIFO");
    fs::create_symlink("/", shared + "/tree/to the root");
    const unsigned root = modeOf("/");
    const Ran ran = dorvanel({"shred", shared + "/tree"});
    EXPECT_EQ(ran.status, 0) << ran;
    EXPECT_EQ(modeOf(others), 0700U);
    EXPECT_EQ(modeOf(shared + "/device"), 0600U);
    EXPECT_EQ(modeOf(shared + "/fifo"), 0600U);
    EXPECT_EQ(modeOf("/"), root);
}

}  // namespace
}  // namespace dorvanel::test
