// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <sstream>

#include "app/terminal/TestTerminal.h"
#include "log/ActivityLog.h"
#include "support/EnvironmentVariable.h"
#include "support/SampleHome.h"
#include "support/SampleProfiles.h"
#include "support/Seeds.h"
#include "support/TemporaryFolder.h"

// Homes of many kinds: what the preview says, and what the run then does.

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using ::testing::HasSubstr;

class PlanOfRunTest : public ::testing::TestWithParam<unsigned> {
  protected:
    ~PlanOfRunTest() override { kalvet_logger_close(); }

    /// A home as the number has it, and what its owner has chosen.
    void makeHome() {
        std::mt19937 random(GetParam());
        const auto one = [&random](unsigned of) { return random() % of == 0; };
        SampleHome sample(home.path(), GetParam());
        if (one(3)) {
            sample.addEverything();
        } else {
            sample.addBystanders();
            if (!one(3)) sample.addBrowsers();
            if (!one(3)) sample.addMailboxes();
            if (!one(2)) sample.addMozillaProfile("default", static_cast<int>(random() % 3), 1);
            if (!one(2)) sample.addFirefoxProfile("a1b2c3d4.default");
            if (!one(2)) {
                sample.addMailAccount("POP-joe@mail.example.org");
                sample.addEnvelopeIndex(
                    {"pop://joe@mail.example.org/Deleted%20Messages", "local:///Notes"}, 3);
            }
            if (!one(2)) sample.addMailsmith(one(2));
        }
        if (!one(4)) SampleProfiles(home.path(), GetParam()).addEverything();
        for (const char* key : {"ShredHistory", "ShredIEDownloadCache", "ShredAppleMailJunk",
                                "ShredMailsmithSpam", "shredSafariFavicon", "ShredMailCache"}) {
            if (one(2)) choose({"prefs", "set", key, "YES"});
        }
        for (const char* id : {"firefox", "chromium", "thunderbird", "desktop"}) {
            if (!one(3)) choose({"traces", "select", id});
        }
        if (one(2)) choose({"traces", "select", "chromium", "cookies", "forms"});
        addHardThings(home / "Library/Caches/Safari");
    }

    void choose(const std::vector<std::string>& words) {
        EXPECT_EQ(console.run(words), 0) << console.err.str();
    }

    /// What makes a plan hard: links, other names, an empty file, a name that is no text.
    void addHardThings(const std::string& folder) const {
        if (!fs::is_directory(folder)) return;
        writeFile(home / "outside/target", std::string(GetParam() * 433, 'x'));
        writeFile(home / "outside/kept", "kept");
        fs::create_symlink(home / "outside/target", folder + "/link");
        fs::create_symlink("../../../outside/kept", folder + "/relative");
        fs::create_symlink(home / "outside", folder + "/to-a-folder");
        fs::create_symlink("nowhere", folder + "/broken");
        writeFile(folder + "/named", "twice");
        fs::create_hard_link(folder + "/named", folder + "/again");
        writeFile(folder + "/empty", "");
        writeFile(folder + "/caf\xE9", "not UTF-8");
    }

    Json documentOf(const std::vector<std::string>& words) {
        EXPECT_EQ(console.run(words), 0) << console.err.str();
        return Json::parse(console.out.str());
    }

    /// Every name with what it is, to see whether anything was touched.
    [[nodiscard]] std::map<std::string, std::string> everything() const {
        std::map<std::string, std::string> all;
        for (const auto& entry : fs::recursive_directory_iterator(home.path())) {
            std::ostringstream what;
            what << static_cast<int>(entry.symlink_status().type()) << " "
                 << static_cast<unsigned>(entry.symlink_status().permissions());
            if (!entry.is_symlink() && entry.is_regular_file()) {
                what << " " << readFile(entry.path());
            }
            all[entry.path()] = what.str();
        }
        return all;
    }

    static Json withoutOutcomes(const Json& document) {
        Json items = document.at("items");
        for (Json& item : items) item.erase("outcome");
        return items;
    }

