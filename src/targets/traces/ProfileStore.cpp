// SPDX-License-Identifier: MIT
#include <sqlite3.h>

#include <memory>

#include "targets/traces/ProfileLists.h"

namespace dorvanel::traces {
namespace {

struct Closer {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

constexpr std::size_t mostProfiles = 10'000;

/// A "file:" name for SQLite: what means something in one is escaped.
std::string uriOf(const std::string& path) {
    std::string uri = "file:";
    for (const char c : path) {
        if (c == '%') {
            uri += "%25";
        } else if (c == '?') {
            uri += "%3f";
        } else if (c == '#') {
            uri += "%23";
        } else {
            uri += c;
        }
    }
    // Without locks and without a file beside it: a look must leave no trace of its own.
    return uri + "?mode=ro&immutable=1";
}

std::string textOf(sqlite3_stmt* row, int column) {
    const unsigned char* text = sqlite3_column_text(row, column);
    return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

}  // namespace

Result<std::vector<ListedProfile>> profilesOfStore(const std::string& path) {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(uriOf(path).c_str(), &opened,
                                       SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr);
    const std::unique_ptr<sqlite3, Closer> database(opened);
    const auto failed = [&] { return Error{0, "read", path, sqlite3_errmsg(opened)}; };
    if (result != SQLITE_OK) return failed();
    sqlite3_stmt* prepared = nullptr;
    const int made = sqlite3_prepare_v2(opened, "SELECT path, name FROM Profiles ORDER BY id", -1,
                                        &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, Closer> rows(prepared);
    if (made != SQLITE_OK) return failed();
    std::vector<ListedProfile> profiles;
    int step = sqlite3_step(prepared);
    for (; step == SQLITE_ROW && profiles.size() < mostProfiles; step = sqlite3_step(prepared)) {
        profiles.push_back({textOf(prepared, 0), textOf(prepared, 1)});
    }
    if (step != SQLITE_DONE) return failed();
    return profiles;
}

}  // namespace dorvanel::traces
