// SPDX-License-Identifier: MIT
#include "watch/ListedApplication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace dorvanel::test {
namespace {

using ::testing::ElementsAre;

TEST(ListedApplicationTest, TheTestStringsStandInTheSameOrder) {
    EXPECT_THAT(testStrings(),
                ElementsAre("Safari.app", "Internet Explorer.app", "Mozilla.app", "Netscape.app",
                            "iCab", "Opera.app", "OmniWeb.app", "Mail.app", "Eudora.app",
                            "Mailsmith.app", "Camino.app", "Firefox.app"));
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
