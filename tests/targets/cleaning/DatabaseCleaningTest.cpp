// SPDX-License-Identifier: MIT
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "targets/cleaning/CleaningTest.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;
using cleaning::Fault;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class DatabaseCleaningTest : public CleaningTest {
  protected:
    /// A database of a table t(x) with one row.
    void makeOneTable(const std::string& more = {}) const {
        SampleDatabase(path).run("CREATE TABLE t (x); INSERT INTO t VALUES (1); " + more);
    }
    /// Expects `request` to be refused for this reason, and nothing to be touched.
    void expectRefused(const cleaning::DatabaseRequest& request, Fault fault,
                       const std::string& reason) {
        const std::string before = printOf(folder.path());
        auto prepared = cleaner.prepareDatabase(request, {});
        ASSERT_FALSE(prepared.ok());
        EXPECT_EQ(prepared.trouble().fault, fault) << told(prepared);
        EXPECT_THAT(told(prepared), HasSubstr(reason));
        EXPECT_EQ(prepared.trouble().error.path, request.path);
        EXPECT_EQ(printOf(folder.path()), before);
    }
    void expectRefused(Fault fault, const std::string& reason) {
        expectRefused(requestOf(path, "DELETE FROM t"), fault, reason);
    }
};

TEST_F(DatabaseCleaningTest, TheShippedStatementsTakeTheHistoryAndLeaveTheBookmarks) {
    makeHistory(path);
    const std::string bookmarks = SampleDatabase(path).text("SELECT * FROM moz_bookmarks");
    EXPECT_EQ(clean(historyRequest(path)), "");
    SampleDatabase places(path);
    EXPECT_EQ(places.text("SELECT * FROM moz_bookmarks"), bookmarks);
    EXPECT_EQ(places.text("SELECT id, title, visit_count, foreign_count FROM moz_places"),
              "1,Kvwkept title 1,0,1\n2,Kvwkept title 2,0,2\n3,Kvwkept title 3,0,1");
    EXPECT_EQ(places.text("SELECT count(*) FROM moz_historyvisits"), "0");
    EXPECT_EQ(places.text("SELECT host FROM moz_origins"), "Kvwkept.example");
    EXPECT_EQ(places.text("SELECT content FROM moz_annos"), "Kvwkept note");
    EXPECT_EQ(places.text("SELECT count(*) FROM moz_places_extra"), "0");
    EXPECT_THAT(holding(folder.path(), trace), IsEmpty());
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("places.sqlite"));
}

TEST_F(DatabaseCleaningTest, TheCopyIsCompactedAndKeepsLayoutNumbersAndMode) {
    makeHistory(path);
    chmod(path.c_str(), 0640);
    EXPECT_EQ(clean(historyRequest(path)), "");
    SampleDatabase places(path);
    EXPECT_EQ(places.text("PRAGMA freelist_count"), "0");
    EXPECT_EQ(places.text("PRAGMA page_size"), "32768");
    EXPECT_EQ(places.text("PRAGMA auto_vacuum"), "2");
    EXPECT_EQ(places.text("PRAGMA user_version"), "77");
    EXPECT_EQ(places.text("PRAGMA application_id"), "1234567");
    EXPECT_EQ(places.text("PRAGMA journal_mode"), "delete");
    struct stat found {};
    stat(path.c_str(), &found);
    EXPECT_EQ(found.st_mode & 07777U, 0640U);
    EXPECT_EQ(found.st_uid, geteuid());
}

TEST_F(DatabaseCleaningTest, CountsAreOfRowsThatWereRemovedCascadesAmongThem) {
    SampleDatabase(path).run(
        "CREATE TABLE p (id INTEGER PRIMARY KEY, x); "
        "CREATE TABLE c (p REFERENCES p(id) ON DELETE CASCADE);"
        "INSERT INTO p VALUES (1, 1), (2, 2), (3, 3); INSERT INTO c VALUES (1), (1), (2);");
    cleaning::DatabaseRequest request = requestOf(path, "DELETE FROM p WHERE id = 1");
    request.steps[0].run.push_back({{}, "UPDATE p SET x = 5"});
    request.steps.push_back({"downloads", {{{}, "delete from c"}}, {}});
    const auto counted = cleaner.countRows(request, {});
    ASSERT_TRUE(counted.ok()) << told(counted);
    EXPECT_THAT(counted.value(), ElementsAre(3, 1));
    auto prepared = cleaner.prepareDatabase(request, {});
    ASSERT_TRUE(prepared.ok()) << told(prepared);
    EXPECT_THAT(prepared.value()->counts(), ElementsAre(3, 1));
    EXPECT_EQ(prepared.value()->path(), path);
    EXPECT_EQ(commit(prepared), "");
    EXPECT_EQ(SampleDatabase(path).text("SELECT * FROM p"), "2,5\n3,5");
}

