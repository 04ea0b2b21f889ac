#include "watch/WatchedApplications.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "watch/WatchHarness.h"

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;

TEST(WatchedApplicationsTest, TheFlagsStandInTheOrderOfTheirRecord) {
    for (std::size_t i = 0; i < kWatchedApplications.size(); ++i) {
        bw_typedef flags;
        flags.*kWatchedApplications[i].flag = 1;
        std::array<std::uint32_t, 12> words{};
        static_assert(sizeof flags == sizeof words);
        std::memcpy(words.data(), &flags, sizeof flags);
        EXPECT_EQ(words[i], 1U) << kWatchedApplications[i].name;
    }
}

TEST(WatchedApplicationsTest, TheTestStringsStandInTheSameOrder) {
    EXPECT_THAT(testStrings(),
                ElementsAre("Safari.app", "Internet Explorer.app", "Mozilla.app", "Netscape.app",
                            "iCab", "Opera.app", "OmniWeb.app", "Mail.app", "Eudora.app",
                            "Mailsmith.app", "Camino.app", "Firefox.app"));
}

TEST(WatchedApplicationsTest, TheDisplayOrderIsThatOfTheListOfEnabledApplications) {
    std::vector<std::string_view> names;
    names.reserve(kDisplayOrder.size());
    for (const std::size_t i : kDisplayOrder) names.push_back(kWatchedApplications[i].name);
    EXPECT_THAT(names,
                ElementsAre("Safari", "Internet Explorer", "Mozilla", "Netscape", "iCab", "Omniweb",
                            "Opera", "Apple Mail", "Eudora", "Mailsmith", "Camino", "Firefox"));
}

TEST(WatchedApplicationsTest, EachApplicationHasTheLabelOfItsOwn) {
    FakeWatchWindow window;
    const BrowserWatchOutlets outlets = window.outlets();
    const auto labels = window.labels();
    for (std::size_t i = 0; i < kDisplayOrder.size(); ++i) {
        const WatchedApplication& application = kWatchedApplications[kDisplayOrder[i]];
        EXPECT_EQ(outlets.*application.label, labels[i]) << application.name;
    }
}

struct Line {
    std::string_view text;
    std::string_view application;  // by test string; "" for none
};

void PrintTo(const Line& line, std::ostream* stream) {
    *stream << ::testing::PrintToString(line.text);
}

class ListingLineTest : public ::testing::TestWithParam<Line> {};

TEST_P(ListingLineTest, IsCreditedToTheFirstApplicationItNames) {
    const std::vector<std::string_view> strings = testStrings();
    const std::size_t index = applicationNamedIn(GetParam().text, strings);
    EXPECT_EQ(index < strings.size() ? strings[index] : "", GetParam().application);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ListingLineTest,
    ::testing::Values(Line{"/A/Safari.app/x\n", "Safari.app"}, Line{"Safari.app", "Safari.app"},
                      Line{"/A/Internet Explorer.app/x", "Internet Explorer.app"},
                      Line{"/A/OmniWeb.app/x", "OmniWeb.app"}, Line{"xiCabx", "iCab"},
                      Line{"/A/Firefox.app/x /A/iCab/y", "iCab"},
                      Line{"/A/Firefox.app/x /A/Camino.app/y", "Camino.app"},
                      Line{"/A/Mailsmith.app/x", "Mailsmith.app"},
                      Line{"\xff\xfe Opera.app \x80", "Opera.app"}, Line{"", ""}, Line{"\n", ""},
                      Line{"/A/safari.app/x", ""}, Line{"/A/Safari/x", ""},
                      Line{"/A/Omniweb.app", ""}, Line{"/A/icab/x", ""},
                      Line{"/usr/lib/firefox/firefox", ""}, Line{"[Safari] <defunct>", ""},
                      Line{"Safari.ap", ""}, Line{"Safari.app /usr/bin/hdid", ""},
                      Line{"/usr/bin/hdiderror iCab", ""}));

}  // namespace
}  // namespace dorvanel::test
