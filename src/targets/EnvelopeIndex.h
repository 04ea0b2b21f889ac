// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/Result.h"
#include "platform/Clock.h"
#include "targets/cleaning/HeldDatabase.h"
#include "targets/cleaning/ImageFiles.h"
#include "targets/cleaning/KeptJournals.h"

struct sqlite3;

namespace dorvanel {

/// One mailbox of the index: column name to column value, a NULL as "".
using MailboxRow = std::map<std::string, std::string>;
using MailboxRows = std::vector<MailboxRow>;

/// The row callback of the mailboxes query: appends one row to the MailboxRows that `rows` points
/// to and returns 0, so that the query goes on; 1, which ends it, where there is no memory left.
int sqlite_mb_callback(void* rows, int count, char** values, char** names);

/// Apple Mail 2's message index, an SQLite database that Mail owns: a table "mailboxes" and a
/// table "messages" that names the mailbox of each message. Open as long as the object lives.
class EnvelopeIndex {
  public:
    /// How long, in all, an open index waits for another program's lock before its statements
    /// fail: long enough for Mail's background work to let go, short enough for a person who waits
    /// for a run to begin.
    static constexpr std::chrono::milliseconds lockPatience{2000};

    /// How long, by the clock, reading the mailboxes and removing the messages may take: a view or
    /// a trigger made for it can be slow at every step. What takes longer fails.
    static constexpr std::chrono::seconds readingPatience{10};
    static constexpr std::chrono::seconds removalPatience{30};

    /// Steps of SQLite's machine that a statement may take before it fails, and every later one
    /// with it: about ten for each row looked at. A database that is damaged, or made for it, would
    /// have one go on for ever; these are a hundred thousand mailboxes and a hundred million
    /// messages.
    static constexpr std::uint64_t mostStepsToRead = 2'000'000;
    static constexpr std::uint64_t mostStepsToRemove = 1'000'000'000;

    /// Opens an existing database, read-only where it may not be written; never a new file. The
    /// clock is slept with while the database is locked.
    static Result<std::unique_ptr<EnvelopeIndex>> open(const std::string& path,
                                                       platform::Clock& clock);
    /// The same for looking only: what is removed is removed in memory, and nothing of the index,
    /// its logs and locks is touched. `calls` must outlive the index.
    static Result<std::unique_ptr<EnvelopeIndex>> openToLook(const std::string& path,
                                                             platform::Clock& clock,
                                                             platform::CleaningCalls& calls);
    EnvelopeIndex(const EnvelopeIndex&) = delete;
    EnvelopeIndex& operator=(const EnvelopeIndex&) = delete;

    /// Appends every mailbox to `rows`, in the database's order. On failure some may be there, and
    /// the error's detail is SQLite's text. Mailboxes of more than about 128 MiB are not read.
    Result<Done> readMailboxes(MailboxRows& rows);

    /// What became of one mailbox; an error's detail is SQLite's text.
    using Removal = Result<Done>;
    /// Removes the messages of the mailboxes whose ROWIDs are these texts, for good; what became of
    /// each, in their order. A failure leaves the others removed. They go in one transaction, and
    /// one by one where that cannot be had. A text that is a literal is the value that it would be
    /// in a statement; any other is compared as a text and is never part of a statement.
    std::vector<Removal> removeMessages(const std::vector<std::string>& rowids);
    /// How many messages the last `removeMessages` has removed.
    [[nodiscard]] std::uint64_t removedMessages() const { return removed_; }

    /// Closes the index; nothing else may be asked of it afterwards. The journals and logs that
    /// were used up by then, one that a killed program left before among them, hold what was
    /// removed, lie beside the index under names of their own and are to be shredded:
    /// cleaning::Cleaner::leftovers finds them.
    void close() { database_.reset(); }

  private:
    /// The mailboxes as they are read.
    struct Reading {
        MailboxRows* rows;
        std::size_t bytes = 0;
    };
    struct Closer {
        void operator()(sqlite3* database) const;
    };

    EnvelopeIndex(std::string path, platform::Clock& clock)
        : path_(std::move(path)), clock_(clock) {}
    /// Opens the file of this name by what the library knows as `files`.
    Result<Done> open(const std::string& name, const char* files);
    static int waitForLock(void* index, int attempts);
    static int countSteps(void* index);
    static int takeRow(void* reading, int count, char** values, char** names);
    /// Begins a piece of work: no steps are taken, and so much time is left.
    void allowTime(std::chrono::seconds time);
    /// Begins a statement; without effect once one has taken too many steps.
    void allowSteps(std::uint64_t most);
    /// False, with nothing removed, where the mailboxes must go one by one.
    bool removeTogether(const std::vector<std::string>& rowids, std::vector<Removal>& removals);
    Removal removeOne(const std::string& rowid);
    bool runs(const char* statement);
    [[nodiscard]] Error lastError(const char* operation) const;

    std::string path_;
    platform::Clock& clock_;
    std::chrono::milliseconds waited_{0};
    std::uint64_t steps_ = 0;  ///< of the statement at hand, or of the one that took too many
    std::uint64_t mostSteps_ = 0;
    std::chrono::steady_clock::time_point deadline_;
    std::uint64_t removed_ = 0;
    cleaning::KeptJournals journals_;
    std::unique_ptr<cleaning::OldFile> held_;  ///< what is only looked at
    std::unique_ptr<cleaning::ImageFiles> images_;
    std::unique_ptr<sqlite3, Closer> database_;  ///< ends before what it works through
};

}  // namespace dorvanel
