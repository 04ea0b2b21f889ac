// SPDX-License-Identifier: MIT
#include "targets/EnvelopeIndex.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

#include "targets/SqlLiteral.h"

namespace dorvanel {
namespace {

constexpr std::chrono::milliseconds lockPoll{50};
/// Between two looks at the clock: a single step may take milliseconds on the longest values.
constexpr int stepsBetweenCounts = 100;
/// Of one value, in bytes. Some functions take time with the square of it, in one step.
constexpr int longestValue = 256 * 1024;
/// What SQLite may use in all, in bytes.
constexpr sqlite3_int64 mostMemory = sqlite3_int64{64} * 1024 * 1024;
/// What the mailboxes may take, and what each value takes beside its own bytes.
constexpr std::size_t mostRowBytes = std::size_t{128} * 1024 * 1024;
constexpr std::size_t bytesBesideValue = 128;

struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

void refuse(sqlite3_context* context, int, sqlite3_value**) {
    sqlite3_result_error(context, "function not allowed", -1);
}

/// The file is another program's, or anybody's, and what its triggers, views and indexes call runs
/// here. A trigger may keep a full-text table up to date, so the schema is trusted so far; taken
/// away are the tables that show or change the file behind the program's back, the functions that
/// load code, and those that can take for ever in a single step.
void restrain(sqlite3* database) {
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    const char* modules[] = {"fts3",      "fts4",      "fts5",      "rtree",
                             "rtree_i32", "json_each", "json_tree", nullptr};
    sqlite3_drop_modules(database, modules);
    for (const char* function : {"like", "glob", "load_extension", "fts3_tokenizer"}) {
        for (int arguments = 1; arguments <= 3; ++arguments) {
            sqlite3_create_function_v2(database, function, arguments,
                                       SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                       nullptr, &refuse, nullptr, nullptr, nullptr);
        }
    }
    sqlite3_limit(database, SQLITE_LIMIT_LENGTH, longestValue);
    sqlite3_hard_heap_limit64(mostMemory);
}

}  // namespace

void EnvelopeIndex::Closer::operator()(sqlite3* database) const {
    sqlite3_close(database);
}

int sqlite_mb_callback(void* rows, int count, char** values, char** names) {
    try {
        MailboxRow row;
        for (int i = 0; i < count; ++i) row[names[i]] = values[i] == nullptr ? "" : values[i];
        static_cast<MailboxRows*>(rows)->push_back(std::move(row));
    } catch (...) {
        return 1;  // no exception may pass through SQLite, which would be left half-way
    }
    return 0;
}

Result<std::unique_ptr<EnvelopeIndex>> EnvelopeIndex::open(const std::string& path,
                                                           platform::Clock& clock) {
    std::unique_ptr<EnvelopeIndex> index(new EnvelopeIndex(path, clock));
    if (auto opened = index->open(path, index->journals_.registeredName()); !opened) {
        return opened.error();
    }
    return index;
}

Result<std::unique_ptr<EnvelopeIndex>> EnvelopeIndex::openToLook(const std::string& path,
                                                                 platform::Clock& clock,
                                                                 platform::CleaningCalls& calls) {
    auto held = cleaning::holdDatabase(calls, clock, path, cleaning::Holding::looking);
    if (!held) return held.trouble().error;
    std::unique_ptr<EnvelopeIndex> index(new EnvelopeIndex(path, clock));
    index->held_ = std::move(held.value());
    index->images_ = std::make_unique<cleaning::ImageFiles>(calls);
    const std::string name = "index";
    cleaning::showDatabase(*index->images_, name, *index->held_);
    if (auto opened = index->open(name, index->images_->registeredName()); !opened) {
        return opened.error();
    }
    // Before anything is read: a log is then read without memory shared with others.
    static_cast<void>(index->runs("PRAGMA locking_mode=EXCLUSIVE"));
    return index;
}

Result<Done> EnvelopeIndex::open(const std::string& name, const char* files) {
    sqlite3* database = nullptr;
    // As sqlite3_open, which would however make a file that has gone since it was looked for.
    const int result = sqlite3_open_v2(name.c_str(), &database, SQLITE_OPEN_READWRITE, files);
    database_.reset(database);  // to be closed after a failure too
    if (result != SQLITE_OK) return Error{0, "open", path_, sqlite3_errstr(result)};
    restrain(database);
    sqlite3_busy_handler(database, &EnvelopeIndex::waitForLock, this);
    sqlite3_progress_handler(database, stepsBetweenCounts, &EnvelopeIndex::countSteps, this);
    return Done{};
}

int EnvelopeIndex::waitForLock(void* index, int) {
    auto& self = *static_cast<EnvelopeIndex*>(index);
    // One allowance for all statements: thousands of mailboxes must not each wait in turn.
    if (self.waited_ >= lockPatience) return 0;
    self.clock_.usleep(lockPoll);
    self.waited_ += lockPoll;
    return 1;
}

int EnvelopeIndex::countSteps(void* index) {
    auto& self = *static_cast<EnvelopeIndex*>(index);
    self.steps_ += stepsBetweenCounts;
    return self.steps_ > self.mostSteps_ || self.clock_.now() >= self.deadline_ ? 1 : 0;
}

void EnvelopeIndex::allowTime(std::chrono::seconds time) {
    steps_ = 0;
    mostSteps_ = 0;
    deadline_ = clock_.now() + time;
}

void EnvelopeIndex::allowSteps(std::uint64_t most) {
    if (steps_ > mostSteps_) return;
    steps_ = 0;
    mostSteps_ = most;
}

int EnvelopeIndex::takeRow(void* reading, int count, char** values, char** names) {
    auto& self = *static_cast<Reading*>(reading);
    for (int i = 0; i < count; ++i) {
        self.bytes += bytesBesideValue + std::char_traits<char>::length(names[i]);
        if (values[i] != nullptr) self.bytes += std::char_traits<char>::length(values[i]);
    }
    if (self.bytes > mostRowBytes) return 1;
    return sqlite_mb_callback(self.rows, count, values, names);
}

Result<Done> EnvelopeIndex::readMailboxes(MailboxRows& rows) {
    allowTime(readingPatience);
    allowSteps(mostStepsToRead);
    Reading reading{&rows};
    char* message = nullptr;
    const int result = sqlite3_exec(database_.get(), "select * from mailboxes",
                                    &EnvelopeIndex::takeRow, &reading, &message);
    const std::unique_ptr<char, decltype(&sqlite3_free)> owner(message, &sqlite3_free);
    if (result == SQLITE_OK) return Done{};
    return message == nullptr ? lastError("select") : Error{0, "select", path_, message};
}

std::vector<EnvelopeIndex::Removal> EnvelopeIndex::removeMessages(
    const std::vector<std::string>& rowids) {
    std::vector<Removal> removals;
    removed_ = 0;
    if (removeTogether(rowids, removals)) return removals;
    removals.clear();
    removed_ = 0;
    allowTime(removalPatience);
    for (const std::string& rowid : rowids) removals.push_back(removeOne(rowid));
    return removals;
}

bool EnvelopeIndex::removeTogether(const std::vector<std::string>& rowids,
                                   std::vector<Removal>& removals) {
    allowTime(removalPatience);
    allowSteps(mostStepsToRemove);
    if (!runs("begin")) return false;
    for (const std::string& rowid : rowids) removals.push_back(removeOne(rowid));
    // Not possible either where a failure has undone the whole transaction.
    if (runs("commit")) return true;
    static_cast<void>(runs("rollback"));
    return false;
}

bool EnvelopeIndex::runs(const char* statement) {
    return sqlite3_exec(database_.get(), statement, nullptr, nullptr, nullptr) == SQLITE_OK;
}

EnvelopeIndex::Removal EnvelopeIndex::removeOne(const std::string& rowid) {
    allowSteps(mostStepsToRemove);
    const bool isLiteral = isSqlLiteral(rowid);
    const std::string text = "delete from messages where mailbox == " + (isLiteral ? rowid : "?");
    sqlite3_stmt* prepared = nullptr;
    int result = sqlite3_prepare_v2(database_.get(), text.c_str(), -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, Finalizer> statement(prepared);
    if (result == SQLITE_OK && !isLiteral && !rowid.empty()) {  // unbound it is NULL
        result = sqlite3_bind_text64(prepared, 1, rowid.data(), rowid.size(), SQLITE_STATIC,
                                     SQLITE_UTF8);
    }
    if (result != SQLITE_OK || sqlite3_step(prepared) != SQLITE_DONE) return lastError("delete");
    removed_ += static_cast<std::uint64_t>(sqlite3_changes64(database_.get()));
    return Done{};
}

Error EnvelopeIndex::lastError(const char* operation) const {
    return Error{0, operation, path_, sqlite3_errmsg(database_.get())};
}

}  // namespace dorvanel
