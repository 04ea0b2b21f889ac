// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "app/desktop/DesktopFixture.h"
#include "app/desktop/work/WorkText.h"

namespace dorvanel::test {
namespace {

using ui::WorkPhase;
using ui::WorkState;

constexpr std::uint64_t block = 131072;

/// How far a shredding is, in the window and outside of it.
class WorkProgressTest : public DesktopFixture {
  protected:
    WorkProgressTest() {
        clock.step = std::chrono::milliseconds(20);  // so that the outlets are told every value
        preferences->displayedValues.insert_or_assign("NumberOfWrites", Number::fromInt(2));
        EXPECT_TRUE(preferences->commitDisplayedValues());
    }
    QLabel* text() { return find<QLabel>("workText"); }
    QLabel* item() { return find<QLabel>("itemName"); }
    bool shred(const std::vector<std::string>& files) {
        return desktop->controller().shredFiles(holdAll(*system, files));
    }
};

TEST_F(WorkProgressTest, NothingIsShownWhileNothingGoesOn) {
    ASSERT_TRUE(launch());
    settle();
    EXPECT_TRUE(text()->isHidden());
    EXPECT_TRUE(item()->isHidden());
    EXPECT_EQ(window().windowTitle(), "Dorvanel X");
}

TEST_F(WorkProgressTest, AHeldRunShowsWhereItIsAndItsEndTakesThatAway) {
    const std::string small = home / "a.txt", large = home / "cache2";
    writeFile(small, "secret");
    writeFile(large, std::string(3 * block, 'x'));
    ASSERT_TRUE(launch());
    draws.hold(5);  // in the second block of the second file
    ASSERT_TRUE(shred({small, large}));
    waitUntil([this] { return text()->text().startsWith("66 %"); });
    EXPECT_EQ(text()->text(), "66 % · 256.0 of 384.0 KiB");
    EXPECT_EQ(item()->accessibleName(), "Item 2 of 2: cache2");
    EXPECT_EQ(item()->toolTip(), QString::fromStdString(large));
    EXPECT_FALSE(text()->isHidden());
    EXPECT_FALSE(item()->isHidden());
    EXPECT_EQ(window().windowTitle(), "66 % – Dorvanel X");
    draws.release();
    waitForEnd();
    EXPECT_TRUE(text()->isHidden());
    EXPECT_TRUE(item()->isHidden());
    EXPECT_EQ(window().windowTitle(), "Dorvanel X");
}

TEST_F(WorkProgressTest, ALongNameIsCutInTheMiddleAndWholeForAssistiveTechnology) {
    const std::string name = "begin" + std::string(200, 'n') + "end";
    writeFile(home / name, "secret");
    ASSERT_TRUE(launch());
    draws.hold(1);
    ASSERT_TRUE(shred({home / name}));
    waitUntil([this] { return !item()->isHidden(); });
    EXPECT_TRUE(item()->text().contains(u'…'));
    EXPECT_TRUE(item()->text().startsWith("Item 1 of 1: begin"));
    EXPECT_TRUE(item()->text().endsWith("end"));
    EXPECT_EQ(item()->accessibleName(), QString::fromStdString("Item 1 of 1: " + name));
    EXPECT_EQ(item()->toolTip(), QString::fromStdString(home / name));
    draws.release();
    waitForEnd();
}

WorkState at(WorkPhase phase) {
    return {.phase = phase,
            .done = 2254857830,
            .total = 5368709120,
            .item = 3,
            .items = 12,
            .path = "/home/a/cache2"};
}

WorkEstimate known() {
    WorkEstimate estimate;
    WorkEstimate::Time now{std::chrono::hours(1)};
    for (int i = 0; i <= 20; ++i, now += std::chrono::seconds(1)) {
        estimate.add(now, std::uint64_t{18000000} * static_cast<std::uint64_t>(i), 3600000000);
    }
    return estimate;
}

TEST(WorkTextTest, SaysHowMuchOfWhatHowFastAndHowLongYet) {
    EXPECT_EQ(desktop::workTextOf(at(WorkPhase::overwriting), known()),
              "41 % · 2.1 of 5.0 GiB · 18 MB/s · about 3 min");
    EXPECT_EQ(desktop::workTextOf(at(WorkPhase::overwriting), {}), "41 % · 2.1 of 5.0 GiB");
    EXPECT_EQ(desktop::itemTextOf(at(WorkPhase::overwriting)), "Item 3 of 12: cache2");
}

TEST(WorkTextTest, SaysThePhaseWhereNothingIsOverwritten) {
    EXPECT_EQ(desktop::workTextOf(at(WorkPhase::measuring), known()),
              "Measuring what is to be shredded…");
    EXPECT_EQ(desktop::workTextOf(at(WorkPhase::flushing), known()),
              "41 % · 2.1 of 5.0 GiB · bringing it to the medium and removing the names…");
    EXPECT_EQ(desktop::workTextOf(at(WorkPhase::readingBack), known()),
              "41 % · 2.1 of 5.0 GiB · reading back what was written…");
    EXPECT_EQ(desktop::workTextOf({}, known()), "");
}

TEST(WorkTextTest, OfEmptyFilesThereIsNoPercentage) {
    EXPECT_EQ(desktop::percentOf({.phase = WorkPhase::overwriting}), -1);
    EXPECT_EQ(desktop::workTextOf({.phase = WorkPhase::overwriting}, {}), "");
}

TEST(WorkTextTest, AFileThatGrewGoesNotBeyondTheWhole) {
    const WorkState grown{.phase = WorkPhase::overwriting, .done = 9, .total = 6};
    EXPECT_EQ(desktop::workTextOf(grown, {}), "100 % · 6 of 6 bytes");
}

}  // namespace
}  // namespace dorvanel::test
