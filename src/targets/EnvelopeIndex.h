#pragma once

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/Clock.h"
#include "platform/Result.h"

namespace dorvanel {

/// One mailbox of the index: column name to column value, a NULL as "".
using MailboxRow = std::map<std::string, std::string>;
using MailboxRows = std::vector<MailboxRow>;

/// The row callback of the mailboxes query: appends one row to the MailboxRows that `rows` points
/// to and returns 0, so that the query goes on.
int sqlite_mb_callback(void* rows, int count, char** values, char** names);

/// Apple Mail 2's message index, an SQLite database that Mail owns: a table "mailboxes" and a
/// table "messages" that names the mailbox of each message. Open as long as the object lives.
class EnvelopeIndex {
  public:
    /// How long, in all, an open index waits for another program's lock before its statements
    /// fail: long enough for Mail's background work to let go, short enough for a person who waits
    /// for a run to begin.
    static constexpr std::chrono::milliseconds lockPatience{2000};

    /// Steps of SQLite's machine that a statement may take before it fails, and every later one
    /// with it: about ten for each row looked at. A database that is damaged, or made for it, would
    /// have one go on for ever; these are a hundred thousand mailboxes and a hundred million
    /// messages.
    static constexpr std::uint64_t mostStepsToRead = 2'000'000;
    static constexpr std::uint64_t mostStepsToRemove = 1'000'000'000;

    /// Opens an existing database, read-only where it may not be written; null on failure, and
    /// never a new file. The clock is slept with while the database is locked.
    static std::unique_ptr<EnvelopeIndex> open(const std::string& path, platform::Clock& clock);
    EnvelopeIndex(const EnvelopeIndex&) = delete;
    EnvelopeIndex& operator=(const EnvelopeIndex&) = delete;

    /// Appends every mailbox to `rows`, in the database's order. On failure some may be there, and
    /// the error's detail is SQLite's text.
    platform::Result<platform::Done> readMailboxes(MailboxRows& rows);

    /// Removes the messages of the mailbox whose ROWID is this text, at once and for good. The text
    /// is compared as a value and is never part of a statement: one that is no number matches
    /// nothing. The error's detail is SQLite's text.
    platform::Result<platform::Done> removeMessages(const std::string& rowid);

  private:
    struct Closer {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
    };

    EnvelopeIndex(std::string path, platform::Clock& clock)
        : path_(std::move(path)), clock_(clock) {}
    static int waitForLock(void* index, int attempts);
    static int countSteps(void* index);
    void allowSteps(std::uint64_t most);
    [[nodiscard]] platform::Error lastError(const char* operation) const;

    std::string path_;
    platform::Clock& clock_;
    std::chrono::milliseconds waited_{0};
    std::uint64_t steps_ = 0;  ///< of the statement at hand, or of the one that took too many
    std::uint64_t mostSteps_ = 0;
    std::unique_ptr<sqlite3, Closer> database_;
};

}  // namespace dorvanel
