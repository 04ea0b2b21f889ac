#include <sys/stat.h>

#include "support/SampleIndex.h"
#include "targets/CollectorTest.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

const std::string label12 = "Apple Mail 1.2 (Jaguar)";
const std::string label20 = "Apple Mail 2.0 (Tiger)";

class AppleMailTest : public CollectorTest {
  protected:
    static std::string statement(long long rowid) {
        return "delete from messages where mailbox == " + std::to_string(rowid);
    }
    /// Sets one byte of the index file.
    void patchIndex(long offset, char value) const {
        std::FILE* file = std::fopen(indexPath.c_str(), "r+b");
        std::fseek(file, offset, SEEK_SET);
        std::fputc(value, file);
        std::fclose(file);
    }
    const std::string indexPath = home / "Library/Mail/Envelope Index";
    const std::string noList =
        "Could not obtain a list of Mailboxes - launch Mail 2 to repair the Envelope Index "
        "database";
    const std::string noRemoval = "Could not remove messages from index database";
};

TEST_F(AppleMailTest, WithoutAPopEntryOnlyTheCacheAndTheJunkLineAreWritten) {
    for (const char* entry : {"IMAP-joe@h", "pop-joe@h", "Mailboxes"}) {
        fs::create_directories(home.path() / "Library/Mail" / entry);
    }
    EXPECT_THAT(run(&Collectors::AppleMail12),
                ElementsAre(label12, "Skip: ~/Library/Caches/Mail",
                            "Skip: ~/Library/Mail/Mailboxes/Junk.mbox", separator));
}

TEST_F(AppleMailTest, WithTheTrashOffEachAccountHasThreeSkipLinesAndTheBareJunkPath) {
    sample.addMailAccount("POP-joe@h");
    sample.addMailAccount("POP:anna@h");
    Lines expected = {label12, "Skip: ~/Library/Caches/Mail",
                      "Skip: ~/Library/Mail/Mailboxes/Junk.mbox"};
    const std::string mail = home / "Library/Mail";
    for (const std::string& entry : platform::defaultFileManager().directoryContentsAtPath(mail)) {
        const std::string account = mail + "/" + entry + "/";
        expected.insert(expected.end(), {"Skip: " + account + "Deleted Items.mbox",
                                         "Skip: " + account + "Deleted Messages.mbox",
                                         "Skip: " + account + "Trash.mbox", account + "Junk.mbox"});
    }
    expected.push_back(separator);
    EXPECT_EQ(run(&Collectors::AppleMail12), expected);
    EXPECT_EQ(expected.size(), 12U);
    EXPECT_THAT(shredList, IsEmpty());
}

TEST_F(AppleMailTest, AnyEntryThatBeginsWithPopIsAnAccountEvenAFile) {
    writeFile(home / "Library/Mail/POPcorn");
    EXPECT_EQ(run(&Collectors::AppleMail12).at(6), home / "Library/Mail/POPcorn/Junk.mbox");
}

TEST_F(AppleMailTest, WithoutAnIndexItSaysSoAndMakesNone) {
    fs::create_directories(home / "Library/Mail");
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20,
                            "Envelope Index does not exist - launch Mail 2 to create an Envelope "
                            "Index database",
                            separator));
    EXPECT_FALSE(fs::exists(indexPath));
}

TEST_F(AppleMailTest, AnIndexThatIsAFolderCannotBeOpened) {
    fs::create_directories(indexPath);
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20,
                            "Could not open Envelope Index - launch Mail 2 to repair the Envelope "
                            "Index database",
                            separator));
    EXPECT_TRUE(fs::is_empty(indexPath));
}

TEST_F(AppleMailTest, AnIndexThatVanishesAfterTheLookIsNotMadeAnew) {
    EXPECT_EQ(EnvelopeIndex::open(indexPath, clock), nullptr);
    EXPECT_FALSE(fs::exists(indexPath));
}

TEST_F(AppleMailTest, AnIndexThatMayNotBeReadCannotBeOpened) {
    sample.addEnvelopeIndex({"local:///Trash"}, 1);
    fs::permissions(indexPath, fs::perms::none);
    if (std::FILE* file = std::fopen(indexPath.c_str(), "rb")) {
        std::fclose(file);
        std::puts("not run: this user may read every file");
        return;
    }
    EXPECT_EQ(run(&Collectors::AppleMail20).at(1),
              "Could not open Envelope Index - launch Mail 2 to repair the Envelope Index "
              "database");
}

TEST_F(AppleMailTest, ATrashMailboxLosesItsMessagesEvenWhenNothingOfItIsShredded) {
    sample.addEnvelopeIndex({"local:///Inbox", "imap://joe@h:143/Trash", "local:///Drafts"}, 3);
    EXPECT_THAT(run(&Collectors::AppleMail20), ElementsAre(label20, statement(2), separator));
    const SampleIndex index(indexPath);
    EXPECT_EQ(index.messages(1), 3);
    EXPECT_EQ(index.messages(2), 0);
    EXPECT_EQ(index.messages(3), 3);
    EXPECT_EQ(index.number("select count(*) from mailboxes"), 3);
    EXPECT_THAT(shredList, IsEmpty());
}

