// SPDX-License-Identifier: MIT
#include "targets/MailboxSelection.h"

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

class MailboxSelectionTest : public ::testing::Test {
  protected:
    bool selected(const std::string& url, const std::string& listed = "/other") const {
        return mailboxIsSelected(parseMailboxUrl(url), {listed});
    }
    MailboxCandidates candidates(const std::string& url) const {
        return mailboxCandidates(parseMailboxUrl(url));
    }

    TemporaryHome home;
};

TEST_F(MailboxSelectionTest, ALocalMailboxHasOneCandidate) {
    EXPECT_EQ(candidates("LOCAL:///A/B%20C").first, home / "Library/Mail/Mailboxes/A/B C.mbox");
    EXPECT_EQ(candidates("LOCAL:///A/B%20C").second, std::nullopt);
}

TEST_F(MailboxSelectionTest, APopMailboxHasTwoCandidates) {
    const MailboxCandidates found = candidates("Pop://joe%40x.org@h:110/INBOX");
    EXPECT_EQ(found.first, home / "Library/Mail/POP-joe@x.org@h/INBOX.mbox");
    EXPECT_EQ(found.second, home / "Library/Mail/POP:joe@x.org@h/INBOX.mbox");
}

TEST_F(MailboxSelectionTest, OtherSchemesHaveNoCandidate) {
    for (const char* url : {"imap://joe@h/INBOX", "/INBOX", "local:x", "pop:x"}) {
        EXPECT_EQ(candidates(url).first, std::nullopt) << url;
        EXPECT_EQ(candidates(url).second, std::nullopt) << url;
    }
}

TEST_F(MailboxSelectionTest, APopMailboxWithThePathOfTheRootIsNeverSelected) {
    EXPECT_EQ(candidates("pop://joe@h/").first, std::nullopt);
    EXPECT_EQ(candidates("pop://joe@h/").second, std::nullopt);
    EXPECT_FALSE(selected("pop://joe@h/", home / "Library/Mail/POP-joe@h"));
    EXPECT_FALSE(selected("pop://joe@h/", home / "Library/Mail/POP-joe@h.mbox"));
}

TEST_F(MailboxSelectionTest, EitherCandidateInTheListSelects) {
    EXPECT_TRUE(selected("local:///Junk", home / "Library/Mail/Mailboxes/Junk.mbox"));
    EXPECT_TRUE(selected("pop://joe@h/Junk", home / "Library/Mail/POP-joe@h/Junk.mbox"));
    EXPECT_TRUE(selected("pop://joe@h/Junk", home / "Library/Mail/POP:joe@h/Junk.mbox"));
    EXPECT_FALSE(selected("pop://joe@h/Junk", home / "Library/Mail/POP joe@h/Junk.mbox"));
    EXPECT_FALSE(selected("local:///junk", home / "Library/Mail/Mailboxes/Junk.mbox"));
}

TEST_F(MailboxSelectionTest, TheThreeTrashNamesSelectAMailboxOfAnyScheme) {
    for (const char* path : {"/Deleted%20Messages", "/Deleted%20Items", "/Trash"}) {
        for (const char* scheme : {"local://", "pop://joe@h", "imap://joe@h", "xyz://h", ""}) {
            EXPECT_TRUE(selected(std::string(scheme) + path)) << scheme << path;
        }
    }
}

TEST_F(MailboxSelectionTest, OnlyTheExactTrashNamesSelect) {
    for (const char* path : {"/trash", "/Trash/Old", "/A/Trash", "/Trash%20", "/Deleted", "/"}) {
        EXPECT_FALSE(selected(std::string("imap://joe@h") + path)) << path;
    }
}

}  // namespace
}  // namespace dorvanel::test
