// SPDX-License-Identifier: MIT
#include <sys/stat.h>

#include <array>

#include "support/Python.h"
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
    EXPECT_FALSE(EnvelopeIndex::open(indexPath, clock));
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

TEST_F(AppleMailTest, AFullTextTableThatATriggerKeepsLosesTheWordsToo) {
    for (const char* module : {"fts5", "fts4", "fts3"}) {
        SCOPED_TRACE(module);
        fs::remove(indexPath);
        sample.addEnvelopeIndex({"local:///Trash", "local:///Inbox"}, 2);
        SampleIndex index(indexPath);
        index.run(std::string("create virtual table words using ") + module +
                  "(subject);"
                  "insert into words (rowid, subject) select ROWID, 'letter' from messages;"
                  "create trigger forget after delete on messages"
                  " begin delete from words where rowid = old.ROWID; end");
        EXPECT_THAT(run(&Collectors::AppleMail20), ElementsAre(label20, statement(1), separator));
        EXPECT_EQ(index.number("select count(*) from messages"), 2);
        EXPECT_EQ(index.number("select count(*) from words where words match 'letter'"), 2);
    }
}

TEST_F(AppleMailTest, ATriggerCannotReachBehindAFullTextTable) {
    sample.addEnvelopeIndex({"local:///Trash"}, 1);
    SampleIndex index(indexPath);
    index.run(
        "create virtual table words using fts5(subject);"
        "create trigger damage after delete on messages begin delete from words_data; end");
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, statement(1), noRemoval,
                            "table words_data may not be modified", separator, separator));
    EXPECT_EQ(index.messages(1), 1);
}

TEST_F(AppleMailTest, ALiteralRowidRemovesWhatTheLoggedStatementWould) {
    // The ROWID, the same as a text in a statement, and the message that the logged one meets.
    const std::vector<std::array<std::string, 3>> literals = {{"0x10", "'0x10'", "16"},
                                                              {"1.5", "'1.5'", "1.5"},
                                                              {"-3", "'-3'", "-3"},
                                                              {"2e2", "'2e2'", "200.0"},
                                                              {"'Post'", "'''Post'''", "'Post'"},
                                                              {"x'4142'", "'x''4142'''", "x'4142'"},
                                                              {" 7", "' 7'", "7"}};
    for (const auto& [rowid, quoted, met] : literals) {
        SCOPED_TRACE(rowid);
        fs::remove(indexPath);
        SampleIndex index(indexPath);
        index.run(
            "create table mailboxes (ROWID text, url text);"
            "create table messages (ROWID integer primary key, mailbox);"
            "insert into mailboxes values (" +
            quoted + ", 'local:///Trash'); insert into messages (mailbox) values (" + met + "), (" +
            quoted + "), (99)");
        EXPECT_THAT(
            run(&Collectors::AppleMail20),
            ElementsAre(label20, "delete from messages where mailbox == " + rowid, separator));
        EXPECT_EQ(index.number("select count(*) from messages where mailbox = " + met), 0);
        EXPECT_EQ(index.number("select count(*) from messages"), 2);
    }
}

TEST_F(AppleMailTest, ARowidWithALineBreakForgesNoLineOfTheLog) {
    SampleIndex index(indexPath);
    index.run(
        "create table mailboxes (ROWID text, url text);"
        "create table messages (ROWID integer primary key, mailbox);"
        "insert into mailboxes values ('1' || char(10) || 'Shred: ~', 'local:///Trash')");
    EXPECT_THAT(
        run(&Collectors::AppleMail20),
        ElementsAre(label20, "delete from messages where mailbox == 1 Shred: ~", separator));
}

TEST_F(AppleMailTest, AnAccountFolderWithALineBreakForgesNoLineOfTheLog) {
    turnOn({"ShredMailTrash"});
    const std::string mail = home / "Library/Mail/";
    fs::create_directories(mail + "POP-a\nShred: b@h");
    const Lines lines = run(&Collectors::AppleMail12);
    ASSERT_EQ(lines.size(), 8U);
    EXPECT_EQ(lines[3], mail + "POP-a Shred: b@h/Deleted Items.mbox");
    EXPECT_EQ(lines[6], mail + "POP-a Shred: b@h/Junk.mbox");
    EXPECT_EQ(shredList.at(0), mail + "POP-a\nShred: b@h/Deleted Items.mbox");
}

