// SPDX-License-Identifier: MIT
#include <fstream>

#include "apps/Applications.h"
#include "targets/CollectorTest.h"

namespace dorvanel::test {
namespace {

/// Preferences that remember what they were asked, in order.
class RecordingPreferences final : public PreferenceReader {
  public:
    Number objectForKey(Key key) const override {
        asked.emplace_back(key.name());
        return Number::fromBool(true);
    }
    std::uint64_t changeCount() const override { return 0; }
    bool browserIsEnabled(std::string_view name) override {
        asked.push_back("enabled " + std::string(name));
        return enabled;
    }

    bool enabled = true;
    mutable Lines asked;
};

class FixedPathCollectorsTest : public CollectorTest {};

TEST_F(FixedPathCollectorsTest, ADisabledApplicationHasThreeLinesAndNoKeyOfItIsRead) {
    RecordingPreferences recording;
    recording.enabled = false;
    Collectors disabled(shredList, recording, platform::defaultFileManager(), defaults, clock);
    disabled.Opera70();
    EXPECT_THAT(log.lines(), ElementsAre("Opera 7.x", notEnabled, separator));
    EXPECT_THAT(shredList, IsEmpty());
    EXPECT_THAT(recording.asked, ElementsAre("enabled Opera"));
}

TEST_F(FixedPathCollectorsTest, SafariWithItsCacheAloneTakesOnePath) {
    turnOn({"ShredCache"});
    EXPECT_THAT(run(&Collectors::Safari10), ElementsAre("Safari", "Shred: ~/Library/Caches/Safari",
                                                        "Skip: ~/Library/Safari/History.plist",
                                                        "Skip: ~/Library/Safari/Downloads.plist",
                                                        "Skip: ~/Library/Safari/Icons", separator));
    EXPECT_THAT(shredList, ElementsAre(home / "Library/Caches/Safari"));
}

TEST_F(FixedPathCollectorsTest, OmniWeb4WithItsCacheAloneTakesNothingAndSkipsFourPaths) {
    turnOn({"ShredCache"});
    const Lines lines = run(&Collectors::OmniWeb41);
    ASSERT_EQ(lines.size(), 6U);
    for (std::size_t i = 1; i <= 4; ++i) EXPECT_TRUE(lines[i].starts_with("Skip: ")) << lines[i];
    EXPECT_THAT(shredList, IsEmpty());
}

TEST_F(FixedPathCollectorsTest, OmniWeb4ReadsItsCacheKeyAllTheSame) {
    RecordingPreferences recording;
    Collectors asking(shredList, recording, platform::defaultFileManager(), defaults, clock);
    asking.OmniWeb41();
    EXPECT_THAT(recording.asked, ElementsAre("enabled Omniweb", "ShredCache", "ShredHistory"));
}

TEST_F(FixedPathCollectorsTest, InternetExplorerSkipsItsSecondCacheUnderAPathWithoutLibrary) {
    EXPECT_EQ(run(&Collectors::IE51).at(2), "Skip: ~/Preferences/MS Internet Cache");
    turnOn({"ShredCache"});
    EXPECT_EQ(run(&Collectors::IE51).at(2), "Shred: ~/Library/Preferences/MS Internet Cache");
}

TEST_F(FixedPathCollectorsTest, Eudora6TakesTheTrashAtTheRootEvenWhenTheHomeHasAEudoraFolder) {
    sample.addMailboxes();
    ASSERT_TRUE(std::filesystem::exists(home / "Documents/Eudora Folder/Mail Folder/Trash"));
    turnOn({"ShredMailTrash"});
    run(&Collectors::Eudora62);
    EXPECT_THAT(shredList, ElementsAre("/Documents/Eudora Folder/Mail Folder/Trash"));
}

TEST_F(FixedPathCollectorsTest, TheMailCacheIsListedTwiceWhenTwoCollectorsTakeIt) {
    turnOn({"ShredMailCache", "ShredCache"});
    run(&Collectors::AppleMail12);
    run(&Collectors::MailCache);
    EXPECT_THAT(shredList, ElementsAre(home / "Library/Caches/Mail", home / "Library/Caches/Mail"));
}

TEST_F(FixedPathCollectorsTest, APathIsExpandedAgainstTheHomeAndItsLineKeepsTheTilde) {
    turnOn({"ShredQuicktimeCache"});
    EXPECT_EQ(run(&Collectors::QuicktimeCache).at(1), "Shred: ~/Library/Caches/Quicktime");
    const TemporaryHome other;
    run(&Collectors::QuicktimeCache);
    EXPECT_THAT(shredList,
                ElementsAre(home / "Library/Caches/Quicktime", other / "Library/Caches/Quicktime"));
}

TEST_F(FixedPathCollectorsTest, TheOperaCacheIsUnicodeInTheListAndOneMacRomanByteInTheLog) {
    turnOn({"ShredCache"});
    EXPECT_EQ(run(&Collectors::Opera60).at(1),
              "Shred: ~/Library/Preferences/Opera 6 Preferences/Cache \xC4");
    EXPECT_THAT(shredList,
                ElementsAre(home / "Library/Preferences/Opera 6 Preferences/Cache \xC6\x92"));
    preferences.values.clear();
    EXPECT_EQ(run(&Collectors::Opera60).at(1),
              "Skip: ~/Library/Preferences/Opera 6 Preferences/Cache \xC4");
}

TEST_F(FixedPathCollectorsTest, AMissingPathIsTakenLikeAnyOther) {
    turnOn({"ShredCache"});
    run(&Collectors::Safari10);
    EXPECT_FALSE(std::filesystem::exists(shredList.at(0)));
}

TEST_F(FixedPathCollectorsTest, TheListKeepsWhatCollectorsBeforeHavePutThere) {
    shredList = {"/first"};
    turnOn({"ShredCache"});
    run(&Collectors::Safari10);
    EXPECT_THAT(shredList, ElementsAre("/first", home / "Library/Caches/Safari"));
}

TEST_F(FixedPathCollectorsTest, KeysAreReadInTheOrderOfTheirGroupsOnceEach) {
    RecordingPreferences recording;
    Collectors asking(shredList, recording, platform::defaultFileManager(), defaults, clock);
    asking.Safari10();
    EXPECT_THAT(recording.asked, ElementsAre("enabled Safari", "ShredCache", "ShredHistory",
                                             "ShredIEDownloadCache", "shredSafariFavicon"));
}

TEST_F(FixedPathCollectorsTest, TheQuicktimeCacheAsksForNoApplication) {
    RecordingPreferences recording;
    recording.enabled = false;
    Collectors asking(shredList, recording, platform::defaultFileManager(), defaults, clock);
    asking.QuicktimeCache();
    EXPECT_THAT(recording.asked, ElementsAre("ShredQuicktimeCache"));
}

TEST_F(FixedPathCollectorsTest, TheSampleHomeHasSomethingAtEveryFixedPathOfTheHome) {
    sample.addBrowsers();
    sample.addMailboxes();
    const auto expectAllOf = [](const FixedPathTargets& targets) {
        for (const FixedPathGroup& group : targets.groups) {
            for (const FixedPath& target : group.paths) {
                if (target.isNone()) break;
                const std::string path(target.path());
                if (!path.starts_with("~")) continue;
                EXPECT_TRUE(std::filesystem::exists(platform::expandingTilde(path))) << path;
            }
        }
    };
    expectAllOf(quicktimeCache);
    for (const SupportedApplication& application : applications) {
        for (const Collector& collector : application.collectors) {
            if (const auto* fixed = std::get_if<FixedPathTargets>(&collector)) expectAllOf(*fixed);
        }
    }
}

}  // namespace
}  // namespace dorvanel::test
