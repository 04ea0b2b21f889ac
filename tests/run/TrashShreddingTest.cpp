// SPDX-License-Identifier: MIT
#include "run/TrashShredding.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>

#include "run/RunFixture.h"
#include "support/EnvironmentVariable.h"
#include "support/MountNamespace.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TrashShreddingTest : public RunFixture {
  protected:
    /// An item of the trash with what is known of it.
    void add(const std::string& name) const {
        writeFile(bin + "/files/" + name, "secret");
        writeFile(bin + "/info/" + name + ".trashinfo", "[Trash Info]\nPath=/x\n");
    }
    void addFolder(const std::string& name) const {
        writeFile(bin + "/files/" + name + "/inside", "secret");
        writeFile(bin + "/info/" + name + ".trashinfo", "[Trash Info]\nPath=/x\n");
    }
    void find() { trash.find(home / "data", {home / "volume"}, {.system = *system}); }
    std::vector<std::string> namesIn(const std::string& folder) const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(bin + "/" + folder)) {
            names.push_back(entry.path().filename());
        }
        std::ranges::sort(names);
        return names;
    }

    const EnvironmentVariable data{"XDG_DATA_HOME", home / "data"};
    const std::string bin = home / "data/Trash";
    TrashShredding trash{{*system, *cleaningCalls, clock}};
};

TEST_F(TrashShreddingTest, AllThatIsInTheTrashGoesWithWhatIsKnownOfIt) {
    add("a\nb");
    add("caf\xE9 100%");
    addFolder("tree");
    writeFile(bin + "/files/without-info", "secret");
    writeFile(bin + "/info/without-file.trashinfo");
    writeFile(bin + "/expunged/123/x", "secret");
    writeFile(bin + "/directorysizes", "6 1 tree\n7 2 long-gone\n");
    writeFile(home / "bystander", "kept");
    fs::create_symlink(home / "bystander", bin + "/files/link");
    fs::create_symlink("nowhere", bin + "/files/broken");
    const std::string onVolume = home / ("volume/.Trash-" + std::to_string(::geteuid()));
    writeFile(onVolume + "/files/y", "secret");
    fs::permissions(onVolume, fs::perms::owner_all);

    find();
    EXPECT_EQ(trash.itemCount(), 8U);
    EXPECT_EQ(trash.byteCount(), 6U * 6U);
    const Outcome outcome = trash.shred(fileAccess);
    EXPECT_THAT(namesIn("files"), IsEmpty());
    EXPECT_THAT(namesIn("info"), IsEmpty());
    EXPECT_THAT(namesIn("expunged"), IsEmpty());
    EXPECT_EQ(readFile(bin + "/directorysizes"), "");
    EXPECT_FALSE(fs::exists(onVolume + "/files/y"));
    EXPECT_EQ(readFile(home / "bystander"), "kept");
    EXPECT_EQ(outcome.notRemoved, 0U);
    EXPECT_EQ(outcome.notCleaned, 0U);
    EXPECT_TRUE(trash.isEmpty());
}

TEST_F(TrashShreddingTest, LookingTouchesNothing) {
    add("x");
    writeFile(bin + "/directorysizes", "6 1 x\n");
    find();
    EXPECT_FALSE(trash.isEmpty());
    EXPECT_EQ(readFile(bin + "/files/x"), "secret");
    EXPECT_THAT(namesIn("info"), ElementsAre("x.trashinfo"));
    EXPECT_EQ(readFile(bin + "/directorysizes"), "6 1 x\n");
    EXPECT_EQ(trash.plan().items.size(), 3U);
}

TEST_F(TrashShreddingTest, ATrashThatOthersCouldHavePlantedIsNamedAndLeft) {
    fs::create_directories(home / "elsewhere/files");
    writeFile(home / "elsewhere/files/x", "kept");
    fs::create_directories(home / "volume");
    fs::create_symlink(home / "elsewhere", home / ("volume/.Trash-" + std::to_string(::geteuid())));
    find();
    EXPECT_TRUE(trash.isEmpty());
    ASSERT_EQ(trash.plan().skipped.size(), 1U);
    EXPECT_EQ(trash.plan().skipped[0].reason, PlanSkip::Reason::insecure);
    const Outcome outcome = trash.shred(fileAccess);
    EXPECT_EQ(outcome.notRemoved, 1U);
    EXPECT_EQ(readFile(home / "elsewhere/files/x"), "kept");
}

TEST_F(TrashShreddingTest, WhatHoldsAMountPointStaysWithWhatIsKnownOfIt) {
    const auto said = inMountNamespace([this]() -> std::string {
        addFolder("tree");
        addFolder("other");
        writeFile(bin + "/directorysizes", "6 1 tree\n7 2 other\n");
        if (!mountTmpfs(bin + "/files/tree/mounted")) return "no mount";
        find();
        if (trash.plan().skipped.size() != 1) return "not told beforehand";
        if (trash.plan().skipped[0].reason != PlanSkip::Reason::mount) return "another reason";
        const Outcome outcome = trash.shred(fileAccess);
        if (outcome.notRemoved != 1) return "not told";
        if (namesIn("files") != std::vector<std::string>{"tree"}) return "files";
        if (namesIn("info") != std::vector<std::string>{"tree.trashinfo"}) return "info";
        return readFile(bin + "/directorysizes");
    });
    if (!said || *said == "no mount") return sayNotRun("nothing can be mounted");
    EXPECT_EQ(*said, "6 1 tree\n");
}

TEST_F(TrashShreddingTest, AnItemThatComesMeanwhileKeepsWhatIsKnownOfIt) {
    writeFile(bin + "/info/coming.trashinfo", "known");
    fs::create_directories(bin + "/files");
    find();
    writeFile(bin + "/files/coming", "kept");
    trash.shred(fileAccess);
    EXPECT_EQ(readFile(bin + "/files/coming"), "kept");
    EXPECT_EQ(readFile(bin + "/info/coming.trashinfo"), "known");
}

TEST_F(TrashShreddingTest, AFolderThatIsExchangedMeanwhileKeepsWhatIsInIt) {
    add("x");
    find();
    fs::rename(bin + "/files", home / "taken");
    writeFile(bin + "/files/x", "another's");
    trash.shred(fileAccess);
    EXPECT_EQ(readFile(bin + "/files/x"), "another's");
}

}  // namespace
}  // namespace dorvanel::test
