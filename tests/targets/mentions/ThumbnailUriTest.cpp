// SPDX-License-Identifier: MIT
#include "targets/mentions/ThumbnailUri.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/SampleThumbnail.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::mentions {
namespace {

using test::pngChunk;
using test::pngOf;
using test::pngSignature;

class ThumbnailUriTest : public ::testing::Test {
  protected:
    std::optional<std::string> uriOf(const std::string& bytes) {
        test::writeFile(folder / "x.png", bytes);
        return uri();
    }
    std::optional<std::string> uri() {
        const int opened = calls->openFolder(folder.path().c_str());
        auto found = thumbnailUri(*calls, opened, "x.png");
        calls->close(opened);
        return found;
    }

    test::TemporaryFolder folder;
    std::unique_ptr<platform::CleaningCalls> calls = platform::makeCleaningCalls();
};

TEST_F(ThumbnailUriTest, TheTextIsFoundWhereverItStands) {
    EXPECT_EQ(uriOf(pngOf("file:///a")), "file:///a");
    const std::string text = pngChunk("tEXt", std::string("Thumb::URI\0file:///b", 20));
    const std::string other = pngChunk("tEXt", std::string("Thumb::MTime\0", 13) + "12");
    const std::string pixels = pngChunk("IDAT", std::string(100'000, 'x'));
    EXPECT_EQ(uriOf(pngSignature + other + pixels + pixels + text + pngChunk("IEND", "")),
              "file:///b");
}

TEST_F(ThumbnailUriTest, TruncatedAndHostileImagesSayNothing) {
    const std::string whole = pngOf("file:///a");
    for (std::size_t size = 0; size + 20 < whole.size(); ++size) {
        const auto found = uriOf(whole.substr(0, size));
        EXPECT_TRUE(!found || found == "file:///a") << size;
    }
    EXPECT_EQ(uriOf(pngSignature + std::string("\xFF\xFF\xFF\xFFtEXt") + "Thumb::URI"),
              std::nullopt);
    EXPECT_EQ(uriOf(pngSignature + std::string("\x7F\xFF\xFF\xFFIDAT")), std::nullopt);
    EXPECT_EQ(uriOf(pngSignature + pngChunk("IEND", "") + whole.substr(pngSignature.size())),
              std::nullopt);
    EXPECT_EQ(uriOf("GIF89a" + whole), std::nullopt);
    EXPECT_EQ(uriOf(pngSignature + pngChunk("tEXt", "Thumb::URI")), std::nullopt);
    std::string endless = pngSignature;
    for (int i = 0; i < 10'000; ++i) endless += pngChunk("xxxx", "");
    EXPECT_EQ(uriOf(endless + whole.substr(pngSignature.size())), std::nullopt);
}

TEST_F(ThumbnailUriTest, WhatIsNoPlainFileIsNotRead) {
    test::writeFile(folder / "real", pngOf("file:///a"));
    std::filesystem::create_symlink("real", folder / "x.png");
    EXPECT_EQ(uri(), std::nullopt);
    std::filesystem::remove(folder / "x.png");
    ASSERT_EQ(::mkfifo((folder / "x.png").c_str(), 0600), 0);
    EXPECT_EQ(uri(), std::nullopt);
}

}  // namespace
}  // namespace dorvanel::mentions
