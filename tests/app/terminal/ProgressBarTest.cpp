// SPDX-License-Identifier: MIT
#include "app/terminal/ProgressBar.h"

#include <gtest/gtest.h>

#include "app/terminal/EscapedText.h"
#include "app/terminal/TestTerminal.h"
#include "support/FakeClock.h"

namespace dorvanel::test {
namespace {

using namespace std::chrono_literals;
using terminal::ProgressBar;
using terminal::ProgressBytes;

class ProgressBarTest : public ::testing::Test {
  protected:
    /// What the bar wrote since the last look.
    std::string written() {
        std::string text = console.err.str();
        console.err.str({});
        return text;
    }
    void show(double percent) {
        bar.setDoubleValue(percent);
        bar.display();
    }

    FakeClock clock;
    ProgressBytes bytes;
    int columns = 80;
    TestTerminal console{80};
    ProgressBar bar{console.terminal, clock, [this] { return bytes; }};
};

TEST_F(ProgressBarTest, ShowsPercentageRateTimeLeftAndName) {
    bar.fileName().setStringValue("a.txt");
    show(0);
    EXPECT_EQ(written(), "\r[-----------------]   0%  a.txt");
    clock.advance(2s);
    bytes = {500'000'000, 1'000'000'000};
    show(50);
    EXPECT_EQ(written(), "\r[########---------]  50%  250 MB/s  0:02  a.txt");
}

TEST_F(ProgressBarTest, AShorterLineCoversTheLongerOneBeforeIt) {
    bar.fileName().setStringValue("long-name.txt");
    show(1);
    const std::size_t before = written().size();
    bar.fileName().setStringValue("a");
    bar.fileName().display();
    const std::string after = written();
    EXPECT_EQ(after.size(), before);
    EXPECT_TRUE(after.ends_with("  a            ")) << after;
}

TEST_F(ProgressBarTest, AHostileNameIsEscaped) {
    bar.fileName().setStringValue("a\n\x1b[31m\xE9");
    bar.fileName().display();
    EXPECT_TRUE(written().ends_with("  a\\n\\x1b[31m\\xe9"));
}

TEST_F(ProgressBarTest, FitsAtAnyWidthWithoutAnEscapeSequence) {
    bytes = {123'456'789'012, 999'999'999'999};
    bar.fileName().setStringValue("日本語のファイル名-" + std::string(200, 'x') + "-end.txt");
    for (int width = 1; width <= 200; ++width) {
        console.terminal.columns = [width] { return width; };
        clock.advance(100s);
        show(12);
        const std::string line = written();
        EXPECT_EQ(line.find('\x1b'), std::string::npos);
        EXPECT_EQ(line.find('\n'), std::string::npos);
        EXPECT_EQ(line.rfind('\r'), 0U);
        EXPECT_LE(terminal::displayWidth(line.substr(1)), std::max(width - 1, 0)) << width;
        if (width >= 6) {
            EXPECT_NE(line.find("12%"), std::string::npos) << width;
        }
    }
}

TEST_F(ProgressBarTest, FortyColumnsHoldAllOfIt) {
    bytes = {300'000'000, 1'000'000'000};
    bar.fileName().setStringValue("a-rather-long-name.txt");
    show(1);
    clock.advance(10s);
    EXPECT_EQ(bar.line(39), "[-------]   1%  30 MB/s  0:23  a-r...xt");
}

TEST_F(ProgressBarTest, TheWidthIsAskedAtEachDrawing) {
    bar.fileName().setStringValue(std::string(300, 'x'));
    for (const int width : {100, 50, 70}) {
        console.terminal.columns = [width] { return width; };
        show(1);
        EXPECT_EQ(written().size(), static_cast<std::size_t>(width));  // the carriage return apart
    }
}

TEST_F(ProgressBarTest, AnUnknownWidthIsTakenForEighty) {
    for (const int told : {0, -1}) {
        console.terminal.columns = [told] { return told; };
        bar.fileName().setStringValue(std::string(300, 'x'));
        show(1);
        EXPECT_EQ(written().size(), 80U);
    }
}

TEST_F(ProgressBarTest, LongTimesAreShownInHours) {
    show(1);
    clock.advance(1s);
    bytes = {1, 3601};
    EXPECT_NE(bar.line(79).find("  1:00:00"), std::string::npos) << bar.line(79);
    bytes = {1, 1'000'000};
    EXPECT_NE(bar.line(79).find("  >99 h"), std::string::npos) << bar.line(79);
    bytes = {0, 1'000'000};
    EXPECT_EQ(bar.line(79), "[-----------------]   1%  0.0 MB/s") << "no time left is known";
}

TEST_F(ProgressBarTest, NothingIsDrawnBetweenDisplays) {
    bar.setDoubleValue(5);
    bar.fileName().setStringValue("a");
    EXPECT_EQ(written(), "");
    bar.display();
    EXPECT_NE(written(), "");
}

TEST_F(ProgressBarTest, TheLineIsTakenAwayAtTheEnd) {
    bar.fileName().setStringValue("a.txt");
    show(40);
    const std::size_t width = written().size() - 1;
    show(0);
    EXPECT_EQ(written(), "\r" + std::string(width, ' ') + "\r");
    bar.fileName().setStringValue("");
    bar.fileName().display();
    bar.clear();
    EXPECT_EQ(written(), "");
}

TEST_F(ProgressBarTest, IsSilentInAPipe) {
    console.terminal.errIsTerminal = false;
    bar.fileName().setStringValue("a.txt");
    bar.fileName().display();
    show(50);
    show(0);
    bar.clear();
    EXPECT_EQ(written(), "");
}

TEST_F(ProgressBarTest, ValuesOutOfRangeAreBroughtBack) {
    show(250);
    EXPECT_EQ(bar.line(79), "[#################] 100%");
    bar.setDoubleValue(-3);
    EXPECT_EQ(bar.line(79), "[-----------------]   0%");
}

}  // namespace
}  // namespace dorvanel::test