TEST_F(DatabaseCleaningTest, CountingTouchesNothing) {
    for (const Left left : {Left::closed, Left::withLog, Left::withHotJournal}) {
        const TemporaryFolder place;
        makeHistory(place / "places.sqlite", left);
        const std::string before = printOf(place.path());
        const auto counted = cleaner.countRows(historyRequest(place / "places.sqlite"), {});
        ASSERT_TRUE(counted.ok()) << told(counted);
        EXPECT_GT(counted.value().at(0), 600U);
        EXPECT_EQ(printOf(place.path()), before);
    }
}

TEST_F(DatabaseCleaningTest, PreparingChangesNothingAndItsEndTakesTheNewFileAway) {
    for (const Left left : {Left::closed, Left::withLog, Left::withHotJournal}) {
        const TemporaryFolder place;
        makeHistory(place / "places.sqlite", left);
        const std::string before = printOf(place.path());
        {
            auto prepared = cleaner.prepareDatabase(historyRequest(place / "places.sqlite"), {});
            ASSERT_TRUE(prepared.ok()) << told(prepared);
            EXPECT_EQ(cleaning::Cleaner::leftovers(place / "places.sqlite").size(), 1U);
        }
        EXPECT_EQ(printOf(place.path()), before);
    }
}

TEST_F(DatabaseCleaningTest, WhatIsCommittedIsHandedBackToBeShredded) {
    makeHistory(path, Left::withLog);
    auto prepared = cleaner.prepareDatabase(historyRequest(path), {});
    ASSERT_TRUE(prepared.ok()) << told(prepared);
    std::vector<std::string> aside;
    EXPECT_FALSE(prepared.value()->commit([] { return true; }, aside));
    // The log, its index, and last the database itself.
    ASSERT_EQ(aside.size(), 3U);
    EXPECT_THAT(aside[0], HasSubstr("/places.sqlite-wal.dorvanel-"));
    EXPECT_THAT(aside[1], HasSubstr("/places.sqlite-shm.dorvanel-"));
    EXPECT_THAT(aside[2], HasSubstr("/places.sqlite.dorvanel-"));
    EXPECT_EQ(holding(folder.path(), trace).size(), 2U);
    // Nobody gets at the old one until it has been shredded.
    EXPECT_ANY_THROW(SampleDatabase(aside[2]).run("SELECT count(*) FROM moz_places"));
    prepared.value().reset();
    EXPECT_EQ(SampleDatabase(aside[2]).text("SELECT count(*) FROM moz_places WHERE guid='late'"),
              "1");
}

TEST_F(DatabaseCleaningTest, WhatWaitsInALogIsTakenInFirst) {
    makeHistory(path, Left::withLog);
    ASSERT_GT(fs::file_size(path + "-wal"), 0U);
    EXPECT_EQ(clean(historyRequest(path)), "");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("places.sqlite"));
    EXPECT_THAT(holding(folder.path(), trace), IsEmpty());
    SampleDatabase places(path);
    EXPECT_EQ(places.text("SELECT title FROM moz_bookmarks WHERE guid='b3'"), "Kvwkept late");
    EXPECT_EQ(places.text("PRAGMA journal_mode"), "wal");
}

TEST_F(DatabaseCleaningTest, AHotJournalIsRolledBackFirst) {
    makeHistory(path, Left::withHotJournal);
    ASSERT_GT(fs::file_size(path + "-journal"), 0U);
    ASSERT_THAT(holding(folder.path(), "half done"), testing::Contains("places.sqlite"));
    EXPECT_EQ(clean(historyRequest(path)), "");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("places.sqlite"));
    EXPECT_THAT(holding(folder.path(), trace), IsEmpty());
    EXPECT_THAT(holding(folder.path(), "half done"), IsEmpty());
    expectWholeHistory(path, "after the journal was rolled back");
}

