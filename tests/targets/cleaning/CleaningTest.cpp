// SPDX-License-Identifier: MIT
#include "targets/cleaning/CleaningTest.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "apps/catalogue/EntryReader.h"
#include "support/Python.h"

namespace dorvanel::test {

namespace fs = std::filesystem;
using cleaning::Cleaned;
using cleaning::DatabaseRequest;
using cleaning::PreparedFile;
using cleaning::Step;

Step shippedStep(const std::string& application, const std::string& kind,
                 const std::string& database) {
    const std::string file = SHIPPED "/" + application + ".toml";
    const auto read = catalogue::readEntry(application, readFile(file));
    if (!read.entry) throw std::runtime_error(file + ": cannot be read");
    for (const auto& traces : read.entry->traces) {
        for (const auto& clean : traces.clean) {
            if (traces.kind == kind && clean.database.ends_with("/" + database)) {
                return {kind, clean.run, clean.keep};
            }
        }
    }
    throw std::runtime_error(file + ": does not clean " + database + " of " + kind);
}

void CleaningTest::makeHistory(const std::string& path, Left left, int pages) {
    const fs::path place(path);
    {
        SampleDatabase places(path);
        makePlaces(places, trace, kept, pages);
        if (left == Left::withLog) places.run("PRAGMA journal_mode=WAL");
    }
    // The program that has it open ends without another word, as one that is killed.
    const std::string begin = "import os, sqlite3\nd = sqlite3.connect('" +
                              place.filename().string() + "', isolation_level=None)\n";
    if (left == Left::withLog) {
        python(place.parent_path(), begin +
                                        "d.execute('PRAGMA wal_autocheckpoint=0')\n"
                                        "d.execute(\"INSERT INTO moz_places (url, guid) VALUES "
                                        "('https://Zqxtrace.example/late', 'late')\")\n"
                                        "d.execute(\"INSERT INTO moz_bookmarks (type, title, guid) "
                                        "VALUES (2, 'Kvwkept late', 'b3')\")\n"
                                        "os._exit(0)");
    } else if (left == Left::withHotJournal) {
        // The pages that no longer fit into memory are written while the transaction is open.
        python(place.parent_path(),
               begin +
                   "d.execute('PRAGMA cache_size=2')\n"
                   "d.execute('BEGIN')\n"
                   "d.execute(\"DELETE FROM moz_bookmarks WHERE id > 3\")\n"
                   "d.execute(\"UPDATE moz_places SET title='half done ' || id\")\n"
                   "d.execute('CREATE TABLE half (x)')\n"
                   "d.execute(\"INSERT INTO half SELECT title || 'Zqxtrace' || hex(randomblob(600))"
                   " FROM moz_places\")\n"
                   "os._exit(0)");
    }
}

DatabaseRequest CleaningTest::historyRequest(const std::string& path) {
    return {path, {}, {shippedStep("firefox", "history", "places.sqlite")}};
}

DatabaseRequest CleaningTest::requestOf(const std::string& path, const std::string& sql) {
    return {path, {}, {{"history", {{{}, sql}}, {}}}};
}

std::string CleaningTest::clean(const DatabaseRequest& request) {
    auto prepared = cleaner.prepareDatabase(request, {});
    return commit(prepared);
}

std::string CleaningTest::commit(Cleaned<PreparedFile>& prepared) {
    if (!prepared) return told(prepared);
    std::vector<std::string> aside;
    const auto trouble = prepared.value()->commit([] { return true; }, aside);
    shred(aside);
    prepared.value().reset();
    return trouble ? trouble->error.message() : "";
}

void CleaningTest::shred(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        ASSERT_TRUE(fs::is_regular_file(path)) << path;
        writeFile(path, std::string(fs::file_size(path), '\0'));
        fs::remove(path);
    }
}

std::vector<std::string> CleaningTest::namesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename());
    }
    std::ranges::sort(names);
    return names;
}

std::vector<std::string> CleaningTest::holding(const std::string& folder, const std::string& text) {
    std::vector<std::string> names = namesIn(folder);
    std::erase_if(names, [&](const std::string& name) {
        return readFile(fs::path(folder) / name).find(text) == std::string::npos;
    });
    return names;
}

void CleaningTest::expectWholeHistory(const std::string& path, const std::string& when) {
    SampleDatabase places(path);
    EXPECT_EQ(places.text("PRAGMA integrity_check"), "ok") << when;
    EXPECT_EQ(places.text("SELECT count(*) FROM moz_bookmarks WHERE id <= 7"), "7") << when;
    EXPECT_EQ(places.text("SELECT keyword FROM moz_keywords"), std::string(kept) + "word") << when;
    EXPECT_EQ(places.text("SELECT count(*) FROM moz_places WHERE title LIKE 'Kvwkept title%'"), "3")
        << when;
    EXPECT_THAT(places.text("SELECT count(*) FROM moz_historyvisits"),
                testing::AnyOf("0", places.text("SELECT count(*) FROM moz_places WHERE guid IS NOT "
                                                "'late'")))
        << when;
}

std::string CleaningTest::printOf(const std::string& folder) {
    std::string print;
    for (const std::string& name : namesIn(folder)) {
        struct stat found {};
        lstat((fs::path(folder) / name).c_str(), &found);
        for (const long number :
             {static_cast<long>(found.st_ino), static_cast<long>(found.st_mode),
              static_cast<long>(found.st_size), static_cast<long>(found.st_atim.tv_nsec),
              static_cast<long>(found.st_mtim.tv_nsec), static_cast<long>(found.st_ctim.tv_nsec)}) {
            print += std::to_string(number) + ' ';
        }
        print += name + '\n';
    }
    return print;
}

}  // namespace dorvanel::test
