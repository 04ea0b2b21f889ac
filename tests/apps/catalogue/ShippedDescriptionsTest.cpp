// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <set>

#include "apps/catalogue/Catalogue.h"

namespace dorvanel::test {
namespace {

using catalogue::Catalogue;

class ShippedDescriptionsTest : public ::testing::Test {
  protected:
    const Catalogue catalogue_ = Catalogue::load({SHIPPED, {}}, platform::defaultFileManager());
};

TEST_F(ShippedDescriptionsTest, NoneHasAFault) {
    for (const Catalogue::Fault& fault : catalogue_.faults()) {
        ADD_FAILURE() << fault.file << ":" << fault.problem.line << ": " << fault.problem.reason;
    }
}

TEST_F(ShippedDescriptionsTest, ThereIsOneForEachApplicationThatTheFactsCarry) {
    std::vector<std::string> ids;
    for (const catalogue::Entry& entry : catalogue_.entries()) ids.push_back(entry.id);
    EXPECT_THAT(ids, ::testing::ElementsAre("brave", "chromium", "desktop", "epiphany", "evolution",
                                            "falkon", "firefox", "google-chrome", "konqueror",
                                            "librewolf", "microsoft-edge", "opera", "qutebrowser",
                                            "thunderbird", "vivaldi"));
}

TEST_F(ShippedDescriptionsTest, OnlyWhatNobodyWouldMissIsRecommended) {
    const std::set<std::string> recommended = {"cache",      "history", "downloads",
                                               "thumbnails", "crashes", "logs"};
    for (const catalogue::Entry& entry : catalogue_.entries()) {
        for (const catalogue::Trace& trace : entry.traces) {
            EXPECT_EQ(trace.recommended, recommended.contains(trace.kind))
                << entry.id << ", " << trace.kind;
        }
    }
}

TEST_F(ShippedDescriptionsTest, WhatLogsPeopleOutOrLosesTabsSaysSo) {
    const std::set<std::string> felt = {"cookies", "sitedata", "sessions", "trash", "junk"};
    for (const catalogue::Entry& entry : catalogue_.entries()) {
        for (const catalogue::Trace& trace : entry.traces) {
            EXPECT_TRUE(!felt.contains(trace.kind) || !trace.why.empty()) << entry.id << trace.kind;
        }
    }
}

TEST_F(ShippedDescriptionsTest, NoPathLeadsToWhatMustStay) {
    const std::set<std::string> kept = {"logins.json",  "key4.db",           "cert9.db",
                                        "prefs.js",     "bookmarkbackups",   "Bookmarks",
                                        "Login Data",   "Local State",       "extensions",
                                        "abook.sqlite", "search.json.mozlz4"};
    for (const catalogue::Entry& entry : catalogue_.entries()) {
        for (const catalogue::Trace& trace : entry.traces) {
            for (const std::string& path : trace.shred) {
                EXPECT_FALSE(kept.contains(path.substr(path.rfind('/') + 1))) << path;
                EXPECT_NE(path, "{profile}") << entry.id;
                EXPECT_NE(path, "{config}") << entry.id;
            }
        }
    }
}

TEST_F(ShippedDescriptionsTest, EveryStatementIsWellFormed) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(":memory:", &database), SQLITE_OK);
    for (const catalogue::Entry& entry : catalogue_.entries()) {
        for (const catalogue::Trace& trace : entry.traces) {
            for (const catalogue::DatabaseCleaning& clean : trace.clean) {
                for (const catalogue::Statement& statement : clean.run) {
                    sqlite3_stmt* prepared = nullptr;
                    sqlite3_prepare_v2(database, statement.sql.c_str(), -1, &prepared, nullptr);
                    // Without the application's tables a sound one fails for want of a table.
                    EXPECT_THAT(sqlite3_errmsg(database),
                                ::testing::AnyOf(::testing::StartsWith("no such table"),
                                                 ::testing::StartsWith("unknown database")))
                        << statement.sql;
                    EXPECT_FALSE(statement.needs.empty()) << statement.sql;
                    sqlite3_finalize(prepared);
                }
            }
        }
    }
    sqlite3_close(database);
}

}  // namespace
}  // namespace dorvanel::test
