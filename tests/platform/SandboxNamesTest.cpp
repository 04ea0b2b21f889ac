// SPDX-License-Identifier: MIT
#include "platform/linux/SandboxNames.h"

#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

using namespace platform;

constexpr const char* slice = "0::/user.slice/user-1000.slice/user@1000.service/app.slice/";

std::string group(const std::string& unit) {
    return slice + unit + "\n";
}

TEST(SandboxNamesTest, AFlatpakIsNamedByItsScope) {
    EXPECT_EQ(flatpakOfControlGroups(group("app-flatpak-org.mozilla.firefox-4711.scope")),
              "org.mozilla.firefox");
}

TEST(SandboxNamesTest, AGroupBelowTheScopeIsStillInIt) {
    EXPECT_EQ(flatpakOfControlGroups(group("app-flatpak-org.mozilla.firefox-4711.scope/inner")),
              "org.mozilla.firefox");
}

TEST(SandboxNamesTest, ADashOfAnIdIsOneWhetherTheUnitsNameEscapesItOrNot) {
    EXPECT_EQ(flatpakOfControlGroups(group("app-flatpak-io.gitlab.librewolf-community-12.scope")),
              "io.gitlab.librewolf-community");
    EXPECT_EQ(
        flatpakOfControlGroups(group("app-flatpak-io.gitlab.librewolf\\x2dcommunity-12.scope")),
        "io.gitlab.librewolf-community");
}

TEST(SandboxNamesTest, EscapesThatAreNoneStayAsTheyAre) {
    EXPECT_EQ(flatpakOfControlGroups(group("app-flatpak-a\\x2-1.scope")), "a\\x2");
    EXPECT_EQ(flatpakOfControlGroups(group("app-flatpak-a\\xzz-1.scope")), "a\\xzz");
}

TEST(SandboxNamesTest, OtherUnitsAreNoFlatpaks) {
    for (const char* unit :
         {"app-gnome-org.mozilla.firefox-4711.scope",
          "app-flatpak-org.mozilla.firefox-4711.service", "app-flatpak-org.mozilla.firefox.scope",
          "app-flatpak-org.mozilla.firefox-x1.scope", "app-flatpak-org.mozilla.firefox-.scope",
          "app-flatpak-.scope", "app-flatpak-", "xapp-flatpak-org.mozilla.firefox-1.scope",
          "app-flatpak-org.mozilla.firefox-1.scopes"}) {
        EXPECT_EQ(flatpakOfControlGroups(group(unit)), "") << unit;
    }
}

TEST(SandboxNamesTest, ASnapIsNamedByItsScopeAndByItsService) {
    EXPECT_EQ(snapOfControlGroups(
                  group("snap.firefox.firefox-0a1b2c3d-4e5f-6789-abcd-ef0123456789.scope")),
              "firefox");
    EXPECT_EQ(snapOfControlGroups("0::/system.slice/snap.cups.cupsd.service\n"), "cups");
}

TEST(SandboxNamesTest, OtherUnitsAreNoSnaps) {
    for (const char* unit : {"snapd.service", "snap.firefox", "snap..firefox.scope", "snap.",
                             "run-snap.firefox.firefox.scope"}) {
        EXPECT_EQ(snapOfControlGroups(group(unit)), "") << unit;
    }
}

TEST(SandboxNamesTest, EachHierarchyOfTheOldKindIsLookedAt) {
    const std::string groups =
        "12:pids:/user.slice\n"
        "1:name=systemd:/user.slice/snap.brave.brave.1-2.scope\n"
        "0::/user.slice\n";
    EXPECT_EQ(snapOfControlGroups(groups), "brave");
    EXPECT_EQ(flatpakOfControlGroups(groups), "");
}

TEST(SandboxNamesTest, OnlyThePathsOfGroupsAreLookedAt) {
    EXPECT_EQ(snapOfControlGroups("1:snap.a.b:/x\n"), "");
    for (const char* groups : {"", "\n", "0", "0:", "0::", "0::/", "::::", "snap.a.b"}) {
        EXPECT_EQ(snapOfControlGroups(groups), "") << groups;
        EXPECT_EQ(flatpakOfControlGroups(groups), "") << groups;
    }
}

TEST(SandboxNamesTest, ASandboxsOwnFileNamesItsApplication) {
    EXPECT_EQ(flatpakOfInfo("[Application]\nname=org.mozilla.firefox\nruntime=x\n\n"
                            "[Instance]\nname=other\n"),
              "org.mozilla.firefox");
    EXPECT_EQ(flatpakOfInfo("[Instance]\nname=other\n[Application]\n name = a.b.c \r"), "a.b.c");
}

TEST(SandboxNamesTest, OtherFilesNameNoApplication) {
    for (const char* info : {"", "name=a\n", "[Runtime]\nname=a\n", "[Application]\n",
                             "[Application]\nnames=a\n", "[Application]\n[Instance]\nname=a\n"}) {
        EXPECT_EQ(flatpakOfInfo(info), "") << info;
    }
}

TEST(SandboxNamesTest, AProgramOfASnapLiesInItsFolder) {
    EXPECT_EQ(snapOfExecutable("/snap/firefox/4711/usr/lib/firefox/firefox"), "firefox");
    EXPECT_EQ(snapOfExecutable("/snap/firefox"), "");
    EXPECT_EQ(snapOfExecutable("/home/a/snap/firefox/firefox"), "");
    EXPECT_EQ(snapOfExecutable("/usr/bin/firefox"), "");
    EXPECT_EQ(snapOfExecutable(""), "");
}

}  // namespace
}  // namespace dorvanel::test
