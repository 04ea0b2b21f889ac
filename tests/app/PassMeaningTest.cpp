// SPDX-License-Identifier: MIT
#include "app/PassMeaning.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <string>
#include <vector>

#include "engine/FileOverwriter.h"
#include "engine/random/FeedbackSequence.h"
#include "support/FakeClock.h"
#include "support/FakeOutlets.h"
#include "support/FakePreferences.h"
#include "support/ForwardingSystemCalls.h"

namespace dorvanel {

void PrintTo(const OverwriteSettings& settings, std::ostream* out) {
    *out << "pattern " << settings.pattern << ", number " << settings.numberOfWrites
         << (settings.doDSanitize ? ", DoD" : "") << (settings.nsa ? ", NSA" : "");
}

namespace test {
namespace {

constexpr std::size_t fileSize = 64;

/// Keeps what is written inside the file, and writes nothing.
class KeptWrites final : public ForwardingSystemCalls {
  public:
    using ForwardingSystemCalls::ForwardingSystemCalls;
    std::ptrdiff_t writeAt(int /*file*/, const void* data, std::size_t size,
                           std::uint64_t offset) override {
        if (offset == 0) {
            kept.emplace_back(static_cast<const char*>(data), std::min(size, fileSize));
        }
        return static_cast<std::ptrdiff_t>(size);
    }
    std::vector<std::string> kept;
};

PassData dataOf(const std::string& bytes, const std::string& before) {
    const auto all = [&bytes](char byte) {
        return bytes.find_first_not_of(byte) == std::string::npos;
    };
    if (bytes == before) return PassData::asBefore;
    if (all('\0')) return PassData::zeros;
    if (all('\xFF')) return PassData::ones;
    if (all('\x55')) return PassData::fives;
    if (all('\xAA')) return PassData::tens;
    return PassData::random;
}

/// What the engine writes over the first block of a file, pass by pass.
std::vector<std::string> written(const OverwriteSettings& settings, std::uint32_t files) {
    const auto system = platform::makeSystemCalls();
    KeptWrites writes(*system);
    FeedbackSequence draws;
    for (std::uint32_t i = 0; i < files; ++i) static_cast<void>(draws.next());
    FakePreferences preferences;
    preferences.set("OverwritePattern", static_cast<int>(settings.pattern));
    preferences.set("NumberOfWrites", settings.numberOfWrites);
    preferences.set("DoDSanitize", settings.doDSanitize);
    preferences.set("NSA", settings.nsa);
    FakeProgressIndicator bar;
    FakeTextField name;
    FakeClock clock;
    ProgressReport progress(bar, name, clock);
    std::atomic<bool> stop = false;
    FileOverwriter overwriter(writes, draws, preferences, progress, stop);
    overwriter.setLogging(false);
    overwriter.overwrite(3, fileSize, "file");
    return writes.kept;
}

std::vector<OverwriteSettings> allSettings() {
    std::vector<OverwriteSettings> all;
    for (unsigned pattern = 0; pattern <= 7; ++pattern) {
        for (int number = 0; number <= 17; ++number) {
            if (number == 1) continue;  // 65536 passes: by its count alone
            for (const bool doD : {false, true}) {
                for (const bool nsa : {false, true}) all.push_back({pattern, number, doD, nsa});
            }
        }
    }
    return all;
}

TEST(PassMeaningTest, ItSaysWhatTheEngineWritesWithEverySetting) {
    for (const OverwriteSettings& settings : allSettings()) {
        SCOPED_TRACE(testing::PrintToString(settings));
        const PassMeaning meaning = meaningOf(settings);
        const std::vector<std::string> passes = written(settings, 0);
        const int count = static_cast<int>(passes.size());
        ASSERT_GE(count, meaning.fewest);
        ASSERT_LE(count, meaning.most);
        const std::size_t own = passes.size() - meaning.last.size();
        std::string before(fileSize, '\0');
        for (std::size_t i = 0; i < passes.size(); ++i) {
            const PassData expected = i < own ? meaning.own : meaning.last[i - own];
            // Equal bytes twice are the pattern itself; only random data must differ.
            const bool repeats = passes[i] == before && expected != PassData::random &&
                                 expected != PassData::asBefore;
            EXPECT_EQ(dataOf(passes[i], repeats ? std::string() : before), expected)
                << "pass " << i;
            before = passes[i];
        }
    }
}

TEST(PassMeaningTest, ADrawnNumberTakesEveryValueItNames) {
    for (const bool doD : {false, true}) {
        const OverwriteSettings settings{.doDSanitize = doD};
        int fewest = 99, most = 0;
        for (std::uint32_t draws = 0; draws < 40; ++draws) {
            const int count = static_cast<int>(written(settings, draws).size());
            fewest = std::min(fewest, count);
            most = std::max(most, count);
        }
        EXPECT_EQ(meaningOf(settings).fewest, fewest);
        EXPECT_EQ(meaningOf(settings).most, most);
    }
}

TEST(PassMeaningTest, TheCountIsTheEnginesWithOddNumbersToo) {
    for (const int number : {-3, 1, 18, 65538}) {
        const OverwriteSettings settings{.pattern = 3, .numberOfWrites = number};
        const int counter = passCount(settings, 2);
        EXPECT_EQ(meaningOf(settings).fewest, counter == 0 ? 65536 : counter);
        EXPECT_EQ(meaningOf(settings).most, meaningOf(settings).fewest);
    }
}

TEST(PassMeaningTest, ItKnowsWhereASequenceAddsPasses) {
    EXPECT_TRUE(meaningOf({.numberOfWrites = 2, .doDSanitize = true}).sequenceAddsPasses);
    EXPECT_TRUE(meaningOf({.numberOfWrites = 0, .nsa = true}).sequenceAddsPasses);
    EXPECT_FALSE(meaningOf({.numberOfWrites = 4, .nsa = true}).sequenceAddsPasses);
    EXPECT_TRUE(
        meaningOf({.numberOfWrites = 4, .doDSanitize = true, .nsa = true}).sequenceAddsPasses);
    EXPECT_FALSE(meaningOf({.numberOfWrites = 2}).sequenceAddsPasses);
}

}  // namespace
}  // namespace test
}  // namespace dorvanel