TEST_F(AppleMailTest, AViewIsGivenUpWhenItsTimeIsOverHoweverFewStepsItTook) {
    SampleIndex(indexPath).run(
        "create view mailboxes as with recursive n(i) as"
        " (select 1 union all select i + 1 from n where i < 20000)"
        " select i as ROWID, 'local:///Inbox' as url from n");
    EXPECT_THAT(run(&Collectors::AppleMail20), ElementsAre(label20, separator))
        << "these are not too many steps";
    clock.step = std::chrono::milliseconds(100);
    const auto begin = clock.now();
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, noList, "interrupted", separator));
    EXPECT_LE(clock.now() - begin, EnvelopeIndex::readingPatience + std::chrono::seconds(1));
}

TEST_F(AppleMailTest, AViewThatNeverEndsIsGivenUp) {
    SampleIndex(indexPath).run(
        "create view mailboxes as with recursive n(i) as (select 1 union all select i + 1 from n)"
        " select i as ROWID, 'local:///Trash' as url from n where i < 0");
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, noList, "interrupted", separator));
}

TEST_F(AppleMailTest, ATriggerThatNeverEndsDoesNotUndoWhatWasRemovedBefore) {
    sample.addEnvelopeIndex({"local:///Trash", "local:///Trash", "local:///Trash"}, 1);
    SampleIndex index(indexPath);
    index.run(
        "create trigger slow before delete on messages when old.mailbox = 2 begin"
        " select count(*) from (with recursive n(i) as (select 1 union all select i + 1 from n)"
        " select i from n); end");
    clock.step = std::chrono::milliseconds(100);
    const Lines lines = run(&Collectors::AppleMail20);
    ASSERT_GE(lines.size(), 6U);
    EXPECT_EQ(lines[1], statement(1));
    EXPECT_EQ(lines[2], statement(2));
    EXPECT_EQ(lines[3], noRemoval);
    EXPECT_EQ(lines[4], "interrupted");
    EXPECT_EQ(index.messages(1), 0);
    EXPECT_EQ(index.messages(2), 1);
}

TEST_F(AppleMailTest, AViewOfHugeValuesOrOfTooManyTakesNoMemory) {
    SampleIndex(indexPath).run(
        "create view mailboxes as select 1 as ROWID, hex(zeroblob(100000000)) as url");
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, noList, "string or blob too big", separator));
    fs::remove(indexPath);
    SampleIndex(indexPath).run(
        "create view mailboxes as with recursive n(i) as"
        " (select 1 union all select i + 1 from n where i < 100000)"
        " select i as ROWID, hex(zeroblob(100000)) as url from n");
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, noList, "query aborted", separator));
    std::size_t bytes = 0;
    for (const MailboxRow& row : collectors.mailboxRows()) bytes += row.at("url").size();
    EXPECT_LE(bytes, std::size_t{128} * 1024 * 1024);
}

TEST_F(AppleMailTest, APatternThatWouldTakeForEverInOneStepIsRefused) {
    SampleIndex(indexPath).run(
        "create view mailboxes as select 1 as ROWID,"
        " hex(zeroblob(60000)) like '%0%0%0%0%0%0%0%0%0%1' as url");
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, noList, "function not allowed", separator));
}

TEST_F(AppleMailTest, AllMailboxesGoInOneTransaction) {
    sample.addEnvelopeIndex(Lines(50, "local:///Trash"), 1);
    const auto transactions = [&] {
        const std::string counter = readFile(indexPath).substr(24, 4);  // of changes to the file
        unsigned count = 0;
        for (const char byte : counter) count = count << 8 | static_cast<unsigned char>(byte);
        return count;
    };
    const unsigned before = transactions();
    EXPECT_EQ(run(&Collectors::AppleMail20).size(), 52U);
    EXPECT_EQ(transactions() - before, 1U);
    EXPECT_EQ(SampleIndex(indexPath).number("select count(*) from messages"), 0);
}

TEST_F(AppleMailTest, AFailureThatUndoesATransactionLeavesTheOtherMailboxesRemoved) {
    sample.addEnvelopeIndex({"local:///Trash", "local:///Trash", "local:///Trash"}, 2);
    SampleIndex index(indexPath);
    index.run(
        "create trigger keep before delete on messages when old.mailbox = 2"
        " begin select raise(rollback, 'all kept'); end");
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, statement(1), statement(2), noRemoval, "all kept", separator,
                            statement(3), separator));
    EXPECT_EQ(index.messages(1), 0);
    EXPECT_EQ(index.messages(2), 2);
    EXPECT_EQ(index.messages(3), 0);
}

