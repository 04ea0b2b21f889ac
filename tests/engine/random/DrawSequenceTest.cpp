// SPDX-License-Identifier: MIT
#include "engine/random/DrawSequence.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "engine/random/FeedbackSequence.h"
#include "engine/random/LibrarySequence.h"
#include "support/Disk.h"

namespace dorvanel::test {
namespace {

/// The C library's generator on a state of its own, seeded as it is by default.
class LibraryGenerator {
  public:
    explicit LibraryGenerator(unsigned seed = 1) {
        initstate_r(seed, state_, sizeof state_, &data_);
    }
    LibraryGenerator(const LibraryGenerator&) = delete;
    LibraryGenerator& operator=(const LibraryGenerator&) = delete;

    std::uint32_t next() {
        std::int32_t draw = 0;
        random_r(&data_, &draw);
        ++draws;
        return static_cast<std::uint32_t>(draw);
    }
    std::vector<std::uint16_t> fill() {
        std::vector<std::uint16_t> words(DrawSequence::fillWords);
        for (std::uint16_t& word : words) word = static_cast<std::uint16_t>(next());
        return words;
    }

    int draws = 0;

  private:
    random_data data_{};
    char state_[128];  // the size that chooses the default generator
};

/// Takes a fill, and makes its words in the given steps; whatever is made must equal the library's.
void expectFill(DrawSequence& sequence, const std::vector<std::uint16_t>& expected,
                const std::vector<std::size_t>& steps) {
    sequence.takeFill();
    std::vector<std::uint16_t> words(DrawSequence::fillWords);
    std::size_t made = 0;
    for (const std::size_t wanted : steps) {
        const std::size_t before = made;
        made = sequence.produce(words.data(), made, wanted);
        ASSERT_GE(made, wanted);
        ASSERT_GE(made, before);
        ASSERT_LE(made, words.size());
        for (std::size_t i = 0; i < made; ++i) ASSERT_EQ(words[i], expected[i]) << i;
    }
}

TEST(FeedbackSequenceTest, EqualsTheLibraryOverAMillionDraws) {
    FeedbackSequence sequence;
    LibraryGenerator library;
    for (int i = 0; i < 1'000'000; ++i) ASSERT_EQ(sequence.next(), library.next()) << i;
}

TEST(FeedbackSequenceTest, EqualsRandomInAFreshProcess) {
    const std::string difference = inChild([]() -> std::string {
        FeedbackSequence sequence;
        for (int i = 0; i < 1'000'000; ++i) {
            if (sequence.next() != static_cast<std::uint32_t>(random())) {
                return "differs at draw " + std::to_string(i);
            }
        }
        return {};
    });
    EXPECT_EQ(difference, "");
}

TEST(FeedbackSequenceTest, FillsOfEverySizeBetweenSingleDrawsEqualTheLibrary) {
    FeedbackSequence sequence;
    LibraryGenerator library;
    std::vector<std::size_t> sizes{0, 1, 2, 31, 1000};
    for (std::size_t size = 2048; size <= DrawSequence::fillWords; size *= 2) {
        sizes.insert(sizes.end(), {size - 1, size, size + 1, size + size / 2});
    }
    for (const std::size_t size : sizes) {
        if (size > DrawSequence::fillWords) continue;
        for (int i = 0; i < 7; ++i) ASSERT_EQ(sequence.next(), library.next());
        expectFill(sequence, library.fill(), {size});
        for (int i = 0; i < 40; ++i) ASSERT_EQ(sequence.next(), library.next()) << size;
    }
}

TEST(FeedbackSequenceTest, AFillMadeBitByBitEqualsTheLibrary) {
    FeedbackSequence sequence;
    LibraryGenerator library;
    expectFill(sequence, library.fill(), {1, 1, 2048, 2049, 10000, 10001, 40000, 65535, 65536});
    expectFill(sequence, library.fill(), {30000, 65536});
    expectFill(sequence, library.fill(), {4097, 8193, 12289});
    EXPECT_EQ(sequence.next(), library.next());
}

TEST(FeedbackSequenceTest, DrawsTakenBetweenTwoHalvesOfAFillDoNotDisturbIt) {
    FeedbackSequence sequence;
    LibraryGenerator library;
    const std::vector<std::uint16_t> expected = library.fill();
    sequence.takeFill();
    std::vector<std::uint16_t> words(DrawSequence::fillWords);
    const std::size_t made = sequence.produce(words.data(), 0, 100);
    for (int i = 0; i < 50; ++i) ASSERT_EQ(sequence.next(), library.next());
    EXPECT_EQ(sequence.produce(words.data(), made, words.size()), words.size());
    EXPECT_EQ(words, expected);
    EXPECT_EQ(sequence.next(), library.next());
}

TEST(FeedbackSequenceTest, FillsThatNobodyWantsAreSkipped) {
    FeedbackSequence sequence;
    LibraryGenerator library;
    for (int i = 0; i < 10; ++i) {
        sequence.takeFill();
        library.fill();
    }
    EXPECT_EQ(sequence.next(), library.next());
}

TEST(LibrarySequenceTest, IsTheGeneratorDrawForDraw) {
    LibraryGenerator source(7);
    LibraryGenerator expected(7);
    LibrarySequence sequence([&] { return static_cast<long>(source.next()); }, {});
    EXPECT_EQ(sequence.next(), expected.next());
    expectFill(sequence, expected.fill(), {1, 5000, 65536});
    EXPECT_EQ(sequence.next(), expected.next());
}

TEST(MakeDrawSequenceTest, TakesOurGeneratorWhereTheLibrarysIsTheSame) {
    LibraryGenerator source;
    const auto sequence = makeDrawSequence([&] { return static_cast<long>(source.next()); });
    EXPECT_NE(dynamic_cast<FeedbackSequence*>(sequence.get()), nullptr);
    LibraryGenerator expected;
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(sequence->next(), expected.next());
}

TEST(MakeDrawSequenceTest, TakesOurGeneratorForRandomOfAFreshProcess) {
    EXPECT_EQ(inChild([]() -> std::string {
                  const auto sequence = makeDrawSequence();
                  return dynamic_cast<FeedbackSequence*>(sequence.get()) == nullptr
                             ? "the library's"
                             : "";
              }),
              "");
}

TEST(MakeDrawSequenceTest, FallsBackOnADifferentGeneratorAndLosesNoDraw) {
    LibraryGenerator source(2);
    const auto sequence = makeDrawSequence([&] { return static_cast<long>(source.next()); });
    EXPECT_NE(dynamic_cast<LibrarySequence*>(sequence.get()), nullptr);
    LibraryGenerator expected(2);
    expectFill(*sequence, expected.fill(), {10, 65536});
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(sequence->next(), expected.next());
    EXPECT_EQ(source.draws, expected.draws);
}

TEST(MakeDrawSequenceTest, NoticesAGeneratorThatDiffersOnlyAfterTheLengthOfTheState) {
    LibraryGenerator source;
    LibraryGenerator expected;
    const auto differing = [](LibraryGenerator& generator) {
        const std::uint32_t draw = generator.next();
        return static_cast<long>(generator.draws == 40 ? draw ^ 1 : draw);
    };
    const auto sequence = makeDrawSequence([&] { return differing(source); });
    EXPECT_NE(dynamic_cast<LibrarySequence*>(sequence.get()), nullptr);
    for (int i = 0; i < 200; ++i) {
        ASSERT_EQ(sequence->next(), static_cast<std::uint32_t>(differing(expected)));
    }
}

}  // namespace
}  // namespace dorvanel::test
