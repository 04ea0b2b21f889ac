// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/FakeClock.h"
#include "support/FaultyCleaningCalls.h"
#include "support/TemporaryFolder.h"
#include "targets/cleaning/Cleaning.h"
#include "targets/cleaning/SampleDatabase.h"

namespace dorvanel::test {

/// What a description that is shipped does to the database of this name, for one kind of trace.
cleaning::Step shippedStep(const std::string& application, const std::string& kind,
                           const std::string& database);

/// A folder with databases in it that are cleaned, the disk's calls among the test's own.
class CleaningTest : public testing::Test {
  protected:
    /// What must be gone from every file, and what must not.
    static constexpr const char* trace = "Zqxtrace";
    static constexpr const char* kept = "Kvwkept";

    /// The three ways in which a history is left by a program that was killed.
    enum class Left { closed, withLog, withHotJournal };
    /// Makes a history at `path`.
    static void makeHistory(const std::string& path, Left left = Left::closed, int pages = 300);
    /// Its cleaning from visits.
    static cleaning::DatabaseRequest historyRequest(const std::string& path);
    /// A table t(x), and one statement for it.
    static cleaning::DatabaseRequest requestOf(const std::string& path, const std::string& sql);

    /// Prepares, commits, shreds and ends; the trouble, if any, as text.
    std::string clean(const cleaning::DatabaseRequest& request);
    std::string commit(cleaning::Cleaned<cleaning::PreparedFile>& prepared);
    /// The message of trouble; "" where there is none.
    template <typename T>
    static std::string told(const cleaning::Cleaned<T>& cleaned) {
        return cleaned ? "" : cleaned.trouble().error.message();
    }
    /// Overwrites and removes.
    static void shred(const std::vector<std::string>& paths);
    /// Names of the folder's entries, in order.
    [[nodiscard]] static std::vector<std::string> namesIn(const std::string& folder);
    /// Names of the folder's files that have the text in them.
    [[nodiscard]] static std::vector<std::string> holding(const std::string& folder,
                                                          const std::string& text);
    /// Expects the history to be whole, all that is to be kept in it, and to have all its visits
    /// or none.
    static void expectWholeHistory(const std::string& path, const std::string& when);
    /// Whether the file's bytes, times and mode are as before.
    [[nodiscard]] static std::string printOf(const std::string& folder);

    const TemporaryFolder folder;
    const std::string path = folder / "places.sqlite";
    FaultyCleaningCalls calls;
    FakeClock clock;
    cleaning::Cleaner cleaner{calls, clock};
};

}  // namespace dorvanel::test