TEST_F(DatabaseCleaningTest, SeveralKindsGoInOneTransaction) {
    makeHistory(path);
    cleaning::DatabaseRequest request = historyRequest(path);
    request.steps.insert(request.steps.begin(),
                         shippedStep("firefox", "downloads", "places.sqlite"));
    auto prepared = cleaner.prepareDatabase(request, {});
    ASSERT_TRUE(prepared.ok()) << told(prepared);
    ASSERT_EQ(prepared.value()->counts().size(), 2U);
    EXPECT_GT(prepared.value()->counts()[0], 60U);
    EXPECT_GT(prepared.value()->counts()[1], 300U);
    EXPECT_EQ(commit(prepared), "");
    expectWholeHistory(path, "after both");
    EXPECT_THAT(holding(folder.path(), trace), IsEmpty());
}

TEST_F(DatabaseCleaningTest, DownloadsAloneLeaveTheOtherVisits) {
    makeHistory(path);
    EXPECT_EQ(clean({path, {}, {shippedStep("firefox", "downloads", "places.sqlite")}}), "");
    SampleDatabase places(path);
    EXPECT_EQ(places.text("SELECT count(*) FROM moz_historyvisits WHERE visit_type=7"), "0");
    EXPECT_EQ(places.text("SELECT count(*) FROM moz_historyvisits"), "270");
    EXPECT_EQ(places.text("SELECT count(*) FROM moz_annos WHERE anno_attribute_id < 3"), "0");
    EXPECT_EQ(places.text("SELECT count(*) FROM moz_bookmarks"), "7");
}

TEST_F(DatabaseCleaningTest, StatementsOfMissingTablesAndColumnsArePassedOver) {
    makeOneTable();
    cleaning::DatabaseRequest request{path, {}, {{"history", {}, {}}}};
    request.steps[0].run = {{{"gone"}, "DELETE FROM gone"},
                            {{"t", "t.y"}, "UPDATE t SET y = 1"},
                            {{"t.x", "T.X"}, "DELETE FROM t"}};
    EXPECT_EQ(clean(request), "");
    EXPECT_EQ(SampleDatabase(path).text("SELECT count(*) FROM t"), "0");
}

TEST_F(DatabaseCleaningTest, AStatementThatFailsLeavesTheDatabaseAsItWas) {
    makeOneTable("CREATE TABLE c (x CHECK (x > 0)); INSERT INTO c VALUES (1);");
    for (const std::string sql :
         {"DELETE FROM gone", "UPDATE c SET x = 0", "DELETE FROM t; DELETE FROM c", "", "DELETE"}) {
        cleaning::DatabaseRequest request = requestOf(path, "DELETE FROM t");
        request.steps[0].run.push_back({{}, sql});
        const std::string before = printOf(folder.path());
        EXPECT_NE(clean(request), "") << sql;
        EXPECT_EQ(printOf(folder.path()), before) << sql;
    }
}

TEST_F(DatabaseCleaningTest, StatementsThatDoMoreThanRemoveAndChangeAreRefused) {
    makeOneTable();
    for (const std::string sql : {"DROP TABLE t", "ATTACH 'other' AS o", "PRAGMA user_version=5",
                                  "CREATE TABLE u (x)", "VACUUM", "ALTER TABLE t ADD y",
                                  "CREATE TEMP TRIGGER r AFTER DELETE ON t BEGIN SELECT 1; END",
                                  "SELECT load_extension('x')", "DETACH main", "COMMIT"}) {
        expectRefused(requestOf(path, sql), Fault::failed, "");
    }
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("places.sqlite"));
}

TEST_F(DatabaseCleaningTest, MoreLostThanAskedForIsLeftAsItWas) {
    makeOneTable(
        "CREATE TABLE k (x); INSERT INTO k VALUES (NULL), (''), ('a,b');"
        "CREATE TRIGGER r AFTER DELETE ON t BEGIN UPDATE k SET x='' WHERE x IS NULL; END;");
    cleaning::DatabaseRequest request = requestOf(path, "DELETE FROM t");
    request.steps[0].keep = {"SELECT count(*) FROM k"};
    EXPECT_EQ(told(cleaner.prepareDatabase(request, {})), "");
    request.steps[0].keep.emplace_back("SELECT x FROM k");
    expectRefused(request, Fault::failed, "more would be lost than was asked for");
}

