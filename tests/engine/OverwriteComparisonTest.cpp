// SPDX-License-Identifier: MIT

// Every write of the engine against the plain program that calls random() for every word.
#include <fmt/format.h>

#include <tuple>

#include "support/Disk.h"
#include "support/EngineFixture.h"
#include "support/PlainOverwrite.h"

namespace dorvanel::test {
namespace {

const std::vector<std::string> allSizes{"0",      "1",      "4095",   "131071",
                                        "131072", "131073", "262144", "300001"};

/// The sizes of a request such as "4095+0".
std::vector<std::size_t> sizesOf(const std::string& request) {
    std::vector<std::size_t> sizes{0};
    for (const char each : request) {
        if (each == '+') {
            sizes.push_back(0);
        } else {
            sizes.back() = sizes.back() * 10 + static_cast<std::size_t>(each - '0');
        }
    }
    return sizes;
}

/// Overwrites files of these sizes, one after another, with a new engine; tells what the plain
/// program tells.
std::vector<std::string> engineOverwrite(const PlainSettings& settings,
                                         const std::string& request) {
    const TemporaryFolder folder;
    TestEngine engine;
    engine.preferences.set("OverwritePattern", settings.pattern);
    engine.preferences.set("NumberOfWrites", settings.numberOfWrites);
    engine.preferences.set("DoDSanitize", settings.doD);
    engine.preferences.set("NSA", settings.nsa);

    std::vector<std::string> lines;
    const std::string path = folder / "file";
    for (const std::size_t size : sizesOf(request)) {
        writeFile(path, recognisable(size));
        engine.system.calls.clear();
        engine.access.shredOneFile(path);
        for (const auto& call : engine.system.callsOf("writeAt")) {
            lines.push_back(
                fmt::format("write {} {} {:016x}", call.offset, call.length, call.hash));
        }
        const std::string contents = readFile(path);
        lines.push_back(fmt::format("file {} {:016x}", contents.size(),
                                    contentHash(contents.data(), contents.size())));
    }
    return lines;
}

void expectEqual(const PlainSettings& settings, const std::vector<std::string>& requests) {
    const auto plain = plainOverwrite(settings, requests);
    for (std::size_t i = 0; i < requests.size(); ++i) {
        std::vector<std::string> expected;
        for (const std::string& line : plain[i]) {
            if (!line.starts_with("progress")) expected.push_back(line);
        }
        ASSERT_EQ(engineOverwrite(settings, requests[i]), expected)
            << "sizes " << requests[i] << ", index " << settings.numberOfWrites;
    }
}

class OverwriteComparisonTest
    : public ::testing::TestWithParam<std::tuple<int, std::pair<bool, bool>>> {
  protected:
    [[nodiscard]] PlainSettings settings(int numberOfWrites) const {
        const auto [pattern, standards] = GetParam();
        return {pattern, numberOfWrites, standards.first, standards.second};
    }
};

TEST_P(OverwriteComparisonTest, EachWriteOfFewPassesEqualsThePlainProgramsForEverySize) {
    for (const int index : {0, 2, 3, 4}) expectEqual(settings(index), allSizes);
}

TEST_P(OverwriteComparisonTest, EachWriteOfManyPassesEqualsThePlainPrograms) {
    for (const int index : {11, 12, 16}) expectEqual(settings(index), {"1", "131073"});
}

TEST_P(OverwriteComparisonTest, FilesOneAfterAnotherGoOnWithTheSequenceAndTheBuffer) {
    for (const int index : {0, 2, 5}) {
        expectEqual(settings(index), {"5+131073+0+4095", "300001+1", "0+0+1+200000"});
    }
}

std::string nameOf(const ::testing::TestParamInfo<std::tuple<int, std::pair<bool, bool>>>& test) {
    const auto& [pattern, standards] = test.param;
    return fmt::format("Pattern{}{}{}", pattern, standards.first ? "DoD" : "",
                       standards.second ? "NSA" : "");
}

INSTANTIATE_TEST_SUITE_P(
    Of, OverwriteComparisonTest,
    ::testing::Combine(::testing::Range(0, 8, isSanitized() ? 3 : 1),
                       ::testing::Values(std::pair(false, false), std::pair(true, false),
                                         std::pair(false, true), std::pair(true, true))),
    nameOf);

}  // namespace
}  // namespace dorvanel::test
