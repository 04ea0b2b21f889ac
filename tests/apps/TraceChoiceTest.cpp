// SPDX-License-Identifier: MIT
#include "apps/TraceChoice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "prefs/PropertyListDefaults.h"
#include "support/FakeUserDefaults.h"
#include "support/Python.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class TraceChoiceTest : public ::testing::Test {
  protected:
    FakeUserDefaults defaults;
    TraceChoice choice{defaults};
};

TEST_F(TraceChoiceTest, NothingIsChosenAtFirstAndNothingIsStored) {
    EXPECT_THAT(choice.chosen(), IsEmpty());
    EXPECT_TRUE(choice.deselect("firefox", {}));
    EXPECT_THAT(defaults.values, IsEmpty());
}

TEST_F(TraceChoiceTest, SelectingAddsAndDeselectingTakesAway) {
    EXPECT_TRUE(choice.select("firefox", {"cache", "history"}));
    EXPECT_TRUE(choice.select("firefox", {"history", "cookies"}));
    EXPECT_TRUE(choice.select("chromium", {"cache"}));
    EXPECT_THAT(choice.chosen(),
                ElementsAre(Pair("chromium", ElementsAre("cache")),
                            Pair("firefox", ElementsAre("cache", "history", "cookies"))));
    EXPECT_TRUE(choice.isChosen("firefox", "cookies"));
    EXPECT_FALSE(choice.isChosen("chromium", "cookies"));
    EXPECT_TRUE(choice.deselect("firefox", {"cache", "sessions"}));
    EXPECT_TRUE(choice.deselect("chromium", {"cache"}));
    EXPECT_THAT(choice.chosen(), ElementsAre(Pair("firefox", ElementsAre("history", "cookies"))));
    EXPECT_TRUE(choice.deselect("firefox", {}));
    EXPECT_FALSE(defaults.hasObjectForKey("Traces"));
}

TEST_F(TraceChoiceTest, WhatIsStoredAsSomethingElseChoosesNothing) {
    defaults.setArray({"firefox"}, "Traces");
    EXPECT_THAT(choice.chosen(), IsEmpty());
    defaults.setBool(true, "Traces");
    EXPECT_THAT(choice.chosen(), IsEmpty());
}

TEST_F(TraceChoiceTest, TheStoredFormIsADictionaryOfArraysThatOthersCanReadAndWrite) {
    const TemporaryFolder folder;
    const std::string path = folder / "prefs.plist";
    const auto fail = [](const Error& error) { FAIL() << error.message(); };
    {
        const auto stored = openUserDefaults(path, fail);
        TraceChoice chosen(*stored);
        EXPECT_TRUE(chosen.select("firefox", {"cache", "history"}));
    }
    EXPECT_EQ(python(folder.path(),
                     "import plistlib\n"
                     "p = plistlib.load(open('prefs.plist', 'rb'))\n"
                     "print(p['Traces'])\n"
                     "p['Traces']['lynx'] = ['cache', 7]\n"
                     "p['Traces']['odd'] = 'cache'\n"
                     "p['Traces']['none'] = []\n"
                     "plistlib.dump(p, open('prefs.plist', 'wb'), fmt=plistlib.FMT_BINARY)\n"),
              "{'firefox': ['cache', 'history']}");
    const auto stored = openUserDefaults(path, fail);
    TraceChoice chosen(*stored);
    EXPECT_THAT(chosen.chosen(), ElementsAre(Pair("firefox", ElementsAre("cache", "history")),
                                             Pair("lynx", ElementsAre("cache"))));
    EXPECT_TRUE(chosen.deselect("firefox", {"cache"}));
    EXPECT_THAT(
        TraceChoice(*openUserDefaults(path, fail)).chosen(),
        ElementsAre(Pair("firefox", ElementsAre("history")), Pair("lynx", ElementsAre("cache"))));
}

TEST_F(TraceChoiceTest, SeveralApplicationsAreSelectedAtOnce) {
    EXPECT_TRUE(choice.select({{"firefox", {"cache"}}, {"chromium", {"cache", "logs"}}}));
    EXPECT_THAT(choice.chosen(), ElementsAre(Pair("chromium", ElementsAre("cache", "logs")),
                                             Pair("firefox", ElementsAre("cache"))));
    EXPECT_EQ(std::ranges::count(defaults.calls, "synchronize"), 1);
}

TEST_F(TraceChoiceTest, WhatCouldNotBeStoredIsNotStoredWithWhatIsChangedNext) {
    const TemporaryFolder folder;
    const std::string path = folder / "prefs.plist";
    const auto ignore = [](const Error&) {};
    const auto stored = openUserDefaults(path, ignore);
    TraceChoice chosen(*stored);
    EXPECT_TRUE(chosen.select("firefox", {"cache"}));
    std::filesystem::rename(path, folder / "aside");
    std::filesystem::create_directory(path);
    EXPECT_FALSE(chosen.select("firefox", {"cookies"}));
    EXPECT_FALSE(chosen.isChosen("firefox", "cookies"));
    std::filesystem::remove(path);
    std::filesystem::rename(folder / "aside", path);
    EXPECT_TRUE(chosen.select("chromium", {"cache"}));
    EXPECT_THAT(
        TraceChoice(*openUserDefaults(path, ignore)).chosen(),
        ElementsAre(Pair("chromium", ElementsAre("cache")), Pair("firefox", ElementsAre("cache"))));
}

TEST_F(TraceChoiceTest, AFailedSaveIsTold) {
    const TemporaryFolder folder;
    writeFile(folder / "prefs.plist", "damaged");
    const auto stored = openUserDefaults(folder / "prefs.plist", [](const Error&) {});
    TraceChoice chosen(*stored);
    EXPECT_FALSE(chosen.select("firefox", {"cache"}));
    EXPECT_EQ(readFile(folder / "prefs.plist"), "damaged");
}

}  // namespace
}  // namespace dorvanel::test
