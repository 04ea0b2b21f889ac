// SPDX-License-Identifier: MIT
#include "targets/mentions/RecentList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace dorvanel::mentions {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// As GLib writes them.
const std::string head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xbel version=\"1.0\"\n"
    "      xmlns:bookmark=\"http://www.freedesktop.org/standards/desktop-bookmarks\"\n>\n";
const std::string tail = "</xbel>";

std::string bookmark(const std::string& uri) {
    return "  <bookmark href=\"" + uri +
           "\" added=\"2024-01-01T00:00:00Z\">\n    <info>\n      <metadata owner=\"x\">\n"
           "        <bookmark:applications>\n          <bookmark:application name=\"gedit\"/>\n"
           "        </bookmark:applications>\n      </metadata>\n    </info>\n  </bookmark>\n";
}

std::vector<std::string> uris(const std::string& list) {
    std::vector<std::string> all;
    const auto read = readRecentList(list);
    EXPECT_TRUE(read.ok());
    if (read) {
        for (const RecentEntry& entry : read.value()) all.push_back(entry.uri);
    }
    return all;
}

/// The list without the entries of these URIs.
std::string without(const std::string& list, const std::vector<std::string>& gone) {
    std::vector<RecentEntry> entries;
    const auto all = readRecentList(list);
    if (!all) return "error: " + all.error().detail;
    for (const RecentEntry& entry : all.value()) {
        if (std::ranges::find(gone, entry.uri) != gone.end()) entries.push_back(entry);
    }
    const auto rest = withoutEntries(list, entries);
    return rest ? rest.value() : "error: " + rest.error().detail;
}

std::string faultOf(const std::string& list) {
    const auto read = readRecentList(list);
    return read ? "none" : read.error().detail;
}

TEST(RecentListTest, AnEntryGoesWithItsLineAndAllOthersStayByteForByte) {
    const std::string list =
        head + bookmark("file:///a") + bookmark("file:///b&amp;c") + bookmark("file:///d") + tail;
    EXPECT_THAT(uris(list), ElementsAre("file:///a", "file:///b&c", "file:///d"));
    EXPECT_EQ(without(list, {"file:///b&c"}),
              head + bookmark("file:///a") + bookmark("file:///d") + tail);
    EXPECT_EQ(without(list, {"file:///a", "file:///d"}), head + bookmark("file:///b&amp;c") + tail);
    EXPECT_EQ(without(list, {"file:///a", "file:///b&c", "file:///d"}), head + tail);
    EXPECT_EQ(without(list, {}), list);
}

TEST(RecentListTest, EntriesOnOneLineAndEmptyOnesAreTakenToo) {
    const std::string list =
        "<xbel><bookmark href='file:///a'/><bookmark href=\"file:///b\"></bookmark>"
        "<folder><bookmark href='file:///c'/></folder></xbel>";
    EXPECT_EQ(without(list, {"file:///a", "file:///c"}),
              "<xbel><bookmark href=\"file:///b\"></bookmark><folder></folder></xbel>");
}

TEST(RecentListTest, WhatOnlyLooksLikeAnEntryIsNone) {
    const std::string list = head + "<!-- <bookmark href=\"file:///a\"> -->\n" +
                             "<title><![CDATA[<bookmark href=\"file:///a\"/>]]></title>\n" +
                             bookmark("file:///a") + "<!-- </bookmark> -->" + tail;
    EXPECT_THAT(uris(list), ElementsAre("file:///a"));
    const std::string rest = without(list, {"file:///a"});
    EXPECT_EQ(uris(rest), std::vector<std::string>());
    EXPECT_THAT(rest, HasSubstr("<!-- <bookmark href=\"file:///a\"> -->"));
    EXPECT_THAT(rest, HasSubstr("<![CDATA[<bookmark href=\"file:///a\"/>]]>"));
}

TEST(RecentListTest, AnEntryWithinAnEntryGoesByItselfOrWithTheOther) {
    const std::string list =
        "<xbel><bookmark href='a'><bookmark href='b'/></bookmark><bookmark href='c'/></xbel>";
    EXPECT_EQ(without(list, {"b"}),
              "<xbel><bookmark href='a'></bookmark><bookmark href='c'/></xbel>");
    EXPECT_EQ(without(list, {"a"}), "<xbel><bookmark href='c'/></xbel>");
    EXPECT_EQ(without(list, {"a", "b"}), "<xbel><bookmark href='c'/></xbel>");
}

TEST(RecentListTest, OtherEncodingsAreReadAndKept) {
    const std::string latin =
        "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<xbel>\n"
        "  <bookmark href=\"file:///caf\xE9\"/>\n  <bookmark href=\"b\"/>\n</xbel>";
    EXPECT_THAT(uris(latin), ElementsAre("file:///caf\xC3\xA9", "b"));
    EXPECT_EQ(without(latin, {"file:///caf\xC3\xA9"}),
              "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<xbel>\n  <bookmark "
              "href=\"b\"/>\n</xbel>");

    for (const bool isBigEndian : {false, true}) {
        const auto wide = [isBigEndian](const std::string& text) {
            std::string bytes;
            for (const char c : text) {
                if (isBigEndian) bytes += '\0';
                bytes += c;
                if (!isBigEndian) bytes += '\0';
            }
            return bytes;
        };
        const std::string mark = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
        const std::string list =
            mark + wide("<xbel>\n <bookmark href='a'/>\n <bookmark href='b'/>\n</xbel>");
        EXPECT_EQ(without(list, {"a"}), mark + wide("<xbel>\n \n <bookmark href='b'/>\n</xbel>"));
    }
}

TEST(RecentListTest, WhatIsNoWholeListIsRefused) {
    EXPECT_NE(faultOf(""), "none");
    EXPECT_NE(faultOf("<xbel>"), "none");
    EXPECT_NE(faultOf("<xbel><bookmark href='a'></xbel>"), "none");
    EXPECT_NE(faultOf(head + bookmark("a") + tail + "more"), "none");
    EXPECT_NE(faultOf(std::string(100, '\0')), "none");
    EXPECT_EQ(faultOf("<html><bookmark href='a'/></html>"), "is no list of bookmarks");
    EXPECT_EQ(faultOf("<!DOCTYPE xbel [<!ENTITY b \"<bookmark href='a'/>\">]><xbel>&b;</xbel>"),
              "declares entities of its own");
    std::string deep;
    for (int i = 0; i < 100'000; ++i) deep += "<a>";
    EXPECT_EQ(faultOf("<xbel>" + deep), "is nested too deep");
}

TEST(RecentListTest, AListOfFiftyMegabytesIsOnlyLong) {
    std::string list = head;
    while (list.size() < 50'000'000) list += bookmark("file:///x" + std::to_string(list.size()));
    const std::size_t others = list.size();
    list += bookmark("file:///a") + tail;
    EXPECT_EQ(without(list, {"file:///a"}), list.substr(0, others) + tail);
}

}  // namespace
}  // namespace dorvanel::mentions
