// SPDX-License-Identifier: MIT
#include "apps/catalogue/Catalogue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using catalogue::Catalogue;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string described(const std::string& name, const std::string& more = "") {
    return "name = \"" + name + "\"\nkind = \"browser\"\nprocesses = [\"x\"]\n" + more +
           "\n[[install]]\nname = \"native\"\nconfig = \"~/.x\"\n"
           "[[trace]]\nkind = \"cache\"\nshred = [\"{config}/cache\"]\n";
}

class CatalogueTest : public ::testing::Test {
  protected:
    void ship(const std::string& id, const std::string& text) {
        writeFile(home / "shipped/" + id + ".toml", text);
    }
    void own(const std::string& id, const std::string& text) {
        writeFile(home / "own/" + id + ".toml", text);
    }
    Catalogue load() {
        return Catalogue::load({home / "shipped", home / "own"}, platform::defaultFileManager());
    }
    std::vector<std::string> faults() {
        std::vector<std::string> told;
        const Catalogue catalogue = load();
        for (const Catalogue::Fault& fault : catalogue.faults()) {
            told.push_back(fault.file.substr(std::string(home.path()).size()) + ":" +
                           std::to_string(fault.problem.line) + ": " + fault.problem.reason);
        }
        return told;
    }

    TemporaryHome home;
};

TEST_F(CatalogueTest, WithoutFoldersItIsEmptyAndThatIsNoFault) {
    const Catalogue catalogue = load();
    EXPECT_THAT(catalogue.entries(), IsEmpty());
    EXPECT_THAT(catalogue.faults(), IsEmpty());
}

TEST_F(CatalogueTest, TheUsersFileTakesThePlaceOfTheShippedOne) {
    ship("a", described("Shipped A"));
    ship("b", described("Shipped B"));
    own("b", described("My B"));
    own("c", described("My C"));
    writeFile(home / "own/notes.txt", "no description");
    const Catalogue catalogue = load();
    EXPECT_THAT(catalogue.faults(), IsEmpty());
    ASSERT_EQ(catalogue.entries().size(), 3U);
    EXPECT_EQ(catalogue.find("a")->name, "Shipped A");
    EXPECT_EQ(catalogue.find("b")->name, "My B");
    EXPECT_EQ(catalogue.find("c")->name, "My C");
    EXPECT_EQ(catalogue.find("d"), nullptr);
}

TEST_F(CatalogueTest, AFileWithAFaultIsLeftOutAndTheShippedOneDoesNotComeBack) {
    ship("a", described("A"));
    ship("b", described("B"));
    own("b", described("B", "colour = 1"));
    EXPECT_THAT(faults(), ElementsAre("/own/b.toml:4: unknown field \"colour\""));
    const Catalogue catalogue = load();
    EXPECT_EQ(catalogue.find("b"), nullptr);
    EXPECT_NE(catalogue.find("a"), nullptr);
}

TEST_F(CatalogueTest, AFamilyIsLookedForInBothFolders) {
    ship("old", described("Old"));
    own("new", "name = \"New\"\nfamily = \"old\"\n");
    own("newer", "name = \"Newer\"\nfamily = \"new\"\n");
    EXPECT_THAT(faults(), IsEmpty());
    const Catalogue catalogue = load();
    EXPECT_EQ(catalogue.find("newer")->traces.at(0).kind, "cache");
}

TEST_F(CatalogueTest, AFamilyThatIsMissingOrLeadsBackIsTold) {
    own("a", described("A", "family = \"b\""));
    own("b", described("B", "family = \"a\""));
    own("c", described("C", "family = \"c\""));
    own("d", described("D", "family = \"nobody\""));
    EXPECT_THAT(faults(), ElementsAre("/own/a.toml:0: its family \"a\" leads back to itself",
                                      "/own/b.toml:0: its family \"b\" leads back to itself",
                                      "/own/c.toml:0: its family \"c\" leads back to itself",
                                      "/own/d.toml:0: its family \"nobody\" is not there"));
}

TEST_F(CatalogueTest, AFileThatCannotBeReadIsTold) {
    std::filesystem::create_directories(home / "own/a.toml");
    const Catalogue catalogue = load();
    ASSERT_EQ(catalogue.faults().size(), 1U);
    EXPECT_EQ(catalogue.faults()[0].file, home / "own/a.toml");
}

TEST_F(CatalogueTest, TheUsersFolderIsBelowTheirConfiguration) {
    {
        const EnvironmentVariable config("XDG_CONFIG_HOME", home / "elsewhere");
        EXPECT_EQ(catalogue::catalogueFolders().own, home / "elsewhere/dorvanel/applications");
    }
    for (const char* unusable : {"", "relative"}) {
        const EnvironmentVariable config("XDG_CONFIG_HOME", unusable);
        EXPECT_EQ(catalogue::catalogueFolders().own, home / ".config/dorvanel/applications");
    }
}

TEST_F(CatalogueTest, ASingleFileIsReadAsItWouldStandAmongTheOthers) {
    ship("old", described("Old"));
    writeFile(home / "new.toml", "name = \"New\"\nfamily = \"old\"\n");
    const catalogue::ReadEntry read = catalogue::readFile(home / "new.toml", load());
    ASSERT_TRUE(read.entry.has_value());
    EXPECT_EQ(read.entry->traces.size(), 1U);
    EXPECT_FALSE(catalogue::readFile(home / "missing.toml", load()).entry.has_value());
}

}  // namespace
}  // namespace dorvanel::test
