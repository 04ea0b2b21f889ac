// SPDX-License-Identifier: MIT
#include "targets/cleaning/Connection.h"

#include <sqlite3.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>

namespace dorvanel::cleaning {
namespace {

/// Between two looks at the clock.
constexpr int stepsBetweenLooks = 10'000;
/// Of one value, in bytes, and of a pattern: some functions take time with the product of the two,
/// in one step.
constexpr int longestValue = 64 * 1024 * 1024;
constexpr int longestPattern = 1024;
/// What the library may use in all, in bytes.
constexpr sqlite3_int64 mostMemory = sqlite3_int64{1024} * 1024 * 1024;
/// Pages that the library keeps, in KiB: rows are removed from indices in no order of theirs, and
/// each page that has gone is read again.
constexpr const char* pageCache = "PRAGMA cache_size=-131072";
/// What the answer to one query may take, in bytes.
constexpr std::size_t longestAnswer = std::size_t{64} * 1024 * 1024;

struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementOwner = std::unique_ptr<sqlite3_stmt, Finalizer>;

void refuse(sqlite3_context* context, int, sqlite3_value**) {
    sqlite3_result_error(context, "function not allowed", -1);
}

Fault faultOf(int result) {
    switch (result & 0xff) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return Fault::locked;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return Fault::corrupt;
        case SQLITE_IOERR:
        case SQLITE_CANTOPEN:
        case SQLITE_PERM:
        case SQLITE_READONLY:
            return Fault::unreadable;
        default:
            return Fault::failed;
    }
}

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::ranges::find(words, word) != words.end();
}

std::string_view viewOf(const char* text) {
    return text == nullptr ? std::string_view() : std::string_view(text);
}

/// One statement of the text; trouble where there is another behind it.
int prepare(sqlite3* database, const std::string& sql, StatementOwner& statement) {
    sqlite3_stmt* prepared = nullptr;
    const char* rest = nullptr;
    const int result = sqlite3_prepare_v2(database, sql.c_str(), static_cast<int>(sql.size()) + 1,
                                          &prepared, &rest);
    statement.reset(prepared);
    if (result != SQLITE_OK) return result;
    if (prepared == nullptr || viewOf(rest).find_first_not_of(" \t\r\n;") != std::string::npos) {
        return SQLITE_MISUSE;
    }
    return SQLITE_OK;
}

