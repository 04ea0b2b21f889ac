// SPDX-License-Identifier: MIT
#include "apps/catalogue/EntryCheck.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace dorvanel::catalogue {
namespace {

constexpr std::string_view variables[] = {"$XDG_CONFIG_HOME", "$XDG_CACHE_HOME", "$XDG_DATA_HOME",
                                          "$XDG_STATE_HOME"};

/// Why the components of a relative path lead somewhere else, or nowhere.
std::string faultOfComponents(std::string_view path) {
    while (true) {
        const std::size_t slash = path.find('/');
        const std::string_view component = path.substr(0, slash);
        if (component.empty()) return "has an empty component";
        if (component == "." || component == "..") return "leaves its root";
        if (slash == std::string_view::npos) return {};
        path.remove_prefix(slash + 1);
    }
}

/// Whether a component has both a name in braces and a pattern, which could not be told apart once
/// the name is filled in.
bool hasMixedComponent(std::string_view path) {
    while (!path.empty()) {
        const std::size_t slash = path.find('/');
        const std::string_view component = path.substr(0, slash);
        if (component.find('{') != std::string_view::npos &&
            component.find_first_of("*?") != std::string_view::npos) {
            return true;
        }
        path.remove_prefix(slash == std::string_view::npos ? path.size() : slash + 1);
    }
    return false;
}

bool hasControl(std::string_view text) {
    return std::ranges::any_of(text, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7F;
    });
}

/// The first word of a statement, in capitals.
std::string firstWord(std::string_view sql) {
    std::string word;
    for (const char c : sql) {
        if (std::isalpha(static_cast<unsigned char>(c)) == 0) {
            if (word.empty() && std::isspace(static_cast<unsigned char>(c)) != 0) continue;
            break;
        }
        word += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return word;
}

}  // namespace

std::string faultOfId(std::string_view id) {
    const bool isOne = !id.empty() && id.front() != '-' && std::ranges::all_of(id, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
    });
    return isOne ? "" : "is no ID: small letters, digits and dashes make one";
}

std::string faultOfRoot(std::string_view root) {
    if (hasControl(root)) return "has a control character";
    if (root.starts_with("~/")) return faultOfComponents(root.substr(2));
    for (const std::string_view variable : variables) {
        if (!root.starts_with(variable)) continue;
        root.remove_prefix(variable.size());
        if (root.empty()) return {};
        if (root.front() == '/') return faultOfComponents(root.substr(1));
    }
    return "begins with neither \"~/\" nor an XDG variable";
}

std::string_view rootOf(std::string_view pattern) {
    return pattern.substr(1, pattern.find('}') - 1);
}

std::string faultOfPattern(std::string_view pattern) {
    if (hasControl(pattern)) return "has a control character";
    const std::size_t end = pattern.find('}');
    if (!pattern.starts_with('{') || end == std::string_view::npos || end == 1) {
        return "begins with no root in braces";
    }
    const bool isName = std::ranges::all_of(rootOf(pattern), [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '_';
    });
    if (!isName) return "has a root whose name is more than letters and digits";
    const std::string_view rest = pattern.substr(end + 1);
    if (rest.empty()) return {};
    if (rest.front() != '/') return "goes on behind its root without a slash";
    std::string_view names = rest;
    for (std::size_t open = names.find('{'); open != std::string_view::npos;
         open = names.find('{')) {
        names.remove_prefix(open);
        if (!names.starts_with("{profile.path}") && !names.starts_with("{profile.name}")) {
            return "has a name in braces that stands for nothing";
        }
        names.remove_prefix(1);
    }
    if (std::string fault = faultOfComponents(rest.substr(1)); !fault.empty()) return fault;
    return hasMixedComponent(rest) ? "has a name in braces beside \"*\" or \"?\"" : "";
}

std::string faultOfStatement(std::string_view sql) {
    constexpr std::array<std::string_view, 3> allowed = {"DELETE", "UPDATE", "CREATE"};
    const std::string word = firstWord(sql);
    if (std::ranges::find(allowed, word) == allowed.end()) {
        return "is no DELETE, UPDATE or CREATE TEMP TABLE";
    }
    if (word == "CREATE" && !sql.starts_with("CREATE TEMP TABLE ")) {
        return "makes something that would stay";
    }
    return sql.find(';') == std::string_view::npos ? "" : "is more than one statement";
}

std::string faultOfQuery(std::string_view sql) {
    if (firstWord(sql) != "SELECT") return "is no SELECT";
    return sql.find(';') == std::string_view::npos ? "" : "is more than one query";
}

void inherit(Entry& entry, const Entry& family) {
    if (entry.kind.empty()) entry.kind = family.kind;
    if (entry.icon.empty()) entry.icon = family.icon;
    if (entry.processes.empty()) entry.processes = family.processes;
    if (entry.locks.empty()) entry.locks = family.locks;
    if (entry.installs.empty()) entry.installs = family.installs;
    if (!entry.profiles) entry.profiles = family.profiles;
    for (const Trace& trace : family.traces) {
        const bool isOwn = std::ranges::any_of(
            entry.traces, [&](const Trace& own) { return own.kind == trace.kind; });
        if (!isOwn) entry.traces.push_back(trace);
    }
}

std::vector<std::string> faultsOf(const Entry& entry) {
    std::vector<std::string> faults;
    const auto demand = [&](bool holds, const std::string& fault) {
        if (!holds) faults.push_back(fault);
    };
    demand(!entry.kind.empty(), "it has no kind");
    demand(!entry.installs.empty(), "no [[install]] says where it keeps anything");
    demand(!entry.traces.empty(), "no [[trace]] says what is to go");
    demand(!entry.processes.empty() || entry.kind == "desktop", "no process says when it runs");
    const auto demandRoot = [&](const PathPattern& pattern, bool mayBeProfile) {
        const std::string_view root = rootOf(pattern);
        if (root == "profile") {
            return demand(mayBeProfile && entry.profiles.has_value(),
                          pattern + ": nothing says what {profile} stands for");
        }
        const bool isThere = std::ranges::any_of(entry.installs, [&](const Install& install) {
            return install.roots.contains(std::string(root));
        });
        demand(isThere, pattern + ": no [[install]] has the root {" + std::string(root) + "}");
        demand(entry.profiles.has_value() || pattern.find("{profile.") == std::string::npos,
               pattern + ": nothing says what {profile} stands for");
    };
    if (entry.profiles) demandRoot(entry.profiles->root, false);
    for (const PathPattern& lock : entry.locks) demandRoot(lock, true);
    for (const Trace& trace : entry.traces) {
        for (const PathPattern& path : trace.shred) demandRoot(path, true);
        for (const PathPattern& path : trace.empty) demandRoot(path, true);
        for (const JsonCleaning& json : trace.json) demandRoot(json.file, true);
        for (const DatabaseCleaning& clean : trace.clean) {
            demandRoot(clean.database, true);
            for (const auto& [name, path] : clean.attach) demandRoot(path, true);
        }
    }
    return faults;
}

}  // namespace dorvanel::catalogue
