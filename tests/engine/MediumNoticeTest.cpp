// SPDX-License-Identifier: MIT
#include "engine/MediumNotice.h"

#include <gtest/gtest.h>

#include "support/FakeMedium.h"

namespace dorvanel::test {
namespace {

using Kind = platform::Medium::Kind;

class MediumNoticeTest : public testing::Test {
  protected:
    std::string noticeOf(const std::vector<std::string>& items) {
        return mediumNotice(items, medium_, [](const std::string& path) { return path; });
    }

    FakeMedium medium_;
};

TEST_F(MediumNoticeTest, ThereIsNoneWhereEverythingIsOverwrittenInPlace) {
    EXPECT_EQ(noticeOf({}), "");
    EXPECT_EQ(noticeOf({"/a", "/b"}), "");
}

TEST_F(MediumNoticeTest, ItNamesTheItemAndTheReason) {
    medium_.media["/a"] = {Kind::copyOnWrite, "btrfs"};
    EXPECT_EQ(noticeOf({"/a", "/b"}),
              "overwriting in place may not reach the old contents of /a (btrfs writes to other "
              "blocks)");
    medium_.media["/a"] = {Kind::solidState, ""};
    EXPECT_EQ(noticeOf({"/a"}),
              "overwriting in place may not reach the old contents of /a (solid-state drive)");
    EXPECT_EQ(medium_.forgotten, 2) << "disks come and go between two notices";
}

TEST_F(MediumNoticeTest, ItIsOneLineForAnyNumberOfItemsAndReasons) {
    for (int i = 0; i < 1000; ++i) {
        medium_.media["/s" + std::to_string(i)] = {Kind::solidState, ""};
    }
    medium_.media["/n"] = {Kind::network, "nfs"};
    medium_.media["/o"] = {Kind::overlay, "overlay"};
    medium_.media["/f"] = {Kind::userSpace, "fuse"};
    std::vector<std::string> items{"/plain", "/s0", "/n"};
    for (int i = 1; i < 1000; ++i) items.push_back("/s" + std::to_string(i));
    items.emplace_back("/o");
    items.emplace_back("/f");
    EXPECT_EQ(noticeOf(items),
              "overwriting in place may not reach the old contents of /s0 and 999 more "
              "(solid-state drive); /n (nfs network mount); /o (overlay mount); /f (fuse mount)");
}

TEST_F(MediumNoticeTest, OfVeryManyItemsThoseOfOneFolderAreAskedAboutOnce) {
    std::vector<std::string> items;
    for (int i = 0; i < 100'000; ++i) {
        items.push_back((i < 50'000 ? "/slow/" : "/fast/") + std::to_string(i));
        if (i < 50'000) medium_.media[items.back()] = {Kind::network, "nfs"};
    }
    EXPECT_EQ(noticeOf(items),
              "overwriting in place may not reach the old contents of /slow/0 and 49999 more "
              "(nfs network mount)");
    EXPECT_LT(medium_.asked, 5000);
}

TEST_F(MediumNoticeTest, OfHeldItemsEachDeviceIsAskedAboutOnceAndEachLinkByItself) {
    const auto item = [](const char* path, platform::EntryKind kind, std::uint64_t device) {
        HeldItem held;
        held.path = path;
        held.status.kind = kind;
        held.status.device = device;
        return held;
    };
    using platform::EntryKind;
    const std::vector<HeldItem> items = {
        item("/a", EntryKind::regular, 1), item("/b", EntryKind::folder, 1),
        item("/c", EntryKind::regular, 2), item("/l", EntryKind::link, 1),
        item("/m", EntryKind::link, 1)};
    medium_.media["/a"] = {Kind::solidState, ""};
    medium_.media["/m"] = {Kind::network, "nfs"};
    EXPECT_EQ(mediumNotice(items, medium_, [](const std::string& path) { return path; }),
              "overwriting in place may not reach the old contents of /a and 1 more (solid-state "
              "drive); /m (nfs network mount)");
    EXPECT_EQ(medium_.asked, 4);
}

TEST_F(MediumNoticeTest, PathsAreShownAsTheFrontEndShowsThem) {
    medium_.media["/a\nb"] = {Kind::solidState, ""};
    const std::string notice =
        mediumNotice({"/a\nb"}, medium_, [](const std::string&) { return "'/a?b'"; });
    EXPECT_EQ(notice,
              "overwriting in place may not reach the old contents of '/a?b' (solid-state drive)");
}

}  // namespace
}  // namespace dorvanel::test