TEST_F(DatabaseCleaningTest, AQueryForATableThatIsNotThereIsAnsweredByThat) {
    makeOneTable();
    cleaning::DatabaseRequest request = requestOf(path, "DELETE FROM t");
    request.steps[0].keep = {"SELECT count(*) FROM other", "SELECT y FROM t AS a WHERE a.z = 1"};
    EXPECT_EQ(clean(request), "");
    EXPECT_EQ(SampleDatabase(path).text("SELECT count(*) FROM t"), "0");
}

TEST_F(DatabaseCleaningTest, AQueryThatCannotBeAskedIsTrouble) {
    makeOneTable();
    for (const std::string query : {"DELETE FROM t", "SELECT", "SELECT wrong(1)"}) {
        cleaning::DatabaseRequest request = requestOf(path, "UPDATE t SET x = 2");
        request.steps[0].keep = {query};
        expectRefused(request, Fault::failed, "");
    }
}

TEST_F(DatabaseCleaningTest, ReferencesMayNotBeBrokenButThoseThatWereMayStay) {
    SampleDatabase(path).run(
        "CREATE TABLE t (x); INSERT INTO t VALUES (1);"
        "CREATE TABLE p (id INTEGER PRIMARY KEY); CREATE TABLE c (p REFERENCES p(id));"
        "INSERT INTO p VALUES (1); INSERT INTO c VALUES (1), (9);");
    expectRefused(requestOf(path, "DELETE FROM p"), Fault::failed, "FOREIGN KEY");
    EXPECT_EQ(clean(requestOf(path, "DELETE FROM t")), "");
    EXPECT_EQ(SampleDatabase(path).text("SELECT * FROM c"), "1\n9");
}

TEST_F(DatabaseCleaningTest, SamplesThatTheLibraryTookOfRowsGoToo) {
    makeOneTable("CREATE INDEX i ON t(x); ANALYZE;");
    SampleDatabase(path).run(
        "PRAGMA writable_schema=ON; CREATE TABLE s (tbl, idx, neq, nlt, ndlt, sample);"
        "UPDATE sqlite_schema SET name='sqlite_stat4', tbl_name='sqlite_stat4', "
        "sql=replace(sql, 'TABLE s', 'TABLE sqlite_stat4') WHERE name='s';"
        "PRAGMA writable_schema=RESET;"
        "INSERT INTO sqlite_stat4 VALUES ('t', 'i', 1, 1, 1, 'Zqxtrace')");
    ASSERT_THAT(holding(folder.path(), trace), ElementsAre("places.sqlite"));
    EXPECT_EQ(clean(requestOf(path, "DELETE FROM t")), "");
    EXPECT_THAT(holding(folder.path(), trace), IsEmpty());
}

TEST_F(DatabaseCleaningTest, NoPageOfTheCopyHoldsWhatWasRemoved) {
    // Rows of all sizes, so that pages stay half empty and long ones run over.
    SampleDatabase(path).run(
        "PRAGMA page_size=1024; CREATE TABLE t (x, y); CREATE INDEX i ON t(y);"
        "WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM c WHERE n < 3000) "
        "INSERT INTO t SELECT CASE WHEN n % 3 THEN 1 ELSE 0 END, CASE WHEN n % 3 THEN "
        "substr(replace(hex(zeroblob(n % 900)), '0000', 'Zqxtrace'), 1, n % 1700) ELSE "
        "'Kvwkept' || n || hex(zeroblob(n % 500)) END FROM c;");
    ASSERT_THAT(holding(folder.path(), trace), ElementsAre("places.sqlite"));
    EXPECT_EQ(clean(requestOf(path, "DELETE FROM t WHERE x = 1")), "");
    EXPECT_THAT(holding(folder.path(), "Zqxt"), IsEmpty());
    EXPECT_EQ(SampleDatabase(path).text("SELECT count(*) FROM t"), "1000");
}

