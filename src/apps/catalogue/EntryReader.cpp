// SPDX-License-Identifier: MIT
#include "apps/catalogue/EntryReader.h"

#define TOML_EXCEPTIONS 0
#define TOML_ENABLE_FORMATTERS 0
#include <toml++/toml.h>

#include <algorithm>
#include <functional>
#include <span>
#include <utility>

#include "apps/catalogue/EntryCheck.h"

namespace dorvanel::catalogue {
namespace {

int lineOf(const toml::node& node) {
    return static_cast<int>(node.source().begin.line);
}

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

/// Reads the parts of a file, and keeps every fault that it meets.
class Reader {
  public:
    ReadEntry read(const std::string& id, const toml::table& file) {
        Entry entry;
        entry.id = id;
        allow(file, {"name", "kind", "icon", "processes", "family", "locks", "install", "profiles",
                     "trace"});
        entry.name = text(file, "name");
        if (entry.name.empty()) tell(1, "it has no name");
        entry.kind = oneOf(file, "kind", applicationKinds);
        entry.icon = text(file, "icon");
        entry.processes = texts(file, "processes", &Reader::faultOfProcess);
        entry.family = text(file, "family");
        if (!entry.family.empty()) check(file["family"].node(), entry.family, faultOfId);
        entry.locks = texts(file, "locks", faultOfPattern);
        eachTable(file, "install",
                  [&](const toml::table& table) { entry.installs.push_back(install(table)); });
        if (const toml::table* table = file["profiles"].as_table()) {
            entry.profiles = profiles(*table);
        } else if (file.contains("profiles")) {
            tell(file["profiles"].node(), "profiles is no table");
        }
        eachTable(file, "trace",
                  [&](const toml::table& table) { entry.traces.push_back(trace(table)); });
        refuseKindsTwice(entry);
        if (!problems_.empty()) return {std::nullopt, std::move(problems_)};
        return {std::move(entry), {}};
    }

  private:
    using FaultOf = std::function<std::string(std::string_view)>;

    void tell(int line, std::string reason) { problems_.push_back({line, std::move(reason)}); }
    void tell(const toml::node* node, std::string reason) {
        tell(node == nullptr ? 0 : lineOf(*node), std::move(reason));
    }

    void check(const toml::node* node, const std::string& value, const FaultOf& faultOf) {
        const std::string fault = faultOf ? faultOf(value) : std::string();
        if (!fault.empty()) tell(node, quoted(value) + " " + fault);
    }

    void allow(const toml::table& table, std::initializer_list<std::string_view> fields) {
        for (const auto& [key, value] : table) {
            if (std::ranges::find(fields, key.str()) == fields.end()) {
                tell(static_cast<int>(key.source().begin.line),
                     "unknown field " + quoted(key.str()));
            }
        }
    }

    std::string text(const toml::table& table, std::string_view field) {
        const toml::node* node = table.get(field);
        if (node == nullptr) return {};
        if (const auto value = node->value_exact<std::string>()) {
            if (value->empty()) tell(node, std::string(field) + " is empty");
            return *value;
        }
        tell(node, std::string(field) + " is no text");
        return {};
    }

    std::string oneOf(const toml::table& table, std::string_view field,
                      std::span<const std::string_view> words) {
        std::string value = text(table, field);
        if (!value.empty() && std::ranges::find(words, value) == words.end()) {
            tell(table.get(field), quoted(value) + " is no " + std::string(field));
        }
        return value;
    }

    std::vector<std::string> texts(const toml::table& table, std::string_view field,
                                   const FaultOf& faultOf) {
        std::vector<std::string> values;
        const toml::node* node = table.get(field);
        if (node == nullptr) return values;
        const toml::array* array = node->as_array();
        if (array == nullptr) {
            tell(node, std::string(field) + " is no list of texts");
            return values;
        }
        for (const toml::node& item : *array) {
            const auto value = item.value_exact<std::string>();
            if (!value) {
                tell(&item, std::string(field) + " holds what is no text");
                continue;
            }
            check(&item, *value, faultOf);
            values.push_back(*value);
        }
        return values;
    }

    template <typename Call>
    void eachTable(const toml::table& table, std::string_view field, Call call) {
        const toml::node* node = table.get(field);
        if (node == nullptr) return;
        const toml::array* array = node->as_array();
        if (array == nullptr) return tell(node, "[[" + std::string(field) + "]] is written so");
        for (const toml::node& item : *array) {
            if (const toml::table* inner = item.as_table()) {
                call(*inner);
            } else {
                tell(&item, std::string(field) + " holds what is no table");
            }
        }
    }

    static std::string faultOfProcess(std::string_view name) {
        return name.empty() || name.find('/') != std::string_view::npos
                   ? "is not the last component of a program's path"
                   : "";
    }

    Install install(const toml::table& table) {
        Install made;
        made.name = oneOf(table, "name", installNames);
        if (made.name.empty()) tell(&table, "an install has no name");
        for (const auto& [key, value] : table) {
            const std::string name(key.str());
            if (name == "name") continue;
            if (name == "profile" || name.find_first_of("{}./") != std::string::npos) {
                tell(static_cast<int>(key.source().begin.line),
                     quoted(name) + " is no root's name");
                continue;
            }
            const std::string root = text(table, name);
            if (!root.empty()) check(&value, root, faultOfRoot);
            made.roots.emplace(name, root);
        }
        return made;
    }

