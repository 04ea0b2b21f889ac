// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <string>

namespace dorvanel::test {

/// A message index as Apple Mail 2 keeps it, made and read with the real SQLite: a table of
/// mailboxes and a table of messages, each naming its mailbox. Throws where SQLite fails.
class SampleIndex {
  public:
    /// Opens the database, or makes an empty one with the folders above it.
    explicit SampleIndex(const std::string& path);
    ~SampleIndex();
    SampleIndex(const SampleIndex&) = delete;
    SampleIndex& operator=(const SampleIndex&) = delete;

    /// The two tables, empty.
    void createTables();
    /// Adds a mailbox with so many messages; its ROWID, which counts from 1.
    long long addMailbox(const std::string& url, int messages);
    /// Runs any statements.
    void run(const std::string& statements);
    /// The first column of the first row of a query.
    [[nodiscard]] long long number(const std::string& query) const;
    /// How many messages the mailbox of this ROWID has.
    [[nodiscard]] long long messages(long long mailbox) const;

  private:
    sqlite3* database_ = nullptr;
};

}  // namespace dorvanel::test