TEST_F(AppleMailTest, APopMailboxWithThePathOfTheRootIsNeverTouched) {
    sample.addEnvelopeIndex({"pop://joe@h/"}, 3);
    shredList = {home / "Library/Mail/POP-joe@h", home / "Library/Mail/POP-joe@h.mbox",
                 home / "Library/Mail/POP-joe@h/.mbox"};
    EXPECT_THAT(run(&Collectors::AppleMail20), ElementsAre(label20, separator));
    EXPECT_EQ(SampleIndex(indexPath).messages(1), 3);
}

TEST_F(AppleMailTest, WhatTheOtherTwoTookLeavesTheIndex) {
    turnOn({"ShredMailTrash", "ShredAppleMailJunk"});
    sample.addMailAccount("POP-joe@x.org@h");
    sample.addEnvelopeIndex({"local:///Junk", "POP://joe%40x.org@h:110/Junk", "local:///Inbox"}, 2);
    run(&Collectors::AppleMail11);
    run(&Collectors::AppleMail12);
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, statement(1), statement(2), separator));
    EXPECT_EQ(SampleIndex(indexPath).number("select count(*) from messages"), 2);
}

TEST_F(AppleMailTest, AnIndexThatIsNoDatabaseHasNoList) {
    writeFile(indexPath, std::string(4096, 'x'));
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, noList, "file is not a database", separator));
    EXPECT_EQ(readFile(indexPath), std::string(4096, 'x'));
}

TEST_F(AppleMailTest, AnEmptyFileHasNoListAndStaysEmpty) {
    writeFile(indexPath);
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, noList, "no such table: mailboxes", separator));
    EXPECT_EQ(fs::file_size(indexPath), 0U);
}

TEST_F(AppleMailTest, ACorruptIndexHasNoList) {
    sample.addEnvelopeIndex(Lines(200, "local:///Trash"), 1);
    const long size = static_cast<long>(fs::file_size(indexPath));
    for (long offset = 4096; offset < size; ++offset) patchIndex(offset, '\x7f');
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, noList, "database disk image is malformed", separator));
}

TEST_F(AppleMailTest, ALockedIndexIsWaitedForTwoSecondsAndThenHasNoList) {
    sample.addEnvelopeIndex({"local:///Trash"}, 1);
    SampleIndex other(indexPath);
    other.run("begin exclusive");
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, noList, "database is locked", separator));
    std::chrono::microseconds waited{0};
    for (const auto sleep : clock.sleeps) waited += sleep;
    EXPECT_EQ(waited, EnvelopeIndex::lockPatience);
}

TEST_F(AppleMailTest, ManyMailboxesOfAnIndexThatIsReadElsewhereWaitTwoSecondsInAll) {
    sample.addEnvelopeIndex(Lines(20, "local:///Trash"), 1);
    SampleIndex other(indexPath);
    other.run("begin immediate");
    const Lines lines = run(&Collectors::AppleMail20);
    ASSERT_EQ(lines.size(), 2U + 20 * 4);
    for (std::size_t i = 0; i < 20; ++i) {
        EXPECT_EQ(lines[1 + 4 * i], statement(static_cast<long long>(i) + 1));
        EXPECT_EQ(lines[2 + 4 * i], noRemoval);
        EXPECT_EQ(lines[3 + 4 * i], "database is locked");
        EXPECT_EQ(lines[4 + 4 * i], separator);
    }
    std::chrono::microseconds waited{0};
    for (const auto sleep : clock.sleeps) waited += sleep;
    EXPECT_EQ(waited, EnvelopeIndex::lockPatience);
    other.run("rollback");
    EXPECT_EQ(other.number("select count(*) from messages"), 20);
}

TEST_F(AppleMailTest, ALockThatIsLetGoInTimeDelaysAndChangesNothingElse) {
    sample.addEnvelopeIndex({"local:///Trash"}, 2);
    SampleIndex other(indexPath);
    other.run("begin exclusive");
    class LettingGo final : public platform::Clock {
      public:
        explicit LettingGo(SampleIndex& lock) : lock_(lock) {}
        std::int64_t time() const override { return 0; }
        std::chrono::steady_clock::time_point now() const override { return {}; }
        void usleep(std::chrono::microseconds) override {
            if (++sleeps == 3) lock_.run("rollback");
        }
        int sleeps = 0;

      private:
        SampleIndex& lock_;
    } lettingGo(other);
    Collectors patient(shredList, preferences, platform::defaultFileManager(), defaults, lettingGo);
    patient.AppleMail20();
    EXPECT_THAT(log.lines(), ElementsAre(label20, statement(1), separator));
    EXPECT_EQ(lettingGo.sleeps, 3);
    EXPECT_EQ(other.messages(1), 0);
}