TEST_F(DatabaseCleaningTest, IconsAreTakenByWhatTheHistoryWillHave) {
    makeHistory(path);
    const std::string icons = folder / "favicons.sqlite";
    {
        SampleDatabase database(icons);
        makeFavicons(database, trace, kept);
    }
    cleaning::DatabaseRequest request =
        requestOf(icons,
                  "DELETE FROM moz_pages_w_icons WHERE page_url NOT IN "
                  "(SELECT url FROM p.moz_places)");
    request.steps[0].run.push_back(
        {{}, "DELETE FROM moz_icons WHERE id NOT IN (SELECT icon_id FROM moz_icons_to_pages)"});
    request.attach = {{"p", path}};
    const auto now = cleaner.countRows(request, {});
    ASSERT_TRUE(now.ok()) << told(now);
    EXPECT_THAT(now.value(), ElementsAre(0));

    auto history = cleaner.prepareDatabase(historyRequest(path), {});
    ASSERT_TRUE(history.ok()) << told(history);
    const auto then = cleaner.countRows(request, {});
    ASSERT_TRUE(then.ok()) << told(then);
    // Two pages and what belongs to them, and both of their icons.
    EXPECT_THAT(then.value(), ElementsAre(7));
    auto prepared = cleaner.prepareDatabase(request, {});
    EXPECT_EQ(commit(history), "");
    EXPECT_EQ(commit(prepared), "");
    EXPECT_EQ(SampleDatabase(icons).text("SELECT id FROM moz_icons"), "1\n2");
    EXPECT_THAT(holding(folder.path(), trace), IsEmpty());

    // Once it is in its place, it is read there.
    EXPECT_EQ(told(cleaner.prepareDatabase(request, {})), "");
}

TEST_F(DatabaseCleaningTest, AnAttachedDatabaseIsReadOnlyAndMustBeThere) {
    makeOneTable();
    const std::string other = folder / "other.sqlite";
    SampleDatabase(other).run("CREATE TABLE u (x); INSERT INTO u VALUES (1)");
    cleaning::DatabaseRequest request = requestOf(path, "DELETE FROM p.u");
    request.attach = {{"p", other}};
    expectRefused(request, Fault::failed, "");
    request.steps[0].run = {{{"p.u"}, "DELETE FROM t WHERE x IN (SELECT x FROM p.u)"},
                            {{"p.u.x", "p.gone"}, "DELETE FROM wrong"},
                            {{"p.u.gone"}, "DELETE FROM wrong"}};
    request.attach = {{"p", folder / "gone"}};
    expectRefused(request, Fault::unreadable, "attach");
    writeFile(folder / "gone", std::string(4096, 'x'));
    expectRefused(request, Fault::corrupt, "not a database");
    request.attach = {{"p", other}};
    EXPECT_EQ(clean(request), "");
    EXPECT_EQ(SampleDatabase(path).text("SELECT count(*) FROM t"), "0");
}

TEST_F(DatabaseCleaningTest, ADatabaseWithoutAnythingStaysOne) {
    writeFile(path);
    EXPECT_EQ(clean(historyRequest(path)), "");
    EXPECT_EQ(SampleDatabase(path).text("SELECT count(*) FROM sqlite_schema"), "0");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("places.sqlite"));
}

TEST_F(DatabaseCleaningTest, WhatIsNoDatabaseIsLeftAsItIs) {
    writeFile(path, "This is not a database, though it is long enough to be the start of one.\n" +
                        std::string(8192, 'x'));
    expectRefused(Fault::corrupt, "not a database");
    writeFile(path, "short");
    expectRefused(Fault::corrupt, "not a database");
}

TEST_F(DatabaseCleaningTest, DamageAtAnyPlaceIsTold) {
    makeHistory(path);
    const std::string whole = readFile(path);
    // Page by page, behind the header: where it begins, its cells and in the middle.
    for (std::size_t page = 0; page < whole.size() / 32768; ++page) {
        std::string damaged = whole;
        const std::size_t start = page * 32768 + (page == 0 ? 100 : 0);
        damaged.replace(start, 12, std::string(12, '\xff'));
        writeFile(path, damaged);
        expectRefused(historyRequest(path), Fault::corrupt, "");
    }
}

