// SPDX-License-Identifier: MIT
#include "targets/MailboxUrl.h"

#include <gtest/gtest.h>

#include <ostream>

namespace dorvanel::test {
namespace {

constexpr std::optional<std::string> noPath = std::nullopt;

struct Case {
    std::string text, scheme, user, host;
    std::optional<std::string> path;
};

void PrintTo(const Case& test, std::ostream* stream) {
    *stream << test.text;
}

class MailboxUrlTest : public ::testing::TestWithParam<Case> {};

TEST_P(MailboxUrlTest, HasTheseParts) {
    const MailboxUrl url = parseMailboxUrl(GetParam().text);
    EXPECT_EQ(url.scheme, GetParam().scheme);
    EXPECT_EQ(url.user, GetParam().user);
    EXPECT_EQ(url.host, GetParam().host);
    EXPECT_EQ(url.path, GetParam().path);
}

INSTANTIATE_TEST_SUITE_P(
    Ordinary, MailboxUrlTest,
    ::testing::Values(
        Case{"local:///Inbox", "local", "", "", "/Inbox"},
        Case{"local:/Inbox", "local", "", "", "/Inbox"},
        Case{"local:///A/B", "local", "", "", "/A/B"},
        Case{"LoCaL:///Inbox", "LoCaL", "", "", "/Inbox"},
        Case{"pop://joe@mail.example.org/INBOX", "pop", "joe", "mail.example.org", "/INBOX"},
        Case{"pop://joe@mail.example.org/", "pop", "joe", "mail.example.org", "/"},
        Case{"pop://joe@mail.example.org", "pop", "joe", "mail.example.org", ""},
        Case{"pop://joe@Mail.Example.org:110/x", "pop", "joe", "Mail.Example.org", "/x"},
        Case{"pop://joe:secret@h:110/x", "pop", "joe", "h", "/x"},
        Case{"pop://h/x", "pop", "", "h", "/x"},
        Case{"x-mail+1.2://h/x", "x-mail+1.2", "", "h", "/x"}));

INSTANTIATE_TEST_SUITE_P(
    WithEscapes, MailboxUrlTest,
    ::testing::Values(Case{"local:///Deleted%20Messages", "local", "", "", "/Deleted Messages"},
                      Case{"local:///K%C3%B6ln", "local", "", "", "/K\xC3\xB6ln"},
                      Case{"local:///100%2525", "local", "", "", "/100%25"},
                      Case{"local:///a%2fb%2Fc", "local", "", "", "/a/b/c"},
                      Case{"local:///why%3F", "local", "", "", "/why?"},
                      Case{"pop://joe%40example.org@h/x", "pop", "joe@example.org", "h", "/x"},
                      Case{"pop://joe%3a1@h/x", "pop", "joe:1", "h", "/x"},
                      Case{"pop://joe@h%20h/x", "pop", "joe", "h%20h", "/x"}));

INSTANTIATE_TEST_SUITE_P(
    Odd, MailboxUrlTest,
    ::testing::Values(
        Case{"", "", "", "", ""}, Case{"Inbox", "", "", "", "Inbox"},
        Case{"/Trash", "", "", "", "/Trash"}, Case{"local:Trash", "local", "", "", noPath},
        Case{"mailto:joe@h", "mailto", "", "", noPath}, Case{":/x", "", "", "", ":/x"},
        Case{"1x:///y", "", "", "", "1x:///y"}, Case{"local:///Trash/", "local", "", "", "/Trash"},
        Case{"local:////", "local", "", "", "/"}, Case{"local:///x?y#z", "local", "", "", "/x"},
        Case{"local:///x#y?z", "local", "", "", "/x"},
        Case{"local:///50%", "local", "", "", "/50%"},
        Case{"local:///50%4", "local", "", "", "/50%4"},
        Case{"local:///50%zz", "local", "", "", "/50%zz"},
        Case{"local:///Two Words", "local", "", "", "/Two Words"},
        Case{"local:///\xE9", "local", "", "", "/\xE9"},
        Case{"pop://joe@x.org@h/x", "pop", "joe@x.org", "h", "/x"},
        Case{"pop://joe@[::1]:110/x", "pop", "joe", "::1", "/x"},
        Case{"pop://joe@[::1/x", "pop", "joe", "::1", "/x"},
        Case{"pop://:@:/x", "pop", "", "", "/x"},
        Case{"pop://h/joe@home", "pop", "", "h", "/joe@home"}));

TEST(LowercaseStringTest, ChangesAsciiLettersAlone) {
    EXPECT_EQ(lowercaseString("LoCaL1-\xC9"), "local1-\xC9");
}

}  // namespace
}  // namespace dorvanel::test
