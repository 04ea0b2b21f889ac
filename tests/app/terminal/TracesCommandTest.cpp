// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "app/terminal/TestTerminal.h"
#include "prefs/PropertyListDefaults.h"
#include "support/EnvironmentVariable.h"
#include "support/SampleIndex.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* lynx = R"toml(name = "Lynx"
kind = "browser"
processes = ["a-program-that-nobody-runs"]
[[install]]
name = "native"
data = "~/.lynx"
[[trace]]
kind = "cache"
recommended = true
shred = ["{data}/cache"]
[[trace]]
kind = "history"
recommended = true
[[trace.clean]]
database = "{data}/places.db"
run = ["DELETE FROM visits"]
[[trace]]
kind = "cookies"
why = "Every site asks you to log in again."
shred = ["{data}/cookies"]
)toml";

/// The command on a home with an application that the user's own description describes.
class TracesCommandTest : public ::testing::Test {
  protected:
    TracesCommandTest() { writeFile(home / ".config/dorvanel/applications/lynx.toml", lynx); }

    void addTraces() {
        writeFile(home / ".lynx/cache/a", std::string(3000, 'x'));
        writeFile(home / ".lynx/cache/sub/b", "12345");
        SampleIndex places(home / ".lynx/places.db");
        places.run("create table visits(x); insert into visits values(1),(2)");
    }
    json listed(const std::vector<std::string>& more = {}) {
        std::vector<std::string> arguments = {"traces", "--json"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        EXPECT_EQ(console.run(arguments), 0) << console.err.str();
        const json document = json::parse(console.out.str());
        for (const json& application : document.at("applications")) {
            if (application.at("id") == "lynx") return application;
        }
        return {};
    }

    TemporaryHome home;
    EnvironmentVariable config{"XDG_CONFIG_HOME", ""};
    EnvironmentVariable cache{"XDG_CACHE_HOME", ""};
    EnvironmentVariable data{"XDG_DATA_HOME", ""};
    TestTerminal console;
};

TEST_F(TracesCommandTest, ListsWhatIsThereWithItsSizesAndWhatIsChosen) {
    addTraces();
    EXPECT_EQ(console.run({"traces"}), 0);
    EXPECT_THAT(console.out.str(),
                HasSubstr("Lynx (lynx)\n"
                          "  [ ] cache        2 files, 2.9 KiB                  recommended\n"
                          "  [ ] history      2 rows                            recommended\n"));
    EXPECT_THAT(console.out.str(), Not(HasSubstr("cookies")));
    EXPECT_EQ(console.run({"traces", "select", "lynx"}), 0);
    EXPECT_EQ(console.run({"traces", "list"}), 0);
    EXPECT_THAT(console.out.str(), HasSubstr("  [x] cache "));
    EXPECT_THAT(console.out.str(), HasSubstr("  [x] history "));
}

TEST_F(TracesCommandTest, WhatIsNotThereIsListedWhereAllIsAskedFor) {
    EXPECT_EQ(console.run({"traces"}), 0);
    EXPECT_THAT(console.out.str(), Not(HasSubstr("lynx")));
    EXPECT_EQ(console.run({"traces", "--all"}), 0);
    EXPECT_THAT(console.out.str(), HasSubstr("Lynx (lynx), not found\n  [ ] cache        -"));
}

TEST_F(TracesCommandTest, TheDocumentHasEveryKindWithItsNumbers) {
    EXPECT_TRUE(listed().is_null());
    EXPECT_EQ(listed({"--all"}).at("found"), false);
    addTraces();
    EXPECT_EQ(console.run({"traces", "select", "lynx", "cookies"}), 0);
    const json application = listed();
    EXPECT_EQ(application.at("name"), "Lynx");
    EXPECT_EQ(application.at("found"), true);
    EXPECT_EQ(application.at("running"), false);
    EXPECT_EQ(application.at("traces"), json::parse(R"([
        {"kind": "cache", "selected": false, "recommended": true,
         "files": 2, "bytes": 3005, "rows": 0},
        {"kind": "history", "selected": false, "recommended": true,
         "files": 0, "bytes": 0, "rows": 2},
        {"kind": "cookies", "selected": true, "recommended": false,
         "files": 0, "bytes": 0, "rows": 0}])"));
}

TEST_F(TracesCommandTest, ListingChangesNothing) {
    addTraces();
    const auto before = std::filesystem::last_write_time(home / ".lynx");
    EXPECT_EQ(console.run({"traces"}), 0);
    EXPECT_EQ(std::filesystem::last_write_time(home / ".lynx"), before);
    EXPECT_FALSE(std::filesystem::exists(userDefaultsPath()));
    EXPECT_EQ(SampleIndex(home / ".lynx/places.db").number("select count(*) from visits"), 2);
}

TEST_F(TracesCommandTest, SelectingSaysWhatWillBeMissed) {
    EXPECT_EQ(console.run({"traces", "select", "lynx", "cookies", "cache"}), 0);
    EXPECT_EQ(console.out.str(), "cookies: Every site asks you to log in again.\n");
    EXPECT_EQ(console.run({"traces", "select", "lynx"}), 0);
    EXPECT_EQ(console.out.str(), "");
}

TEST_F(TracesCommandTest, DeselectingTakesKindsAwayAndWithoutAKindAll) {
    EXPECT_EQ(console.run({"traces", "select", "lynx"}), 0);
    EXPECT_EQ(console.run({"traces", "deselect", "lynx", "cache", "cookies"}), 0);
    EXPECT_EQ(listed({"--all"}).at("traces")[0].at("selected"), false);
    EXPECT_EQ(listed({"--all"}).at("traces")[1].at("selected"), true);
    EXPECT_EQ(console.run({"traces", "deselect", "lynx"}), 0);
    EXPECT_EQ(listed({"--all"}).at("traces")[1].at("selected"), false);
}

TEST_F(TracesCommandTest, AnUnknownApplicationOrKindIsRefused) {
    const std::string unknown =
        "dorvanel: there is no application \"links\"; \"dorvanel traces --all\" lists them\n";
    EXPECT_EQ(console.run({"traces", "select", "links"}), 2);
    EXPECT_EQ(console.err.str(), unknown);
    EXPECT_EQ(console.run({"traces", "deselect", "links"}), 2);
    EXPECT_EQ(console.err.str(), unknown);
    EXPECT_EQ(console.run({"traces", "select", "lynx", "cache", "sessions"}), 2);
    EXPECT_EQ(console.err.str(), "dorvanel: Lynx has no traces of the kind \"sessions\"\n");
    EXPECT_EQ(console.run({"traces", "deselect", "lynx", "crumbs"}), 2);
    EXPECT_EQ(console.err.str(), "dorvanel: there is no kind of traces \"crumbs\"\n");
    EXPECT_EQ(console.run({"traces", "select"}), 2);
    EXPECT_EQ(listed({"--all"}).at("traces")[0].at("selected"), false);
}

TEST_F(TracesCommandTest, WhatIsChosenCanBeTakenBackWhoeverDescribesItToday) {
    EXPECT_EQ(console.run({"traces", "select", "lynx"}), 0);
    std::filesystem::remove(home / ".config/dorvanel/applications/lynx.toml");
    EXPECT_EQ(console.run({"traces"}), 1);
    EXPECT_EQ(console.err.str(), "dorvanel: lynx: is chosen, but nothing describes it\n");
    EXPECT_EQ(console.run({"traces", "deselect", "lynx"}), 0);
    EXPECT_EQ(console.run({"traces"}), 0);
}

TEST_F(TracesCommandTest, AFaultyDescriptionIsNamedAndTheOthersWork) {
    writeFile(home / ".config/dorvanel/applications/broken.toml", "name = 7\n");
    addTraces();
    EXPECT_EQ(console.run({"traces"}), 0);
    EXPECT_THAT(console.err.str(), StartsWith("dorvanel: " + (home / ".config/dorvanel") +
                                              "/applications/broken.toml:1: "));
    EXPECT_THAT(console.out.str(), HasSubstr("Lynx (lynx)\n"));
}

TEST_F(TracesCommandTest, WhatCannotBeCountedIsNamed) {
    writeFile(home / ".lynx/places.db", "no database, though long enough to be looked at as one");
    EXPECT_EQ(console.run({"traces"}), 1);
    EXPECT_THAT(console.err.str(), HasSubstr(".lynx/places.db: corrupt"));
}

TEST_F(TracesCommandTest, PreferencesThatCannotBeReadAreNotChanged) {
    writeFile(userDefaultsPath(), "damaged");
    EXPECT_EQ(console.run({"traces", "select", "lynx"}), 1);
    EXPECT_EQ(console.run({"traces"}), 1);
    EXPECT_EQ(readFile(userDefaultsPath()), "damaged");
}

}  // namespace
}  // namespace dorvanel::test
