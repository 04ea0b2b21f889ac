// SPDX-License-Identifier: MIT
#include "support/SampleIndex.h"

#include <filesystem>
#include <stdexcept>

namespace dorvanel::test {
namespace {

/// `text` as an SQL literal.
std::string quoted(const std::string& text) {
    std::string literal = "'";
    for (const char c : text) literal += c == '\'' ? "''" : std::string(1, c);
    return literal + "'";
}

}  // namespace

SampleIndex::SampleIndex(const std::string& path) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    if (sqlite3_open(path.c_str(), &database_) != SQLITE_OK) {
        sqlite3_close(database_);
        throw std::runtime_error("sqlite3_open " + path);
    }
}

SampleIndex::~SampleIndex() {
    sqlite3_close(database_);
}

void SampleIndex::createTables() {
    run("create table mailboxes (ROWID integer primary key, url text, unread_count integer);"
        "create table messages (ROWID integer primary key, mailbox integer, sender text,"
        " subject text);"
        "create index messages_by_mailbox on messages (mailbox);");
}

long long SampleIndex::addMailbox(const std::string& url, int messages) {
    run("insert into mailboxes (url, unread_count) values (" + quoted(url) + ", 0)");
    const long long mailbox = sqlite3_last_insert_rowid(database_);
    for (int i = 0; i < messages; ++i) {
        run("insert into messages (mailbox, sender, subject) values (" + std::to_string(mailbox) +
            ", 'joe@example.org', 'Letter " + std::to_string(i) + "')");
    }
    return mailbox;
}

void SampleIndex::run(const std::string& statements) {
    if (sqlite3_exec(database_, statements.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(statements + ": " + sqlite3_errmsg(database_));
    }
}

long long SampleIndex::number(const std::string& query) const {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database_, query.c_str(), -1, &statement, nullptr) != SQLITE_OK ||
        sqlite3_step(statement) != SQLITE_ROW) {
        sqlite3_finalize(statement);
        throw std::runtime_error(query + ": " + sqlite3_errmsg(database_));
    }
    const long long value = sqlite3_column_int64(statement, 0);
    sqlite3_finalize(statement);
    return value;
}

long long SampleIndex::messages(long long mailbox) const {
    return number("select count(*) from messages where mailbox = " + std::to_string(mailbox));
}

}  // namespace dorvanel::test
