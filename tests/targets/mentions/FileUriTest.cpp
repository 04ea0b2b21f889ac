// SPDX-License-Identifier: MIT
#include "targets/mentions/FileUri.h"

#include <gtest/gtest.h>

namespace dorvanel::mentions {
namespace {

TEST(FileUriTest, EveryByteIsWrittenAsGLibWritesIt) {
    // The bytes that "gio info" leaves as they are in the URI of a file; it encodes all others.
    const std::string plain =
        "!$&'()*+,-.0123456789:=@ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz~/";
    for (int byte = 1; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        char encoded[4];
        std::snprintf(encoded, sizeof encoded, "%%%02X", static_cast<unsigned>(byte));
        const bool isPlain = plain.find(c) != std::string::npos;
        EXPECT_EQ(fileUri(std::string("/") + c),
                  "file:///" + (isPlain ? std::string(1, c) : std::string(encoded)));
    }
}

TEST(FileUriTest, UrisAsGioTellsThem) {
    EXPECT_EQ(fileUri("/home/me/a b;c#d?.txt"), "file:///home/me/a%20b%3Bc%23d%3F.txt");
    EXPECT_EQ(fileUri("/home/caf\xC3\xA9/[1] 100%"), "file:///home/caf%C3%A9/%5B1%5D%20100%25");
    EXPECT_EQ(fileUri("/x\ny\xFF"), "file:///x%0Ay%FF");
}

TEST(FileUriTest, AUriIsComparedByWhatItLeadsTo) {
    for (const char* uri : {"file:///a/b%20c", "file:///a/b c", "FILE:///a/%62%20c",
                            "file://localhost/a/b%20c", "file:/a/b%20c", "file:///a//./b%20c/"}) {
        EXPECT_EQ(pathOfUri(uri), "/a/b c") << uri;
    }
    EXPECT_EQ(pathOfUri("file:///100%25"), "/100%");
    EXPECT_EQ(pathOfUri("file:///100%"), "/100%");
}

TEST(FileUriTest, WhatIsNoFileOfThisMachineIsNone) {
    for (const char* uri : {"", "/a", "http://x/a", "file://server/a", "trash:///a",
                            "file:", "file:a", "file:///a%00b"}) {
        EXPECT_EQ(pathOfUri(uri), std::nullopt) << uri;
    }
}

TEST(FileUriTest, ALinkEntryOfKdeMayNameTheHomeFolderByItsVariable) {
    const std::string start = "[Desktop Entry]\nIcon=text-plain\n";
    const auto path = [&](const std::string& line) {
        return pathOfLinkEntry(start + line + "\nType=Link\n", "/home/me");
    };
    EXPECT_EQ(path("URL[$e]=file://$HOME/a%20b.txt"), "/home/me/a b.txt");
    EXPECT_EQ(path("URL[$e]=file:$HOME/a"), "/home/me/a");
    EXPECT_EQ(path("URL[$e]=$HOME/a b"), "/home/me/a b");
    EXPECT_EQ(path("URL[$e]=file:///x/a$$b"), "/x/a$b");
    EXPECT_EQ(path("URL=file:///x/$HOME/a$$b"), "/x/$HOME/a$$b");
    EXPECT_EQ(path("URL = file:///x/caf%C3%A9"), "/x/caf\xC3\xA9");
    EXPECT_EQ(path("URL=file:///x/a\\\\b\\sc\r"), "/x/a\\b c");
    EXPECT_EQ(path("URL=http://x/a"), std::nullopt);
    EXPECT_EQ(path("Name=none"), std::nullopt);
    EXPECT_EQ(pathOfLinkEntry("[Other]\nURL=file:///a\n", ""), std::nullopt);
    EXPECT_EQ(pathOfLinkEntry("", ""), std::nullopt);
}

}  // namespace
}  // namespace dorvanel::mentions
