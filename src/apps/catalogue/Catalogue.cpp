// SPDX-License-Identifier: MIT
#include "apps/catalogue/Catalogue.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <utility>

#include "apps/catalogue/EntryCheck.h"
#include "apps/catalogue/EntryReader.h"
#include "base/PathComponents.h"
#include "platform/ReplaceFile.h"
#include "platform/Resources.h"

namespace dorvanel::catalogue {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view suffix = ".toml";

ReadEntry readOne(const std::string& path) {
    const auto bytes = platform::readWholeFile(path, largestFile);
    if (!bytes) return {std::nullopt, {{0, bytes.error().message()}}};
    if (!bytes.value()) return {std::nullopt, {{0, "does not exist"}}};
    return readEntry(fs::path(path).stem().native(), *bytes.value());
}

/// The files of both folders by ID.
std::map<std::string, std::string> filesOf(const Folders& folders,
                                           const platform::FileManager& files) {
    std::map<std::string, std::string> paths;
    for (const std::string& folder : {folders.shipped, folders.own}) {
        if (folder.empty()) continue;
        for (const std::string& name : files.directoryContentsAtPath(folder)) {
            if (!name.ends_with(suffix)) continue;
            paths[name.substr(0, name.size() - suffix.size())] =
                appendingPathComponent(folder, name);
        }
    }
    return paths;
}

/// Adds what the families of an entry have, nearest first. Returns the fault, if there is one.
template <typename Find>
std::string takeOver(Entry& entry, Find find) {
    std::vector<std::string> met = {entry.id};
    for (std::string family = entry.family; !family.empty();) {
        if (std::ranges::find(met, family) != met.end()) {
            return "its family \"" + family + "\" leads back to itself";
        }
        const Entry* other = find(family);
        if (other == nullptr) return "its family \"" + family + "\" is not there";
        inherit(entry, *other);
        met.push_back(family);
        family = other->family;
    }
    return {};
}

/// Completes an entry; false where it has a fault, which is added.
template <typename Find>
bool complete(Entry& entry, Find find, std::vector<Problem>& problems) {
    if (std::string fault = takeOver(entry, find); !fault.empty()) {
        problems.push_back({0, std::move(fault)});
        return false;
    }
    for (std::string& fault : faultsOf(entry)) problems.push_back({0, std::move(fault)});
    return problems.empty();
}

}  // namespace

Folders catalogueFolders() {
    std::string config;
    if (const char* set = std::getenv("XDG_CONFIG_HOME"); set != nullptr && set[0] == '/') {
        config = set;
    } else if (const std::string home = platform::homeDirectory(); !home.empty()) {
        config = home + "/.config";
    }
    return {platform::catalogueFolder(),
            config.empty() ? config : config + "/dorvanel/applications"};
}

Catalogue Catalogue::load(const Folders& folders, const platform::FileManager& files) {
    Catalogue made;
    std::map<std::string, Entry> read;
    const std::map<std::string, std::string> paths = filesOf(folders, files);
    const auto tell = [&](const std::string& id, const Problem& problem) {
        made.faults_.push_back({paths.at(id), problem});
    };
    for (const auto& [id, path] : paths) {
        ReadEntry one = readOne(path);
        for (const Problem& problem : one.problems) tell(id, problem);
        if (one.entry) read.emplace(id, std::move(*one.entry));
    }
    const auto find = [&](const std::string& id) {
        const auto found = read.find(id);
        return found == read.end() ? nullptr : &found->second;
    };
    for (const auto& [id, described] : read) {
        Entry entry = described;
        std::vector<Problem> problems;
        if (complete(entry, find, problems)) made.entries_.push_back(std::move(entry));
        for (const Problem& problem : problems) tell(id, problem);
    }
    return made;
}

const Entry* Catalogue::find(const std::string& id) const {
    const auto found = std::ranges::find(entries_, id, &Entry::id);
    return found == entries_.end() ? nullptr : &*found;
}

std::string textOf(const std::string& file, const Problem& problem) {
    const std::string line = problem.line > 0 ? ":" + std::to_string(problem.line) : std::string();
    return file + line + ": " + problem.reason;
}

ReadEntry readFile(const std::string& path, const Catalogue& others) {
    ReadEntry read = readOne(path);
    if (!read.entry) return read;
    const auto find = [&](const std::string& id) { return others.find(id); };
    if (!complete(*read.entry, find, read.problems)) read.entry.reset();
    return read;
}

}  // namespace dorvanel::catalogue