    TemporaryHome home;
    const EnvironmentVariable config{"XDG_CONFIG_HOME", ""};
    const EnvironmentVariable cache{"XDG_CACHE_HOME", ""};
    const EnvironmentVariable data{"XDG_DATA_HOME", ""};
    TestTerminal console;
};

TEST_P(PlanOfRunTest, IsWhatThenHappensItemByItemAndByteByByte) {
    makeHome();
    const auto before = everything();
    const Json plan = documentOf({"run", "--preview", "--json"});
    EXPECT_EQ(everything(), before) << "a preview has touched something";
    EXPECT_FALSE(plan.contains("ended"));

    const Json report = documentOf({"run", "--yes", "--json", "--verify"});
    EXPECT_EQ(withoutOutcomes(report).dump(1), withoutOutcomes(plan).dump(1));
    EXPECT_EQ(report.at("totals"), plan.at("totals"));
    for (const Json& item : report.at("items")) {
        ASSERT_TRUE(item.contains("outcome")) << item;
        const Json& outcome = item.at("outcome");
        EXPECT_TRUE(outcome.at("left").empty()) << item;
        if (item.at("action") == "clean") {
            const auto taken = item.value("rows", 0) + item.value("keys", 0);
            EXPECT_EQ(outcome.at("rows"), taken) << item;
            EXPECT_TRUE(fs::exists(item.at("path").get<std::string>())) << item;
            continue;
        }
        const auto entries = item.at("files").get<int>() + item.at("folders").get<int>();
        EXPECT_EQ(outcome.at("removed"), entries) << item;
        EXPECT_EQ(outcome.at("bytes"), item.at("bytes")) << item;
        EXPECT_EQ(outcome.at("verified"), outcome.at("overwritten")) << item;
    }
}

INSTANTIATE_TEST_SUITE_P(Homes, PlanOfRunTest, ::testing::Range(1U, 1 + seedsOf(20)));

using PreviewOfRunTest = PlanOfRunTest;

TEST_P(PreviewOfRunTest, MakesNoFolderAndAsksNothing) {
    fs::remove_all(home / "Library");
    EXPECT_EQ(console.run({"run", "--preview"}), 0);
    EXPECT_EQ(console.out.str(), "nothing would be shredded\n");
    EXPECT_EQ(console.err.str(), "");
    EXPECT_TRUE(fs::is_empty(home.path()));
}

TEST_P(PreviewOfRunTest, SaysWhatCannotBeCleanedAndEndsWithOne) {
    SampleProfiles(home.path(), GetParam()).addFirefox();
    ASSERT_EQ(console.run({"traces", "select", "firefox", "history"}), 0);
    for (const auto& entry : fs::recursive_directory_iterator(home.path())) {
        if (entry.path().filename() == "places.sqlite") {
            writeFile(entry.path(), "this is no database, though it should be one");
        }
    }
    EXPECT_EQ(console.run({"run", "--preview", "--json"}), 1);
    const Json skipped = Json::parse(console.out.str()).at("skipped");
    ASSERT_EQ(skipped.size(), 2U) << "and what it is attached to";
    for (const Json& skip : skipped) {
        EXPECT_EQ(skip.at("application"), "firefox");
        EXPECT_EQ(skip.at("reason"), "corrupt");
        EXPECT_THAT(skip.at("path").get<std::string>(), HasSubstr(".sqlite"));
    }
}

TEST_P(PreviewOfRunTest, ARunThatIsRefusedHasADocumentTooAndNobodyElseSpeaksThere) {
    writeFile(home / "Library/Caches/Safari/page", "secret");
    console.in.str("no\n");
    EXPECT_EQ(console.run({"run", "--json"}), 3);
    const Json document = Json::parse(console.out.str());
    EXPECT_EQ(document.at("status"), 3);
    EXPECT_TRUE(document.at("items").empty());
    EXPECT_THAT(console.err.str(), HasSubstr("Dorvanel Confirmation"));
}

INSTANTIATE_TEST_SUITE_P(Homes, PreviewOfRunTest, ::testing::Values(5U));

}  // namespace
}  // namespace dorvanel::test
