#include "targets/EnvelopeIndex.h"

#include <charconv>
#include <cstdint>
#include <utility>

namespace dorvanel {
namespace {

constexpr std::chrono::milliseconds lockPoll{50};
constexpr int stepsBetweenCounts = 10'000;

struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

/// Binds a ROWID: as a number when it is one, so that it also equals a number in a column without
/// a type; else as text; a missing one as NULL, which equals nothing.
int bindRowid(sqlite3_stmt* statement, const std::string& rowid) {
    if (rowid.empty()) return sqlite3_bind_null(statement, 1);
    std::int64_t number = 0;
    const char* end = rowid.data() + rowid.size();
    const auto [stop, failure] = std::from_chars(rowid.data(), end, number);
    if (failure == std::errc() && stop == end) return sqlite3_bind_int64(statement, 1, number);
    return sqlite3_bind_text64(statement, 1, rowid.data(), rowid.size(), SQLITE_STATIC,
                               SQLITE_UTF8);
}

}  // namespace

int sqlite_mb_callback(void* rows, int count, char** values, char** names) {
    MailboxRow row;
    for (int i = 0; i < count; ++i) row[names[i]] = values[i] == nullptr ? "" : values[i];
    static_cast<MailboxRows*>(rows)->push_back(std::move(row));
    return 0;
}

std::unique_ptr<EnvelopeIndex> EnvelopeIndex::open(const std::string& path,
                                                   platform::Clock& clock) {
    std::unique_ptr<EnvelopeIndex> index(new EnvelopeIndex(path, clock));
    sqlite3* database = nullptr;
    // As sqlite3_open, which would however make a file that has gone since it was looked for.
    const int result = sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
    index->database_.reset(database);  // to be closed after a failure too
    if (result != SQLITE_OK) return nullptr;
    // The file is another program's, so what its triggers and views may call is kept small.
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_busy_handler(database, &EnvelopeIndex::waitForLock, index.get());
    sqlite3_progress_handler(database, stepsBetweenCounts, &EnvelopeIndex::countSteps, index.get());
    return index;
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
    return self.steps_ > self.mostSteps_ ? 1 : 0;
}

void EnvelopeIndex::allowSteps(std::uint64_t most) {
    if (steps_ > mostSteps_) return;
    steps_ = 0;
    mostSteps_ = most;
}

platform::Result<platform::Done> EnvelopeIndex::readMailboxes(MailboxRows& rows) {
    allowSteps(mostStepsToRead);
    char* message = nullptr;
    const int result = sqlite3_exec(database_.get(), "select * from mailboxes", &sqlite_mb_callback,
                                    &rows, &message);
    const std::unique_ptr<char, decltype(&sqlite3_free)> owner(message, &sqlite3_free);
    if (result == SQLITE_OK) return platform::Done{};
    return message == nullptr ? lastError("select") : platform::Error{0, "select", path_, message};
}

platform::Result<platform::Done> EnvelopeIndex::removeMessages(const std::string& rowid) {
    allowSteps(mostStepsToRemove);
    sqlite3_stmt* prepared = nullptr;
    const int result = sqlite3_prepare_v2(
        database_.get(), "delete from messages where mailbox == ?", -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, Finalizer> statement(prepared);
    if (result != SQLITE_OK || bindRowid(prepared, rowid) != SQLITE_OK) return lastError("delete");
    if (sqlite3_step(prepared) != SQLITE_DONE) return lastError("delete");
    return platform::Done{};
}

platform::Error EnvelopeIndex::lastError(const char* operation) const {
    return platform::Error{0, operation, path_, sqlite3_errmsg(database_.get())};
}

}  // namespace dorvanel