std::optional<std::string> valueOf(sqlite3_stmt* statement, int column) {
    if (sqlite3_column_type(statement, column) == SQLITE_NULL) return std::nullopt;
    const auto* text = static_cast<const char*>(sqlite3_column_blob(statement, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
    return text == nullptr ? std::string() : std::string(text, size);
}

}  // namespace

std::string quotedName(const std::string& name) {
    std::string text = "\"";
    for (const char c : name) text += c == '"' ? std::string("\"\"") : std::string(1, c);
    return text + '"';
}

void Connection::Closer::operator()(sqlite3* database) const {
    sqlite3_close(database);
}

Cleaned<std::unique_ptr<Connection>> Connection::open(ImageFiles& files, const std::string& name,
                                                      const std::string& path,
                                                      const Patience& patience) {
    std::unique_ptr<Connection> connection(new Connection(files, path, patience));
    sqlite3_hard_heap_limit64(mostMemory);
    sqlite3* database = nullptr;
    const int result =
        sqlite3_open_v2(name.c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_EXRESCODE,
                        files.registeredName());
    connection->database_.reset(database);  // to be closed after a failure too
    if (result != SQLITE_OK) return connection->trouble(result, "open");
    connection->restrain();
    // Before anything is read: a log is then read without memory shared with others.
    if (auto bad = connection->run("PRAGMA locking_mode=EXCLUSIVE")) return *bad;
    if (auto bad = connection->run("PRAGMA temp_store=MEMORY")) return *bad;
    if (auto bad = connection->run(pageCache)) return *bad;
    return connection;
}

void Connection::restrain() {
    sqlite3* database = database_.get();
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    sqlite3_limit(database, SQLITE_LIMIT_LENGTH, longestValue);
    sqlite3_limit(database, SQLITE_LIMIT_LIKE_PATTERN_LENGTH, longestPattern);
    // Functions that can take for ever in a single step, or load code.
    for (const char* function :
         {"instr", "replace", "trim", "ltrim", "rtrim", "load_extension", "fts3_tokenizer"}) {
        for (int arguments = 1; arguments <= 3; ++arguments) {
            sqlite3_create_function_v2(database, function, arguments,
                                       SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                       nullptr, &refuse, nullptr, nullptr, nullptr);
        }
    }
    sqlite3_progress_handler(database, stepsBetweenLooks, &Connection::mayGoOn, this);
    sqlite3_set_authorizer(database, &Connection::mayDo, this);
}

int Connection::mayGoOn(void* connection) {
    auto& self = *static_cast<Connection*>(connection);
    try {
        if (self.stopped_.empty() && self.patience_.clock.now() >= self.patience_.deadline) {
            self.stopped_ = "takes too long";
        }
        if (self.stopped_.empty() && self.patience_.stop && self.patience_.stop()) {
            self.stopped_ = "was stopped";
        }
        return self.stopped_.empty() ? 0 : 1;
    } catch (...) {
        return 1;
    }
}

int Connection::mayDo(void* connection, int action, const char* first, const char* second,
                      const char* database, const char*) {
    return static_cast<Connection*>(connection)->maysDo(action, first, second, database)
               ? SQLITE_OK
               : SQLITE_DENY;
}

bool Connection::maysDo(int action, const char* first, const char* second,
                        const char* database) const {
    if (permission_ == Permission::everything) return true;
    switch (action) {
        case SQLITE_SELECT:
        case SQLITE_READ:
        case SQLITE_FUNCTION:
        case SQLITE_RECURSIVE:
            return true;
        // Asked by full-text tables of themselves.
        case SQLITE_PRAGMA:
            return second == nullptr && isOneOf(viewOf(first), {"data_version", "page_size"});
        case SQLITE_INSERT:
        case SQLITE_DELETE:
        case SQLITE_UPDATE:
            return permission_ == Permission::cleaning &&
                   isOneOf(viewOf(database), {"main", "temp"});
        case SQLITE_CREATE_TEMP_TABLE:
            return permission_ == Permission::cleaning;
        default:
            return false;
    }
}

Trouble Connection::trouble(int result, const std::string& operation) const {
    Trouble trouble{faultOf(result), Error{0, operation, path_, {}}};
    const ImageFault& below = files_.memory().fault;
    if (!stopped_.empty()) {
        trouble.fault = Fault::failed;
        trouble.error.detail = stopped_;
    } else if (below.tooLarge || (result & 0xff) == SQLITE_NOMEM || result == SQLITE_IOERR_NOMEM) {
        trouble.fault = Fault::failed;
        trouble.error.detail = "is too large";
    } else if (!below.operation.empty()) {
        trouble.fault = below.operation == "read" ? Fault::unreadable : Fault::failed;
        trouble.error.operation = below.operation;
        trouble.error.code = below.code;
    } else {
        trouble.error.detail = result == SQLITE_MISUSE || database_ == nullptr
                                   ? sqlite3_errstr(result)
                                   : sqlite3_errmsg(database_.get());
    }
    return trouble;
}

std::optional<Trouble> Connection::attach(const std::string& image, const std::string& alias) {
    if (auto bad = run("ATTACH " + quotedName(image) + " AS " + quotedName(alias))) return bad;
    attached_.push_back(alias);
    // It is read now, so that one that cannot be is told from a table that is missing.
    auto read = ask("SELECT count(*) FROM " + quotedName(alias) + ".sqlite_schema");
    return read ? std::nullopt : std::optional(read.trouble());
}

std::optional<Trouble> Connection::run(const std::string& sql) {
    auto asked = ask(sql);
    return asked ? std::nullopt : std::optional(asked.trouble());
}

Cleaned<Connection::Rows> Connection::ask(const std::string& sql) {
    StatementOwner statement;
    int result = prepare(database_.get(), sql, statement);
    if (result != SQLITE_OK) return trouble(result, "prepare");
    Rows rows;
    std::size_t bytes = 0;
    while ((result = sqlite3_step(statement.get())) == SQLITE_ROW) {
        auto& row = rows.emplace_back();
        for (int i = 0; i < sqlite3_column_count(statement.get()); ++i) {
            row.push_back(valueOf(statement.get(), i));
            bytes += sizeof(row.back()) + row.back().value_or("").size();
        }
        if (bytes > longestAnswer) return complaint(Fault::failed, "read", "is too large");
    }
    if (result != SQLITE_DONE) return trouble(result, "run");
    return rows;
}

Cleaned<std::string> Connection::askOne(const std::string& sql) {
    auto rows = ask(sql);
    if (!rows) return rows.trouble();
    if (rows.value().empty() || rows.value()[0].empty()) return std::string();
    return rows.value()[0][0].value_or("");
}

std::optional<Trouble> Connection::runCleaning(const std::string& sql) {
    permission_ = Permission::cleaning;
    auto bad = run(sql);
    permission_ = Permission::everything;
    return bad;
}

Cleaned<std::string> Connection::answer(const std::string& query) {
    permission_ = Permission::reading;
    auto rows = ask(query);
    permission_ = Permission::everything;
    if (!rows) {
        const std::string& reason = rows.trouble().error.detail;
        if (reason.starts_with("no such table: ") || reason.starts_with("no such column: ")) {
            return reason;
        }
        return rows.trouble();
    }
    std::string text;
    for (const auto& row : rows.value()) {
        for (const auto& value : row) {
            text += value ? std::to_string(value->size()) + ":" + *value : "NULL";
            text += ',';
        }
        text += '\n';
    }
    return text;
}

Cleaned<bool> Connection::has(const std::string& needed) {
    const std::size_t dot = needed.find('.');
    const std::string first = needed.substr(0, dot);
    const std::string rest = dot == std::string::npos ? "" : needed.substr(dot + 1);
    if (std::ranges::find(attached_, first) == attached_.end()) {
        return hasColumn("main", first, rest.empty() ? nullptr : rest.c_str());
    }
    const std::size_t second = rest.find('.');
    const std::string column = second == std::string::npos ? "" : rest.substr(second + 1);
    return hasColumn(first, rest.substr(0, second), column.empty() ? nullptr : column.c_str());
}

Cleaned<bool> Connection::hasColumn(const std::string& database, const std::string& table,
                                    const char* column) {
    const int result =
        sqlite3_table_column_metadata(database_.get(), database.c_str(), table.c_str(), column,
                                      nullptr, nullptr, nullptr, nullptr, nullptr);
    if (result == SQLITE_OK) return true;
    // The same number stands for a schema that cannot be read.
    const std::string_view reason = sqlite3_errmsg(database_.get());
    if (result == SQLITE_ERROR && reason.starts_with("no such table column: ")) return false;
    return trouble(result, "read");
}

std::uint64_t Connection::changes() const {
    return static_cast<std::uint64_t>(sqlite3_total_changes64(database_.get()));
}

Trouble Connection::complaint(Fault fault, const std::string& operation,
                              const std::string& detail) const {
    return Trouble{fault, Error{0, operation, path_, detail}};
}

std::optional<Trouble> Connection::takeInLog() {
    int inLog = 0;
    int takenIn = 0;
    const int result = sqlite3_wal_checkpoint_v2(database_.get(), "main",
                                                 SQLITE_CHECKPOINT_TRUNCATE, &inLog, &takenIn);
    if (result != SQLITE_OK) return trouble(result, "checkpoint");
    return std::nullopt;
}

}  // namespace dorvanel::cleaning
