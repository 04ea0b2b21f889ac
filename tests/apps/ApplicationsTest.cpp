// SPDX-License-Identifier: MIT
#include "apps/Applications.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

std::vector<std::string_view> namesOf(const ApplicationOrder& order) {
    std::vector<std::string_view> names;
    for (const SupportedApplication* application : order) names.push_back(application->name);
    return names;
}

TEST(ApplicationsTest, TheFlagsStandInTheOrderOfTheRows) {
    for (std::size_t i = 0; i < applicationCount; ++i) {
        bw_typedef flags;
        flags.*applications[i].flag = 1;
        std::array<std::uint32_t, applicationCount> words{};
        std::memcpy(words.data(), &flags, sizeof flags);
        EXPECT_EQ(words[i], 1U) << applications[i].name;
    }
}

TEST(ApplicationsTest, TheWindowShowsOmniwebBeforeOpera) {
    EXPECT_THAT(namesOf(displayOrder),
                ElementsAre("Safari", "Internet Explorer", "Mozilla", "Netscape", "iCab", "Omniweb",
                            "Opera", "Apple Mail", "Eudora", "Mailsmith", "Camino", "Firefox"));
}

TEST(ApplicationsTest, TheListHasTheMailProgramsLast) {
    const std::vector<std::string_view> names = {
        "Safari", "Internet Explorer", "Mozilla",    "Netscape", "iCab",     "Omniweb", "Opera",
        "Camino", "Firefox",           "Apple Mail", "Eudora",   "Mailsmith"};
    EXPECT_THAT(namesOf(listOrder), ElementsAreArray(names));
    EXPECT_THAT(applicationNames, ElementsAreArray(names));
}

TEST(ApplicationsTest, ARunHasAnOrderOfItsOwn) {
    std::vector<std::string_view> names;
    for (const SupportedApplication* application : runOrder) {
        if (application->hasCollectors()) names.push_back(application->shownName());
    }
    EXPECT_THAT(names,
                ElementsAre("Internet Explorer", "iCab", "OmniWeb", "Opera", "Apple Mail", "Eudora",
                            "Safari", "Mozilla and Netscape", "Mailsmith", "Camino", "Firefox"));
}

TEST(ApplicationsTest, EachHasTheLabelThatItNames) {
    BrowserWatchOutlets outlets;
    EXPECT_EQ(applications[0].labelName, "mBWSafari");
    EXPECT_EQ(&(outlets.*applications[0].label), &outlets.mBWSafari);
    EXPECT_EQ(applicationNamed("Firefox")->labelName, "mBWFirefox");
    EXPECT_EQ(&(outlets.*applicationNamed("Firefox")->label), &outlets.mBWFirefox);
}

TEST(ApplicationsTest, MozillaAndNetscapeRunTogetherAndNoOthersDo) {
    for (const SupportedApplication& one : applications) {
        bw_typedef running;
        running.*one.flag = 1;
        for (const SupportedApplication& other : applications) {
            EXPECT_EQ(isRunning(other, running), &other == &one || other.companion == one.name)
                << one.name << ", " << other.name;
        }
    }
    EXPECT_EQ(supportedApplications.companionOf("Mozilla"), "Netscape");
    EXPECT_EQ(supportedApplications.companionOf("Netscape"), "Mozilla");
    EXPECT_EQ(supportedApplications.companionOf("Safari"), "");
    EXPECT_EQ(supportedApplications.companionOf("Lynx"), "");
}

}  // namespace
}  // namespace dorvanel::test
