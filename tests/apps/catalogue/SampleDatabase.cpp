// SPDX-License-Identifier: MIT
#include "apps/catalogue/SampleDatabase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <set>

namespace dorvanel::test {
namespace {

std::string textOf(const char* text) {
    return text == nullptr ? "" : text;
}

int note(void* used, int action, const char* one, const char* two, const char* database,
         const char* /*trigger*/) {
    const bool isTable = action == SQLITE_DELETE;
    if (!isTable && action != SQLITE_READ && action != SQLITE_UPDATE) return SQLITE_OK;
    const std::string table = textOf(one);
    const std::string column = textOf(two);
    auto& names = *static_cast<std::set<std::string>*>(used);
    if (textOf(database) != "main" && textOf(database) != "temp") {
        names.insert(textOf(database) + "." + table);
    } else {
        names.insert(isTable || column.empty() ? table : table + "." + column);
    }
    return SQLITE_OK;
}

}  // namespace

SampleDatabase::SampleDatabase(std::string_view schema) : path_(folder_ / "sample.sqlite") {
    EXPECT_EQ(sqlite3_open(path_.c_str(), &database_), SQLITE_OK);
    // What waits for the disk here proves nothing.
    execute("PRAGMA synchronous=OFF");
    execute(std::string(schema));
}

SampleDatabase::~SampleDatabase() {
    sqlite3_close(database_);
}

void SampleDatabase::execute(const std::string& sql) const {
    EXPECT_EQ(sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database_) << "\n"
        << sql;
}

std::vector<std::string> SampleDatabase::rows(const std::string& query) const {
    std::vector<std::string> found;
    sqlite3_stmt* prepared = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(database_, query.c_str(), -1, &prepared, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database_) << "\n"
        << query;
    while (sqlite3_step(prepared) == SQLITE_ROW) {
        std::string row;
        for (int i = 0; i < sqlite3_column_count(prepared); ++i) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, i));
            row += (i == 0 ? "" : "|") + textOf(text);
        }
        found.push_back(std::move(row));
    }
    sqlite3_finalize(prepared);
    return found;
}

bool SampleDatabase::has(const std::string& needed) const {
    const std::size_t dot = needed.find('.');
    if (dot == std::string::npos) return !rows("PRAGMA main.table_info(" + needed + ")").empty();
    const std::string one = needed.substr(0, dot);
    const std::string other = needed.substr(dot + 1);
    const std::string count = "SELECT count(*) FROM ";
    const std::string name = "'" + one + "') WHERE name='" + other + "'";
    if (rows(count + "pragma_table_info(" + name) == std::vector<std::string>{"1"}) return true;
    if (rows(count + "pragma_database_list WHERE name='" + one + "'").front() == "0") return false;
    return !rows("PRAGMA " + one + ".table_info(" + other + ")").empty();
}

void SampleDatabase::attach(const std::string& name, const SampleDatabase& other) const {
    execute("ATTACH '" + other.path_ + "' AS " + name);
}

std::vector<std::vector<std::string>> SampleDatabase::answersTo(
    const std::vector<std::string>& queries) const {
    std::vector<std::vector<std::string>> answers;
    answers.reserve(queries.size());
    for (const std::string& query : queries) answers.push_back(rows(query));
    return answers;
}

void SampleDatabase::clean(const catalogue::DatabaseCleaning& cleaning) const {
    execute("PRAGMA foreign_keys=ON");
    execute("BEGIN IMMEDIATE");
    const auto before = answersTo(cleaning.keep);
    for (const catalogue::Statement& statement : cleaning.run) {
        const bool can = std::ranges::all_of(
            statement.needs, [&](const std::string& needed) { return has(needed); });
        if (can) execute(statement.sql);
    }
    EXPECT_EQ(answersTo(cleaning.keep), before);
    execute("COMMIT");
    EXPECT_THAT(rows("PRAGMA foreign_key_check"), ::testing::IsEmpty());
    EXPECT_THAT(rows("PRAGMA integrity_check"), ::testing::ElementsAre("ok"));
}

std::vector<std::string> SampleDatabase::usedBy(const std::string& sql) const {
    std::set<std::string> used;
    // What follows from references is the database's business, and in no statement.
    execute("PRAGMA foreign_keys=OFF");
    sqlite3_set_authorizer(database_, note, &used);
    sqlite3_stmt* prepared = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(database_, sql.c_str(), -1, &prepared, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database_) << "\n"
        << sql;
    sqlite3_finalize(prepared);
    sqlite3_set_authorizer(database_, nullptr, nullptr);
    return {used.begin(), used.end()};
}

}  // namespace dorvanel::test
