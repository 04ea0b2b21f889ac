// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Clock.h"
#include "targets/cleaning/Cleaning.h"
#include "targets/cleaning/ImageFiles.h"

struct sqlite3;

namespace dorvanel::cleaning {

/// When work on a database ends before it is done.
struct Patience {
    platform::Clock& clock;
    std::chrono::steady_clock::time_point deadline;
    std::function<bool()> stop;  ///< may be empty
};

/// An open database that anybody may have made: what its triggers, views and indexes call runs
/// here, and gets neither files nor code nor unbounded time or memory. One thread at a time.
class Connection {
  public:
    /// The rows of an answer as text; a NULL is nothing.
    using Rows = std::vector<std::vector<std::optional<std::string>>>;

    /// Opens the image that `files` shows under `name`, for this alone: its log or hot journal is
    /// taken in when it is first read. `path` is what trouble is told of.
    static Cleaned<std::unique_ptr<Connection>> open(ImageFiles& files, const std::string& name,
                                                     const std::string& path,
                                                     const Patience& patience);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Lets statements read the image `image` under the name `alias`.
    std::optional<Trouble> attach(const std::string& image, const std::string& alias);

    /// Runs a statement of our own.
    std::optional<Trouble> run(const std::string& sql);
    /// The answer to a question of our own.
    Cleaned<Rows> ask(const std::string& sql);
    /// The same of one value; "" where there is none.
    Cleaned<std::string> askOne(const std::string& sql);

    /// Runs a statement that removes or changes rows of the database, or makes a temporary table;
    /// any other is refused.
    std::optional<Trouble> runCleaning(const std::string& sql);
    /// All that a query answers, as one text. A query for what is not in the database is answered
    /// by that.
    Cleaned<std::string> answer(const std::string& query);
    /// Whether there is this "table", "table.column", or either of an attached database before
    /// which its name stands.
    Cleaned<bool> has(const std::string& needed);

    /// Rows that were removed, changed or added so far, by triggers and references too.
    [[nodiscard]] std::uint64_t changes() const;
    /// Trouble with what the database says of itself.
    [[nodiscard]] Trouble complaint(Fault fault, const std::string& operation,
                                    const std::string& detail) const;
    /// Brings the whole log into the database.
    std::optional<Trouble> takeInLog();

  private:
    struct Closer {
        void operator()(sqlite3* database) const;
    };
    /// What the statement at hand may do.
    enum class Permission { everything, cleaning, reading };

    Connection(ImageFiles& files, std::string path, const Patience& patience)
        : files_(files), path_(std::move(path)), patience_(patience) {}
    static int mayGoOn(void* connection);
    static int mayDo(void* connection, int action, const char* first, const char* second,
                     const char* database, const char* trigger);
    [[nodiscard]] bool maysDo(int action, const char* first, const char* second,
                              const char* database) const;
    void restrain();
    Cleaned<bool> hasColumn(const std::string& database, const std::string& table,
                            const char* column);
    /// What the last call that failed left behind.
    [[nodiscard]] Trouble trouble(int result, const std::string& operation) const;

    ImageFiles& files_;
    std::string path_;
    Patience patience_;
    Permission permission_ = Permission::everything;
    std::string stopped_;  ///< why no statement may go on; "" as long as they may
    std::vector<std::string> attached_;
    std::unique_ptr<sqlite3, Closer> database_;
};

/// A name as it stands in a statement.
std::string quotedName(const std::string& name);

}  // namespace dorvanel::cleaning