    Profiles profiles(const toml::table& table) {
        allow(table, {"list", "root"});
        Profiles made;
        made.root = text(table, "root");
        check(&table, made.root, faultOfPattern);
        made.pattern = text(table, "list");
        if (made.pattern == "mozilla") made.list = Profiles::List::mozilla;
        if (made.pattern == "chromium") made.list = Profiles::List::chromium;
        if (made.pattern.empty()) tell(&table, "profiles have no list");
        const bool leaves = !faultOfPattern("{root}/" + made.pattern).empty();
        if (made.list == Profiles::List::pattern && !made.pattern.empty() && leaves) {
            tell(table.get("list"), quoted(made.pattern) + " is no pattern of folders");
        }
        return made;
    }

    Trace trace(const toml::table& table) {
        allow(table, {"kind", "recommended", "why", "shred", "empty", "clean", "json"});
        Trace made;
        made.kind = oneOf(table, "kind", traceKinds);
        if (made.kind.empty()) tell(&table, "a trace has no kind");
        if (const toml::node* node = table.get("recommended")) {
            if (!node->is_boolean()) tell(node, "recommended is neither true nor false");
            made.recommended = node->value_or(false);
        }
        made.why = text(table, "why");
        made.shred = texts(table, "shred", faultOfPattern);
        made.empty = texts(table, "empty", faultOfPattern);
        eachTable(table, "clean",
                  [&](const toml::table& inner) { made.clean.push_back(cleaning(inner)); });
        eachTable(table, "json", [&](const toml::table& inner) {
            allow(inner, {"file", "remove"});
            made.json.push_back({pattern(inner, "file"), texts(inner, "remove", {})});
            if (made.json.back().remove.empty()) tell(&inner, "nothing is removed");
        });
        if (made.shred.empty() && made.empty.empty() && made.clean.empty() && made.json.empty()) {
            tell(&table, "nothing is to go");
        }
        return made;
    }

    PathPattern pattern(const toml::table& table, std::string_view field) {
        PathPattern made = text(table, field);
        if (!table.contains(field)) tell(&table, std::string(field) + " is missing");
        if (!made.empty()) check(table.get(field), made, faultOfPattern);
        return made;
    }

    DatabaseCleaning cleaning(const toml::table& table) {
        allow(table, {"database", "attach", "run", "keep"});
        DatabaseCleaning made;
        made.database = pattern(table, "database");
        if (const toml::node* node = table.get("attach")) {
            if (const toml::table* names = node->as_table()) {
                for (const auto& [key, value] : *names) {
                    made.attach.emplace(key.str(), pattern(*names, key.str()));
                }
            } else {
                tell(node, "attach is no table");
            }
        }
        made.run = statements(table);
        if (made.run.empty()) tell(&table, "nothing is run");
        made.keep = texts(table, "keep", faultOfQuery);
        return made;
    }

    std::vector<Statement> statements(const toml::table& table) {
        std::vector<Statement> made;
        const toml::array* array = table["run"].as_array();
        if (array == nullptr) return made;
        for (const toml::node& item : *array) {
            Statement statement;
            if (const auto sql = item.value_exact<std::string>()) {
                statement.sql = *sql;
            } else if (const toml::table* inner = item.as_table()) {
                allow(*inner, {"needs", "sql"});
                statement.needs = texts(*inner, "needs", {});
                statement.sql = text(*inner, "sql");
            }
            check(&item, statement.sql, faultOfStatement);
            made.push_back(std::move(statement));
        }
        return made;
    }

    void refuseKindsTwice(const Entry& entry) {
        for (std::size_t i = 0; i < entry.traces.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                if (entry.traces[i].kind != entry.traces[j].kind) continue;
                tell(0, "two traces are of the kind " + quoted(entry.traces[i].kind));
            }
        }
    }

    std::vector<Problem> problems_;
};

constexpr const char* notAscii =
    R"(holds a letter that is not ASCII: "\u" and its number stand for it)";

/// The line of the first byte that is not ASCII; 0 where there is none. The library takes some of
/// them, where they stand in the way of something else, for what cannot be.
int lineOfForeignByte(std::string_view bytes) {
    const auto found =
        std::ranges::find_if(bytes, [](char c) { return static_cast<unsigned char>(c) > 0x7F; });
    if (found == bytes.end()) return 0;
    return static_cast<int>(std::count(bytes.begin(), found, '\n')) + 1;
}

}  // namespace

ReadEntry readEntry(const std::string& id, std::string_view bytes) {
    if (const std::string fault = faultOfId(id); !fault.empty()) {
        return {std::nullopt, {{0, quoted(id) + " " + fault}}};
    }
    if (bytes.size() > largestFile) {
        return {std::nullopt, {{0, "is too large for a description of an application"}}};
    }
    if (const int line = lineOfForeignByte(bytes); line != 0) {
        return {std::nullopt, {{line, notAscii}}};
    }
    const toml::parse_result parsed = toml::parse(bytes);
    if (!parsed) {
        const toml::parse_error& error = parsed.error();
        return {std::nullopt,
                {{static_cast<int>(error.source().begin.line), std::string(error.description())}}};
    }
    ReadEntry read = Reader().read(id, parsed.table());
    std::ranges::stable_sort(read.problems, {}, &Problem::line);
    return read;
}

}  // namespace dorvanel::catalogue