TEST_F(DatabaseCleaningTest, ATruncatedDatabaseIsTold) {
    makeHistory(path);
    for (const std::uintmax_t size : {200U, 32768U, 100'000U}) {
        fs::resize_file(path, size);
        expectRefused(historyRequest(path), Fault::corrupt, "");
        makeHistory(folder / "again");
        fs::rename(folder / "again", path);
    }
}

TEST_F(DatabaseCleaningTest, ASchemaThatCannotBeReadIsTold) {
    makeOneTable();
    SampleDatabase(path).run(
        "PRAGMA writable_schema=ON; UPDATE sqlite_schema SET "
        "sql='CREATE TABLE t (x BROKEN (((' WHERE name='t'");
    expectRefused(Fault::corrupt, "malformed");
}

TEST_F(DatabaseCleaningTest, AFormatOfALaterTimeIsTold) {
    makeOneTable();
    std::string bytes = readFile(path);
    bytes[18] = 3;
    writeFile(path, bytes);
    expectRefused(Fault::failed, "newer SQLite");
    bytes[19] = 3;
    writeFile(path, bytes);
    expectRefused(Fault::failed, "newer SQLite");
    bytes[18] = bytes[19] = 1;
    bytes[47] = 9;  // the schema's format
    writeFile(path, bytes);
    expectRefused(Fault::failed, "unsupported file format");
}

TEST_F(DatabaseCleaningTest, WhatIsNotAPlainFileOfThisUserIsLeftAsItIs) {
    expectRefused(Fault::unreadable, "No such file");
    makeOneTable();
    fs::create_hard_link(path, folder / "other");
    expectRefused(Fault::failed, "has other names too");
    fs::remove(folder / "other");
    chmod(path.c_str(), 0400);
    expectRefused(Fault::unreadable, "protected from writing");
    chmod(path.c_str(), 0600);
    fs::rename(path, folder / "real");
    fs::create_symlink("real", path);
    expectRefused(Fault::failed, "is a link");
    fs::remove(path);
    fs::create_directory(path);
    expectRefused(Fault::failed, "is not a regular file");
    fs::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    expectRefused(Fault::failed, "is not a regular file");
    fs::remove(path);
    fs::rename(folder / "real", path);
    fs::create_symlink("places.sqlite", path + "-wal");
    expectRefused(Fault::failed, "places.sqlite-wal: is a link");
}

TEST_F(DatabaseCleaningTest, AFileOfAnotherUserIsLeftAsItIs) {
    makeOneTable();
    if (geteuid() != 0) GTEST_SKIP() << "only root can give files away";
    ASSERT_EQ(chown(path.c_str(), 12345, static_cast<gid_t>(-1)), 0);
    expectRefused(Fault::failed, "belongs to another user");
}

TEST_F(DatabaseCleaningTest, AHostileTriggerIsStoppedByTime) {
    makeOneTable(
        "CREATE TRIGGER r AFTER DELETE ON t BEGIN INSERT INTO t SELECT count(*) FROM ("
        "WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM c) SELECT n FROM c); "
        "END;");
    clock.step = std::chrono::seconds(1);
    expectRefused(Fault::failed, "takes too long");
    clock.step = {};
    int asked = 0;
    auto prepared = cleaner.prepareDatabase(requestOf(path, "DELETE FROM t"),
                                            [&asked] { return ++asked > 10; });
    EXPECT_THAT(told(prepared), HasSubstr("was stopped"));
}

TEST_F(DatabaseCleaningTest, AHostileTriggerIsStoppedByMemory) {
    makeOneTable(
        "CREATE TRIGGER r AFTER DELETE ON t BEGIN INSERT INTO t SELECT "
        "zeroblob(67000000) FROM (WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 "
        "FROM c LIMIT 100) SELECT n FROM c); END;");
    expectRefused(Fault::failed, "is too large");
}

TEST_F(DatabaseCleaningTest, FunctionsThatTakeForEverAreRefused) {
    makeOneTable(
        "CREATE TRIGGER r AFTER DELETE ON t BEGIN SELECT instr(hex(zeroblob(9000000)), "
        "hex(zeroblob(4000000)) || '1'); END;");
    expectRefused(Fault::failed, "function not allowed");
}

TEST_F(DatabaseCleaningTest, AWholeDiskIsToldAndLeavesNothing) {
    makeHistory(path);
    for (const std::uint64_t room : {0U, 1U, 40'000U, 200'000U}) {
        calls.room = room;
        auto prepared = cleaner.prepareDatabase(historyRequest(path), {});
        ASSERT_FALSE(prepared.ok()) << room;
        EXPECT_THAT(told(prepared), HasSubstr("No space left")) << room;
        calls.room = 1U << 30;
        const auto left = cleaning::Cleaner::leftovers(path);
        EXPECT_EQ(left.size() + 1, namesIn(folder.path()).size());
        shred(left);
        expectWholeHistory(path, "with a full disk");
    }
}

}  // namespace
}  // namespace dorvanel::test
