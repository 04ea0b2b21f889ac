// SPDX-License-Identifier: MIT
#include "support/SampleProfiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "apps/catalogue/Catalogue.h"
#include "platform/SystemCalls.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"
#include "targets/traces/FoundTraces.h"

namespace dorvanel::traces {
namespace {

using test::EnvironmentVariable;
using test::SampleProfiles;
using test::TemporaryFolder;
using test::TemporaryHome;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;

std::map<std::string, std::string> everyFile(const TemporaryFolder& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
        if (!entry.is_regular_file()) continue;
        files[entry.path().lexically_relative(folder.path())] = test::readFile(entry.path());
    }
    return files;
}

class SampleProfilesTest : public ::testing::Test {
  protected:
    SampleProfilesTest() { SampleProfiles(home_.path(), 5).addEverything(); }

    FoundTraces found(const std::string& id) {
        const catalogue::Entry* entry = catalogue_.find(id);
        if (entry == nullptr) throw std::runtime_error("nothing describes " + id);
        return findTraces(*entry, *system_);
    }

    TemporaryHome home_;
    EnvironmentVariable config_{"XDG_CONFIG_HOME", ""};
    EnvironmentVariable cache_{"XDG_CACHE_HOME", ""};
    EnvironmentVariable data_{"XDG_DATA_HOME", ""};
    const catalogue::Catalogue catalogue_ =
        catalogue::Catalogue::load({SHIPPED, {}}, platform::defaultFileManager());
    std::unique_ptr<platform::SystemCalls> system_ = platform::makeSystemCalls();
};

TEST_F(SampleProfilesTest, TheShippedDescriptionsFindTheKindsThatPeopleLookFor) {
    const std::map<std::string, std::set<std::string>> kinds = {
        {"firefox",
         {"cache", "history", "downloads", "icons", "cookies", "forms", "sessions", "sitedata",
          "permissions", "logs", "crashes"}},
        {"chromium",
         {"cache", "history", "downloads", "icons", "cookies", "forms", "sessions", "sitedata",
          "permissions"}},
        {"thunderbird", {"cache", "mailindex", "trash", "collected"}},
        {"desktop", {"recent", "thumbnails"}},
    };
    for (const auto& [id, wanted] : kinds) {
        std::set<std::string> there;
        const FoundTraces traces = found(id);
        for (const TraceItem& item : traces.items) there.insert(item.trace->kind);
        EXPECT_THAT(there, IsSupersetOf(wanted)) << id;
        EXPECT_THAT(traces.obstacles, IsEmpty()) << id;
    }
}

TEST_F(SampleProfilesTest, BothProfilesOfChromiumAreFound) {
    std::set<std::string> profiles;
    for (const TraceItem& item : found("chromium").items) profiles.insert(item.profile);
    EXPECT_THAT(profiles, IsSupersetOf({"Jo", "Work"}));
}

TEST_F(SampleProfilesTest, NothingThatIsKeptIsShreddedOrEmptied) {
    for (const catalogue::Entry& entry : catalogue_.entries()) {
        for (const TraceItem& item : findTraces(entry, *system_).items) {
            if (item.action != TraceItem::Action::shred && item.action != TraceItem::Action::empty)
                continue;
            if (!std::filesystem::is_regular_file(item.path)) continue;
            EXPECT_THAT(test::readFile(item.path), Not(HasSubstr("kept"))) << item.path;
        }
    }
}

TEST(SampleProfilesSeedTest, TheSameSeedMakesTheSameFiles) {
    const TemporaryFolder one, two, three;
    SampleProfiles(one.path(), 42).addEverything();
    SampleProfiles(two.path(), 42).addEverything();
    SampleProfiles(three.path(), 43).addEverything();
    EXPECT_EQ(everyFile(one), everyFile(two));
    EXPECT_NE(everyFile(one), everyFile(three));
}

}  // namespace
}  // namespace dorvanel::traces