TEST_F(AppleMailTest, AReadOnlyIndexKeepsItsMessagesAndTheRunGoesOn) {
    sample.addEnvelopeIndex({"local:///Trash", "local:///Deleted%20Items"}, 2);
    // A write version above 2 in the file's header makes SQLite treat it as read-only, also for a
    // user whom no permission stops.
    patchIndex(18, 3);
    const std::string readOnly = "attempt to write a readonly database";
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, statement(1), noRemoval, readOnly, separator, statement(2),
                            noRemoval, readOnly, separator, separator));
    patchIndex(18, 1);
    EXPECT_EQ(SampleIndex(indexPath).number("select count(*) from messages"), 4);
}

TEST_F(AppleMailTest, AFailedRemovalLeavesTheOthersDone) {
    sample.addEnvelopeIndex({"local:///Trash", "local:///Trash", "local:///Trash"}, 2);
    SampleIndex index(indexPath);
    index.run(
        "create trigger keep before delete on messages when old.mailbox = 2"
        " begin select raise(abort, 'kept'); end");
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, statement(1), statement(2), noRemoval, "kept", separator,
                            statement(3), separator));
    EXPECT_EQ(index.messages(1), 0);
    EXPECT_EQ(index.messages(2), 2);
    EXPECT_EQ(index.messages(3), 0);
}

TEST_F(AppleMailTest, AnIndexWithoutMessagesTableFailsForEachMailbox) {
    SampleIndex(indexPath).run(
        "create table mailboxes (ROWID integer primary key, url text);"
        "insert into mailboxes (url) values ('local:///Trash')");
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, statement(1), noRemoval, "no such table: messages", separator,
                            separator));
}

TEST_F(AppleMailTest, ARowidThatCarriesSqlIsLoggedAsItIsAndNeverRun) {
    const Lines hostile = {"1; drop table messages",
                           "1 or 1=1",
                           "(select ROWID from mailboxes)",
                           "mailbox",
                           "1--",
                           "'x'",
                           "null or 1"};
    SampleIndex index(indexPath);
    index.run(
        "create table mailboxes (ROWID text, url text);"
        "create table messages (ROWID integer primary key, mailbox integer);"
        "insert into messages (mailbox) values (1), (2), (3)");
    Lines expected = {label20};
    for (const std::string& rowid : hostile) {
        std::string literal = rowid;
        if (literal == "'x'") literal = "''x''";
        index.run("insert into mailboxes values ('" + literal + "', 'local:///Trash')");
        expected.push_back("delete from messages where mailbox == " + rowid);
    }
    expected.push_back(separator);
    EXPECT_EQ(run(&Collectors::AppleMail20), expected);
    EXPECT_EQ(index.number("select count(*) from messages"), 3);
}

TEST_F(AppleMailTest, ARowidInAColumnWithoutATypeStillMeetsItsNumber) {
    SampleIndex index(indexPath);
    index.run(
        "create table mailboxes (ROWID, url);"
        "create table messages (ROWID integer primary key, mailbox);"
        "insert into messages (mailbox) values (7), (8);"
        "insert into mailboxes values (7, 'local:///Trash')");
    EXPECT_THAT(run(&Collectors::AppleMail20), ElementsAre(label20, statement(7), separator));
    EXPECT_EQ(index.number("select mailbox from messages"), 8);
}

TEST_F(AppleMailTest, NullColumnsAreReadAsEmptyTextsAndRemoveNothing) {
    SampleIndex index(indexPath);
    index.run(
        "create table mailboxes (ROWID integer, url text);"
        "create table messages (ROWID integer primary key, mailbox);"
        "insert into messages (mailbox) values (1), (null), ('');"
        "insert into mailboxes values (1, null), (null, 'local:///Trash')");
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, "delete from messages where mailbox == ", separator));
    EXPECT_EQ(index.number("select count(*) from messages"), 3);
}

TEST_F(AppleMailTest, TheRowsAreReadAfreshInEveryRunAndKeptUntilTheNext) {
    sample.addEnvelopeIndex({"local:///Inbox", "local:///Junk"}, 0);
    run(&Collectors::AppleMail20);
    run(&Collectors::AppleMail20);
    ASSERT_EQ(collectors.mailboxRows().size(), 2U);
    EXPECT_EQ(collectors.mailboxRows()[1],
              (MailboxRow{{"ROWID", "2"}, {"url", "local:///Junk"}, {"unread_count", "0"}}));
    fs::remove(indexPath);
    run(&Collectors::AppleMail20);
    EXPECT_EQ(collectors.mailboxRows().size(), 2U);
}

TEST_F(AppleMailTest, TheRowCallbackAddsOneRowAndLetsTheQueryGoOn) {
    MailboxRows rows;
    char name1[] = "ROWID", name2[] = "url", value1[] = "5";
    char* names[] = {name1, name2};
    char* values[] = {value1, nullptr};
    EXPECT_EQ(sqlite_mb_callback(&rows, 2, values, names), 0);
    EXPECT_EQ(sqlite_mb_callback(&rows, 0, nullptr, nullptr), 0);
    EXPECT_THAT(rows, ElementsAre(MailboxRow{{"ROWID", "5"}, {"url", ""}}, MailboxRow{}));
}

}  // namespace
}  // namespace dorvanel::test
