// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "apps/catalogue/Entry.h"
#include "support/TemporaryFolder.h"

struct sqlite3;

namespace dorvanel::test {

/// A database of an application, made by what the application makes its own with, on which the
/// statements of a description can be tried out. What fails fails the test.
class SampleDatabase {
  public:
    explicit SampleDatabase(std::string_view schema);
    ~SampleDatabase();
    SampleDatabase(const SampleDatabase&) = delete;
    SampleDatabase& operator=(const SampleDatabase&) = delete;

    void execute(const std::string& sql) const;
    /// One text for each row, its columns with "|" between them.
    [[nodiscard]] std::vector<std::string> rows(const std::string& query) const;
    /// Whether there is this "table", "table.column" or "attached.table".
    [[nodiscard]] bool has(const std::string& needed) const;
    void attach(const std::string& name, const SampleDatabase& other) const;

    /// Carries out one cleaning as a run does: references hold, in one transaction, without the
    /// statements whose needs are missing. What must stay, references and pages are looked at.
    void clean(const catalogue::DatabaseCleaning& cleaning) const;

    /// Every "table.column" that a statement reads or writes; "attached.table" of another database.
    [[nodiscard]] std::vector<std::string> usedBy(const std::string& sql) const;

  private:
    [[nodiscard]] std::vector<std::vector<std::string>> answersTo(
        const std::vector<std::string>& queries) const;

    TemporaryFolder folder_;
    std::string path_;
    sqlite3* database_ = nullptr;
};

}  // namespace dorvanel::test
