// SPDX-License-Identifier: MIT
#include "targets/cleaning/RowRemoval.h"

#include <cctype>
#include <utility>

namespace dorvanel::cleaning {
namespace {

Trouble failed(const DatabaseRequest& request, const std::string& operation,
               const std::string& detail) {
    return Trouble{Fault::failed, Error{0, operation, request.path, detail}};
}

bool removesRows(const std::string& sql) {
    const std::string_view word = "DELETE";
    const std::size_t start = sql.find_first_not_of(" \t\r\n");
    if (start == std::string::npos || sql.size() - start < word.size()) return false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (std::toupper(static_cast<unsigned char>(sql[start + i])) != word[i]) return false;
    }
    return true;
}

Cleaned<bool> hasAll(Connection& database, const std::vector<std::string>& needs) {
    for (const std::string& needed : needs) {
        auto has = database.has(needed);
        if (!has || !has.value()) return has;
    }
    return true;
}

/// Of a database whose references are themselves wrong, what the library says of them.
Cleaned<DanglingRows> danglingRows(Connection& database) {
    auto rows = database.ask("PRAGMA main.foreign_key_check");
    if (!rows) {
        const Trouble& trouble = rows.trouble();
        if (trouble.error.detail.starts_with("foreign key mismatch")) {
            return DanglingRows{{trouble.error.detail, 1}};
        }
        return trouble;
    }
    DanglingRows dangling;
    for (const auto& row : rows.value()) {
        // Without the row's number, which a copy may give anew.
        ++dangling[row.at(0).value_or("") + " to " + row.at(2).value_or("") + " by " +
                   row.at(3).value_or("")];
    }
    return dangling;
}

/// That fewer dangle is well: some may have been removed.
std::optional<Trouble> noneMore(const DatabaseRequest& request, const DanglingRows& before,
                                const DanglingRows& after) {
    for (const auto& [where, count] : after) {
        const auto found = before.find(where);
        if (found == before.end() || found->second < count) {
            return failed(request, "check", "rows would refer to what is gone: " + where);
        }
    }
    return std::nullopt;
}

Cleaned<std::vector<std::string>> answersOf(Connection& database,
                                            const std::vector<std::string>& queries) {
    std::vector<std::string> answers;
    for (const std::string& query : queries) {
        auto answer = database.answer(query);
        if (!answer) return answer.trouble();
        answers.push_back(std::move(answer.value()));
    }
    return answers;
}

std::vector<std::string> allKept(const DatabaseRequest& request) {
    std::vector<std::string> queries;
    for (const Step& step : request.steps) {
        queries.insert(queries.end(), step.keep.begin(), step.keep.end());
    }
    return queries;
}

Cleaned<std::vector<std::string>> traitsOf(Connection& database) {
    auto traits = answersOf(database, {"SELECT type, name, tbl_name, sql FROM main.sqlite_schema "
                                       "ORDER BY type, name"});
    if (!traits) return traits;
    for (const std::string name :
         {"page_size", "auto_vacuum", "encoding", "user_version", "application_id"}) {
        auto value = database.askOne("PRAGMA main." + name);
        if (!value) return value.trouble();
        traits.value().push_back(std::move(value.value()));
    }
    return traits;
}

/// Steps share no temporary tables: each may use the same name.
std::optional<Trouble> dropTemporaryTables(Connection& database) {
    auto tables = database.ask("SELECT name FROM temp.sqlite_schema WHERE type='table'");
    if (!tables) return tables.trouble();
    for (const auto& row : tables.value()) {
        if (auto bad = database.run("DROP TABLE temp." + quotedName(row.at(0).value_or("")))) {
            return bad;
        }
    }
    return std::nullopt;
}

Cleaned<std::uint64_t> runStep(Connection& database, const DatabaseRequest& request,
                               const Step& step) {
    auto before = answersOf(database, step.keep);
    if (!before) return before.trouble();
    std::uint64_t count = 0;
    for (const catalogue::Statement& statement : step.run) {
        auto can = hasAll(database, statement.needs);
        if (!can) return can.trouble();
        if (!can.value()) continue;
        const std::uint64_t changes = database.changes();
        if (auto bad = database.runCleaning(statement.sql)) return *bad;
        if (removesRows(statement.sql)) count += database.changes() - changes;
    }
    auto after = answersOf(database, step.keep);
    if (!after) return after.trouble();
    if (after.value() != before.value()) {
        return failed(request, "check", "more would be lost than was asked for");
    }
    if (auto bad = dropTemporaryTables(database)) return *bad;
    return count;
}

/// Samples of rows that the library took to plan its queries by, removed ones among them.
std::optional<Trouble> dropSamples(Connection& database) {
    for (const std::string table : {"sqlite_stat3", "sqlite_stat4"}) {
        auto has = database.has(table);
        if (!has) return has.trouble();
        if (!has.value()) continue;
        if (auto bad = database.run("DELETE FROM main." + table)) return bad;
    }
    return std::nullopt;
}

}  // namespace

std::optional<Trouble> isWhole(Connection& database) {
    auto answer = database.askOne("PRAGMA main.integrity_check(1)");
    if (!answer) return answer.trouble();
    if (answer.value() == "ok") return std::nullopt;
    return database.complaint(Fault::corrupt, "check", answer.value());
}

Cleaned<Remains> removeRows(Connection& database, const DatabaseRequest& request) {
    if (auto bad = isWhole(database)) return *bad;
    auto before = danglingRows(database);
    if (!before) return before.trouble();
    if (auto bad = database.run("PRAGMA foreign_keys=ON")) return *bad;
    if (auto bad = database.run("BEGIN IMMEDIATE")) return *bad;
    Remains remains;
    for (const Step& step : request.steps) {
        auto count = runStep(database, request, step);
        if (!count) return count.trouble();
        remains.counts.push_back(count.value());
    }
    if (auto bad = dropSamples(database)) return *bad;
    if (auto bad = isWhole(database)) return *bad;
    auto after = danglingRows(database);
    if (!after) return after.trouble();
    if (auto bad = noneMore(request, before.value(), after.value())) return *bad;
    remains.dangling = std::move(after.value());
    if (auto bad = database.run("COMMIT")) return *bad;
    auto answers = answersOf(database, allKept(request));
    if (!answers) return answers.trouble();
    remains.answers = std::move(answers.value());
    auto traits = traitsOf(database);
    if (!traits) return traits.trouble();
    remains.traits = std::move(traits.value());
    return remains;
}

std::optional<Trouble> isTrueCopy(Connection& copy, const DatabaseRequest& request,
                                  const Remains& remains) {
    if (auto bad = isWhole(copy)) return bad;
    auto dangling = danglingRows(copy);
    if (!dangling) return dangling.trouble();
    auto answers = answersOf(copy, allKept(request));
    if (!answers) return answers.trouble();
    auto traits = traitsOf(copy);
    if (!traits) return traits.trouble();
    if (dangling.value() != remains.dangling || answers.value() != remains.answers ||
        traits.value() != remains.traits) {
        return failed(request, "check", "the compacted copy differs");
    }
    return std::nullopt;
}

}  // namespace dorvanel::cleaning
