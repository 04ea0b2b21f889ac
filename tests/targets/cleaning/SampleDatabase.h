// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <string>

namespace dorvanel::test {

/// A database as any program opens it, with the library's own files and locks. Throws where a
/// statement fails.
class SampleDatabase {
  public:
    /// Opens it, or makes an empty one.
    explicit SampleDatabase(const std::string& path);
    ~SampleDatabase();
    SampleDatabase(const SampleDatabase&) = delete;
    SampleDatabase& operator=(const SampleDatabase&) = delete;

    void run(const std::string& statements);
    /// All values of all rows as text, "," between values and "\n" between rows; a NULL is "NULL".
    [[nodiscard]] std::string text(const std::string& query) const;

  private:
    sqlite3* database_ = nullptr;
};

/// A history with bookmarks, keywords, tags, downloads and pages that were only visited, in the
/// tables that Firefox 128 has. What was visited has `trace` in it; what is kept has `kept`.
void makePlaces(SampleDatabase& places, const std::string& trace, const std::string& kept,
                int pages = 300);
/// The icons of these pages.
void makeFavicons(SampleDatabase& favicons, const std::string& trace, const std::string& kept);

}  // namespace dorvanel::test