TEST_F(AppleMailTest, ATransactionThatCannotBeCommittedIsToldForEachMailbox) {
    sample.addEnvelopeIndex({"local:///Trash", "local:///Trash"}, 1);
    SampleIndex other(indexPath);
    other.run("begin");
    ASSERT_EQ(other.number("select count(*) from messages"), 2);  // keeps the file from changing
    EXPECT_THAT(run(&Collectors::AppleMail20),
                ElementsAre(label20, statement(1), noRemoval, "database is locked", separator,
                            statement(2), noRemoval, "database is locked", separator, separator));
    EXPECT_EQ(other.number("select count(*) from messages"), 2);
}

TEST_F(AppleMailTest, TheJournalOfTheRemovalIsKeptToBeShredded) {
    {
        SampleIndex index(indexPath);
        index.createTables();
        index.addMailbox("local:///Trash", 500);
        index.run("alter table messages add column text; update messages set text='canary'");
    }
    run(&Collectors::AppleMail20);
    ASSERT_EQ(SampleIndex(indexPath).messages(1), 0);
    auto used = collectors.takeUsedJournals();
    ASSERT_EQ(used.size(), 1U);
    const std::string journal = used[0];
    EXPECT_EQ(journal.find(indexPath + "-journal.dorvanel-"), 0U);
    EXPECT_NE(readFile(journal).find("canary"), std::string::npos);
    EXPECT_THAT(shredList, IsEmpty());

    run(&Collectors::AppleMail20);
    EXPECT_FALSE(fs::exists(indexPath + "-journal"));
    used = collectors.takeUsedJournals();
    EXPECT_THAT(used, testing::Contains(journal)) << "what no run has shredded yet is found again";
    EXPECT_THAT(collectors.takeUsedJournals(), IsEmpty());
}

TEST_F(AppleMailTest, AHotJournalIsRolledBackAndKeptToBeShredded) {
    {
        SampleIndex index(indexPath);
        index.createTables();
        index.addMailbox("local:///Users/joe/Elsewhere.mbox", 500);
        index.run("alter table messages add column text; update messages set text='canary'");
    }
    python(home / "Library/Mail",
           "import os, sqlite3\n"
           "d = sqlite3.connect('Envelope Index', isolation_level=None)\n"
           "d.execute('pragma cache_size=2')\n"
           "d.execute('begin')\n"
           "d.execute(\"update messages set text=hex(zeroblob(50))\")\n"
           "os._exit(0)");
    ASSERT_GT(fs::file_size(indexPath + "-journal"), 0U);
    run(&Collectors::AppleMail20);
    EXPECT_FALSE(fs::exists(indexPath + "-journal"));
    EXPECT_EQ(SampleIndex(indexPath).number("select count(*) from messages where text='canary'"),
              500);
    // The one that was there first; the empty transaction needed none.
    const auto used = collectors.takeUsedJournals();
    ASSERT_EQ(used.size(), 1U);
    EXPECT_NE(readFile(used[0]).find("canary"), std::string::npos);
}

TEST_F(AppleMailTest, ALogIsKeptToBeShreddedByTheLastWhoHasTheIndexOpen) {
    {
        SampleIndex index(indexPath);
        index.createTables();
        index.addMailbox("local:///Trash", 500);
        index.run("pragma journal_mode=wal");
        index.run("alter table messages add column text; update messages set text='canary'");
        run(&Collectors::AppleMail20);
        EXPECT_THAT(collectors.takeUsedJournals(), IsEmpty());
        index.run("insert into messages (mailbox) values (1)");
    }
    run(&Collectors::AppleMail20);
    const auto used = collectors.takeUsedJournals();
    ASSERT_EQ(used.size(), 1U);
    EXPECT_EQ(used[0].find(indexPath + "-wal.dorvanel-"), 0U);
    EXPECT_FALSE(fs::exists(indexPath + "-wal"));
    EXPECT_EQ(SampleIndex(indexPath).messages(1), 0);
}

}  // namespace
}  // namespace dorvanel::test
