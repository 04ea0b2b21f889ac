// SPDX-License-Identifier: MIT
#include "apps/catalogue/EntryCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

catalogue::Trace traceOf(const std::string& kind, const std::string& path) {
    catalogue::Trace trace;
    trace.kind = kind;
    trace.shred = {path};
    return trace;
}

catalogue::Entry whole() {
    catalogue::Entry entry;
    entry.id = "lynx";
    entry.name = "Lynx";
    entry.kind = "browser";
    entry.processes = {"lynx"};
    entry.installs = {{"native", {{"config", "~/.lynx"}}}};
    entry.traces.push_back(traceOf("cache", "{config}/cache"));
    return entry;
}

TEST(EntryCheckTest, ARootLiesBelowTheHomeFolder) {
    for (const char* root :
         {"~/.mozilla", "$XDG_CONFIG_HOME/x/y", "$XDG_DATA_HOME", "~/snap/firefox/*/x"}) {
        EXPECT_EQ(catalogue::faultOfRoot(root), "") << root;
    }
    for (const char* root : {"", "~", "~/", "/", "/home/x", "x", "~/..", "~/a/../b", "~/a//b",
                             "~/./a", "$HOME/x", "$XDG_CONFIG_HOMES/x", "$XDG_CONFIG_HOME/../x",
                             "$XDG_CONFIG_HOME/", "~root/x", "~/a\nb"}) {
        EXPECT_NE(catalogue::faultOfRoot(root), "") << root;
    }
}

TEST(EntryCheckTest, APatternStaysBelowItsRoot) {
    for (const char* pattern : {"{config}", "{profile}/x", "{cache}/{profile.path}/Cache",
                                "{cache}/{profile.name}", "{profile}/a*b?/c"}) {
        EXPECT_EQ(catalogue::faultOfPattern(pattern), "") << pattern;
    }
    for (const char* pattern : {"", "config/x", "{}", "{config", "{config}x", "{config}/../x",
                                "{config}/", "{config}//x", "{config}/{other}", "{config}/a/..",
                                "/etc/passwd", "{a/../b}/c", "{profile.path}/x", "{config}/a\tb"}) {
        EXPECT_NE(catalogue::faultOfPattern(pattern), "") << pattern;
    }
    EXPECT_EQ(catalogue::rootOf("{config}/x"), "config");
}

TEST(EntryCheckTest, AWholeEntryHasNoFault) {
    EXPECT_THAT(catalogue::faultsOf(whole()), IsEmpty());
}

TEST(EntryCheckTest, WhatAnEntryLacksIsTold) {
    EXPECT_THAT(catalogue::faultsOf({}),
                ElementsAre("it has no kind", "no [[install]] says where it keeps anything",
                            "no [[trace]] says what is to go", "no process says when it runs"));
}

TEST(EntryCheckTest, ARootThatNoInstallHasAndAProfileThatNothingListsAreTold) {
    catalogue::Entry entry = whole();
    entry.traces[0].shred = {"{cache}/x", "{profile}/y", "{config}/{profile.path}"};
    EXPECT_THAT(catalogue::faultsOf(entry),
                ElementsAre("{cache}/x: no [[install]] has the root {cache}",
                            "{profile}/y: nothing says what {profile} stands for",
                            "{config}/{profile.path}: nothing says what {profile} stands for"));
}

TEST(EntryCheckTest, OfAFamilyIsTakenOverWhatTheEntryLacks) {
    catalogue::Entry family = whole();
    family.icon = "family";
    family.profiles = {catalogue::Profiles::List::mozilla, "mozilla", "{config}"};
    family.traces.push_back(traceOf("logs", "{config}/log"));

    catalogue::Entry entry;
    entry.processes = {"mine"};
    entry.traces.push_back(traceOf("cache", "{config}/mine"));
    catalogue::inherit(entry, family);
    EXPECT_EQ(entry.kind, "browser");
    EXPECT_EQ(entry.icon, "family");
    EXPECT_THAT(entry.processes, ElementsAre("mine"));
    EXPECT_TRUE(entry.profiles.has_value());
    EXPECT_EQ(entry.installs.size(), 1U);
    ASSERT_EQ(entry.traces.size(), 2U);
    EXPECT_THAT(entry.traces[0].shred, ElementsAre("{config}/mine"));
    EXPECT_EQ(entry.traces[1].kind, "logs");
}

}  // namespace
}  // namespace dorvanel::test
