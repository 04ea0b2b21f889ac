// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dorvanel::catalogue {

/// The kinds of traces that a person can choose, by the words that catalogue files and preferences
/// have for them.
inline constexpr std::array<std::string_view, 19> traceKinds = {
    "cache",     "history",     "downloads",  "cookies", "forms",   "sessions",  "sitedata",
    "icons",     "permissions", "thumbnails", "logs",    "crashes", "mailindex", "mailcache",
    "collected", "expunged",    "trash",      "junk",    "recent"};

inline constexpr std::array<std::string_view, 3> applicationKinds = {"browser", "mail", "desktop"};
inline constexpr std::array<std::string_view, 3> installNames = {"native", "flatpak", "snap"};

/// A path that is filled in later: it begins with a root, "{config}" or "{profile}" for example,
/// and stays below it. "*" and "?" stand for parts of one component.
using PathPattern = std::string;

/// One way in which the application is installed: where it keeps its things then.
struct Install {
    std::string name;                          ///< one of `installNames`
    std::map<std::string, std::string> roots;  ///< "config": "$XDG_CONFIG_HOME/lynx"
};

/// What "{profile}" stands for.
struct Profiles {
    enum class List {
        mozilla,   ///< profiles.ini
        chromium,  ///< Local State
        pattern,   ///< the folders that match `pattern` below `root`
    };
    List list = List::pattern;
    std::string pattern;
    PathPattern root;
};

/// A statement that is passed over where the tables and columns it needs are not there.
struct Statement {
    std::vector<std::string> needs;  ///< "moz_places", "moz_places.recalc_frecency"
    std::string sql;
};

/// A database that also holds what must be kept.
struct DatabaseCleaning {
    PathPattern database{};
    std::map<std::string, PathPattern> attach{};  ///< other databases by name, read only
    std::vector<Statement> run{};
    std::vector<std::string> keep{};  ///< queries whose answers must be the same afterwards
};

/// A JSON file that loses some keys.
struct JsonCleaning {
    PathPattern file{};
    std::vector<std::string> remove{};  ///< dotted paths
};

/// All that one kind of trace consists of.
struct Trace {
    std::string kind{};        ///< one of `traceKinds`
    bool recommended = false;  ///< a person would not miss it
    std::string why{};         ///< what is lost with it, for people; may be empty
    std::vector<PathPattern> shred{};
    std::vector<PathPattern> empty{};  ///< an empty file takes the place of each
    std::vector<DatabaseCleaning> clean{};
    std::vector<JsonCleaning> json{};
};

/// One application of today, as its file describes it.
struct Entry {
    std::string id;  ///< the file's name without ".toml"
    std::string name;
    std::string kind;  ///< one of `applicationKinds`
    std::string icon;
    std::vector<std::string> processes;  ///< last components of /proc/PID/exe
    std::string family;                  ///< another ID whose parts are taken over; may be empty
    std::vector<PathPattern> locks;
    std::vector<Install> installs;
    std::optional<Profiles> profiles;
    std::vector<Trace> traces;
};

/// What is wrong with a catalogue file.
struct Problem {
    int line = 0;  ///< from 1; 0 where it is the file as a whole
    std::string reason;
};

/// An entry, or what is wrong with its file, by line; never both.
struct ReadEntry {
    std::optional<Entry> entry;
    std::vector<Problem> problems;
};

}  // namespace dorvanel::catalogue
