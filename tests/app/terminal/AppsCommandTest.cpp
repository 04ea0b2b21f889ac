// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "app/terminal/TestTerminal.h"
#include "prefs/PropertyListDefaults.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

class AppsCommandTest : public ::testing::Test {
  protected:
    TemporaryHome home;
    TestTerminal console;
};

TEST_F(AppsCommandTest, ListsTheApplicationsInTheOrderOfTheDefaultList) {
    EXPECT_EQ(console.run({"apps", "disable", "Safari"}), 0);
    EXPECT_EQ(console.run({"apps", "enable", "Safari"}), 0);  // now the last of the stored list
    EXPECT_EQ(console.run({"apps", "disable", "Internet Explorer"}), 0);
    const std::string list =
        "Safari YES\nInternet Explorer NO\nMozilla YES\nNetscape YES\niCab YES\nOmniweb YES\n"
        "Opera YES\nCamino YES\nFirefox YES\nApple Mail YES\nEudora YES\nMailsmith YES\n";
    EXPECT_EQ(console.run({"apps"}), 0);
    EXPECT_EQ(console.out.str(), list);
    EXPECT_EQ(console.run({"apps", "list"}), 0);
    EXPECT_EQ(console.out.str(), list);
}

TEST_F(AppsCommandTest, MozillaAndNetscapeMoveTogether) {
    EXPECT_EQ(console.run({"apps", "disable", "Netscape"}), 0);
    EXPECT_EQ(console.run({"apps"}), 0);
    EXPECT_NE(console.out.str().find("Mozilla NO\nNetscape NO\n"), std::string::npos);
    EXPECT_EQ(console.run({"apps", "enable", "Mozilla"}), 0);
    EXPECT_EQ(console.run({"apps"}), 0);
    EXPECT_NE(console.out.str().find("Mozilla YES\nNetscape YES\n"), std::string::npos);
}

TEST_F(AppsCommandTest, WhatIsAlreadySoIsDoneWithoutAChange) {
    EXPECT_EQ(console.run({"apps", "enable", "Opera"}), 0);
    EXPECT_FALSE(std::filesystem::exists(userDefaultsPath()));
}

TEST_F(AppsCommandTest, AnUnknownNameIsRefused) {
    for (const char* name : {"", "safari", "OmniWeb", "Chrome"}) {
        EXPECT_EQ(console.run({"apps", "disable", name}), 2) << name;
        EXPECT_EQ(console.err.str(), "dorvanel: there is no application \"" + std::string(name) +
                                         "\"; \"dorvanel apps\" lists them\n");
    }
}

}  // namespace
}  // namespace dorvanel::test
