// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "apps/catalogue/Entry.h"
#include "base/Result.h"
#include "platform/CleaningCalls.h"
#include "platform/Clock.h"

/// Takes traces out of files that also hold what must be kept: rows of a database, keys of a JSON
/// file, all that a file holds. A new file is made beside the old one and the two change names in
/// one step; the old one is handed back to be shredded, so that no block that held a trace is given
/// back to the file system before it has been overwritten.
namespace dorvanel::cleaning {

/// How a file could not be cleaned; reports name each in its own way.
enum class Fault {
    locked,      ///< another program has it open
    corrupt,     ///< it is damaged, or not what it should be
    unreadable,  ///< it cannot be opened, or is not to be written
    failed,      ///< any other reason
};

/// Why a file was left as it is.
struct Trouble {
    Fault fault = Fault::failed;
    Error error;  ///< its path is the file's
};

/// A value, or the trouble that kept it from being made.
template <typename T>
class [[nodiscard]] Cleaned {
  public:
    Cleaned(T value) : state_(std::move(value)) {}
    Cleaned(Trouble trouble) : state_(std::move(trouble)) {}

    [[nodiscard]] bool ok() const { return std::holds_alternative<T>(state_); }
    explicit operator bool() const { return ok(); }

    [[nodiscard]] T& value() { return std::get<T>(state_); }
    [[nodiscard]] const T& value() const { return std::get<T>(state_); }
    [[nodiscard]] const Trouble& trouble() const { return std::get<Trouble>(state_); }

  private:
    std::variant<T, Trouble> state_;
};

/// What one kind of trace asks of a database.
struct Step {
    std::string kind;
    std::vector<catalogue::Statement>
        run;                        ///< in this order; those whose needs are missing are not
    std::vector<std::string> keep;  ///< queries that must answer after `run` as before it
};

/// All that is asked of one database, in one transaction.
struct DatabaseRequest {
    std::string path;
    std::map<std::string, std::string> attach;  ///< paths of other databases by name, read only
    std::vector<Step> steps;
    /// Requests that would be carried out first, of those that are attached; for counting.
    std::vector<DatabaseRequest> before{};
};

/// What one kind of trace asks of a JSON file.
struct JsonStep {
    std::string kind;
    std::vector<std::string> remove;  ///< dotted paths: "profile.exceptions"
};

/// A text without some of its entries.
struct TextRest {
    std::string text;
    std::uint64_t count = 0;  ///< entries removed
};
/// Takes entries out of a text; an error, of no path, where the text is damaged.
using TextEdit = std::function<Result<TextRest>(const std::string& text)>;

/// A cleaned file that waits beside the old one, under a name of its own. A database stays locked
/// for other programs as long as this lives. Where it was not committed, its end removes the new
/// file, overwritten, and leaves the old one as it was.
class Prepared {
  public:
    virtual ~Prepared() = default;
    Prepared(const Prepared&) = delete;
    Prepared& operator=(const Prepared&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    /// Rows or keys that are gone from the new file, by step.
    [[nodiscard]] const std::vector<std::uint64_t>& counts() const { return counts_; }

    /// Puts the new file in the place of the old one, where `stillMay` allows it, which is asked
    /// at the last moment. Any thread, once. `aside` gets the paths of what is to be shredded: the
    /// old file and what belonged to it. After trouble the old file is in its place, whole, and
    /// `aside` has what had already been taken from beside it.
    virtual std::optional<Trouble> commit(const std::function<bool()>& stillMay,
                                          std::vector<std::string>& aside) = 0;

  protected:
    Prepared(std::string path, std::vector<std::uint64_t> counts)
        : path_(std::move(path)), counts_(std::move(counts)) {}

  private:
    std::string path_;
    std::vector<std::uint64_t> counts_;
};

using PreparedFile = std::unique_ptr<Prepared>;

class PreparedDatabases;

/// Prepares files to be cleaned. One thread, the same for all but what `Prepared` says; `calls` and
/// `clock` must outlive it and all that it prepared. A path's last component may not be a link; the
/// folders above it are the caller's to have checked.
class Cleaner {
  public:
    Cleaner(platform::CleaningCalls& calls, platform::Clock& clock);
    ~Cleaner();
    Cleaner(const Cleaner&) = delete;
    Cleaner& operator=(const Cleaner&) = delete;

    /// The database without what the steps remove. An attached database that has been prepared and
    /// neither committed nor ended is read as it will be. `stop` is asked now and then; where it
    /// says true, this ends in trouble. Never null.
    Cleaned<PreparedFile> prepareDatabase(const DatabaseRequest& request,
                                          const std::function<bool()>& stop);
    /// The file without these keys; null where it has none of them.
    Cleaned<PreparedFile> prepareJson(const std::string& path, const std::vector<JsonStep>& steps);
    /// An empty file; null where it is empty already.
    Cleaned<PreparedFile> prepareEmpty(const std::string& path);

    /// The file as `edit` leaves it; null where that takes nothing out.
    Cleaned<PreparedFile> prepareText(const std::string& path, const TextEdit& edit);
    /// What is in a file that could be cleaned. Nothing on the disk is touched.
    Cleaned<std::string> readText(const std::string& path);

    /// How many rows, or keys, each step would remove. Nothing on the disk is touched: no file is
    /// made, locked or written. A database that others write to while it is read counts as locked.
    Cleaned<std::vector<std::uint64_t>> countRows(const DatabaseRequest& request,
                                                  const std::function<bool()>& stop);
    Cleaned<std::vector<std::uint64_t>> countKeys(const std::string& path,
                                                  const std::vector<JsonStep>& steps);

    /// Bytes that `prepareEmpty` would take from the file, likewise.
    Cleaned<std::uint64_t> sizeToEmpty(const std::string& path);

    /// What runs that were killed left beside the file at `path`, for the caller to shred: regular
    /// files of this user under the names that are made here, sorted.
    static std::vector<std::string> leftovers(const std::string& path);
    /// The same for looking only: the medium may not know their names yet.
    static std::vector<std::string> seenLeftovers(const std::string& path);

  private:
    platform::CleaningCalls& calls_;
    platform::Clock& clock_;
    std::shared_ptr<PreparedDatabases> prepared_;
};

}  // namespace dorvanel::cleaning
