// SPDX-License-Identifier: MIT
#include "engine/random/FeedbackLanes.h"

#include <gtest/gtest.h>

#include <vector>

namespace dorvanel::additive {
namespace {

/// A window that no seed makes.
Window someWindow() {
    Window window;
    std::uint32_t word = 0x9E3779B9;
    for (std::uint32_t& each : window) each = word = word * 1664525 + 1013904223;
    return window;
}

/// The window after one more word, by the recurrence as it is defined.
Window stepped(const Window& window) {
    Window next;
    for (std::size_t i = 0; i + 1 < degree; ++i) next[i] = window[i + 1];
    next[degree - 1] = window[0] + window[tap];
    return next;
}

TEST(AdditiveFeedbackTest, AJumpOverNoWordsLeavesTheWindow) {
    EXPECT_EQ(jumped(extend(someWindow(), 0), jumpBy(0)), someWindow());
}

TEST(AdditiveFeedbackTest, AJumpEqualsAsManySteps) {
    Window window = someWindow();
    for (std::uint64_t words = 0; words < 200; ++words) {
        EXPECT_EQ(jumped(extend(someWindow(), 0), jumpBy(words)), window) << words;
        window = stepped(window);
    }
}

TEST(AdditiveFeedbackTest, AJumpOverAWholeFillEqualsAsManySteps) {
    Window window = someWindow();
    for (int i = 0; i < 65536; ++i) window = stepped(window);
    EXPECT_EQ(jumped(extend(someWindow(), 0), jumpBy(65536)), window);
}

TEST(AdditiveFeedbackTest, JumpsMultiplyToTheJumpOverTheirSum) {
    const std::uint64_t far = (std::uint64_t{1} << 52) + 12345;
    EXPECT_EQ((jumpBy(far) * jumpBy(67890)).factors, jumpBy(far + 67890).factors);
}

struct With {
    Instructions instructions;
    const char* name;
};

void PrintTo(const With& with, std::ostream* stream) {
    *stream << with.name;
}

class FeedbackLanesTest : public ::testing::TestWithParam<With> {};

TEST_P(FeedbackLanesTest, JumpsAreTheSameWithAnyInstructions) {
    EXPECT_EQ(jumped(extend(someWindow(), 0), jumpBy(987654321), GetParam().instructions),
              jumped(extend(someWindow(), 0), jumpBy(987654321)));
}

TEST_P(FeedbackLanesTest, WordsOfEverySizeEqualTheSteppedOnesAndNothingIsWrittenBehindThem) {
    for (std::size_t count = bulkUnit; count <= 65536; count *= 2) {
        std::vector<std::uint16_t> words(count + 16, 0xBEEF);
        makeWords(extend(someWindow(), 0), words.data(), count, GetParam().instructions);
        Window window = someWindow();
        for (std::size_t i = 0; i < count; ++i) {
            window = stepped(window);
            ASSERT_EQ(words[i], static_cast<std::uint16_t>(window[degree - 1] >> 1))
                << count << ", " << i;
        }
        for (std::size_t i = count; i < words.size(); ++i) ASSERT_EQ(words[i], 0xBEEF);
    }
}

INSTANTIATE_TEST_SUITE_P(With, FeedbackLanesTest,
                         ::testing::Values(With{Instructions::best, "BestInstructions"},
                                           With{Instructions::baseline, "BaselineInstructions"}),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace dorvanel::additive
