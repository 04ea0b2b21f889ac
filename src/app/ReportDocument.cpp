// SPDX-License-Identifier: MIT
#include "app/ReportDocument.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <ctime>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "base/Base64.h"
#include "base/Utf8.h"

namespace dorvanel {
namespace {

using Json = nlohmann::ordered_json;

std::string textOf(const Json& value) {
    return value.dump(2, ' ', false, Json::error_handler_t::replace);
}

/// The text of a value, all lines but the first moved in. No string of it holds a line feed, which
/// is always written as an escape.
std::string indentedTextOf(const Json& value, int columns) {
    const std::string margin = "\n" + std::string(static_cast<std::size_t>(columns), ' ');
    const std::string text = textOf(value);
    std::string indented;
    indented.reserve(text.size() * 2);
    for (const char c : text) {
        if (c == '\n') {
            indented += margin;
        } else {
            indented += c;
        }
    }
    return indented;
}

/// Bytes of a path, and where they are no UTF-8 once more in a form that loses nothing.
void addPath(Json& object, const std::string& key, const std::string& path) {
    object[key] = path;
    if (isUtf8(path)) return;
    object[key == "path" ? "bytes64" : key + "_bytes64"] = base64Of(path);
}

void addPaths(Json& object, const std::string& key, const std::vector<std::string>& paths) {
    object[key] = paths;
    if (std::ranges::all_of(paths, isUtf8)) return;
    Json encoded = Json::array();
    for (const std::string& path : paths) encoded.push_back(base64Of(path));
    object[key + "_bytes64"] = std::move(encoded);
}

void addText(Json& object, const char* key, const std::string& text) {
    if (!text.empty()) object[key] = text;
}

void addCount(Json& object, const char* key, std::uint64_t count) {
    if (count > 0) object[key] = count;
}

const char* wordFor(PlanItem::Action action) {
    switch (action) {
        case PlanItem::Action::shred:
            return "shred";
        case PlanItem::Action::clean:
            return "clean";
        case PlanItem::Action::mention:
            break;
    }
    return "mention";
}

const char* wordFor(PlanNote::Kind kind) {
    switch (kind) {
        case PlanNote::Kind::link:
            return "link";
        case PlanNote::Kind::hardLink:
            return "hard-link";
        case PlanNote::Kind::medium:
            return "medium";
        case PlanNote::Kind::shared:
            return "shared";
        case PlanNote::Kind::unreadable:
            return "unreadable";
        case PlanNote::Kind::open:
            break;
    }
    return "open";
}

const char* wordFor(PlanSkip::Reason reason) {
    switch (reason) {
        case PlanSkip::Reason::running:
            return "running";
        case PlanSkip::Reason::mount:
            return "mount";
        case PlanSkip::Reason::unreadable:
            return "unreadable";
        case PlanSkip::Reason::locked:
            return "locked";
        case PlanSkip::Reason::corrupt:
            return "corrupt";
        case PlanSkip::Reason::insecure:
            break;
    }
    return "insecure";
}

Json noteOf(const PlanNote& note) {
    Json object = {{"kind", wordFor(note.kind)}};
    addPath(object, "path", note.path);
    if (note.kind == PlanNote::Kind::link) addPath(object, "target", note.target);
    if (note.kind == PlanNote::Kind::hardLink) {
        addPaths(object, "names", note.names);
        object["links"] = note.links;
    }
    addText(object, "detail", note.detail);
    return object;
}

Json notesOf(const PlanItem& item) {
    Json notes = Json::array();
    for (const PlanNote& note : item.notes) notes.push_back(noteOf(note));
    return notes;
}

std::string reasonOf(const ItemOutcome::Trouble& trouble) {
    if (!trouble.reason.empty()) return trouble.reason;
    return trouble.code == 0 ? "unknown" : std::generic_category().message(trouble.code);
}

Json troublesOf(const std::vector<ItemOutcome::Trouble>& troubles) {
    Json list = Json::array();
    for (const ItemOutcome::Trouble& trouble : troubles) {
        Json object;
        addPath(object, "path", trouble.path);
        if (!trouble.was.empty() && trouble.was != trouble.path) {
            addPath(object, "was", trouble.was);
        }
        object["operation"] = trouble.operation;
        object["reason"] = reasonOf(trouble);
        list.push_back(std::move(object));
    }
    return list;
}

Json outcomeOf(const PlanItem& item, const ItemOutcome& outcome, bool isVerified) {
    Json object;
    if (item.isOfList()) {
        object["entries"] = outcome.rows;
    } else if (item.action == PlanItem::Action::clean) {
        object["rows"] = outcome.rows;
    } else {
        object["overwritten"] = outcome.overwritten;
        object["bytes"] = outcome.bytes;
        object["removed"] = outcome.removed;
        if (isVerified) object["verified"] = outcome.verified;
    }
    object["left"] = troublesOf(outcome.left);
    if (!outcome.unwritten.empty()) object["unwritten"] = troublesOf(outcome.unwritten);
    if (!outcome.unverified.empty()) object["unverified"] = troublesOf(outcome.unverified);
    return object;
}

Json itemOf(const PlanItem& item, bool isVerified) {
    Json object;
    addPath(object, "path", item.path);
    object["action"] = wordFor(item.action);
    addText(object, "application", item.application);
    addText(object, "trace", item.trace);
    addText(object, "profile", item.profile);
    if (item.isOfList()) {
        object["entries"] = item.entries;
    } else if (item.action == PlanItem::Action::clean) {
        object["rows"] = item.rows;
        addCount(object, "keys", item.keys);
    } else {
        object["files"] = item.files;
        if (item.action == PlanItem::Action::shred) object["folders"] = item.folders;
        object["bytes"] = item.bytes;
    }
    if (item.action == PlanItem::Action::shred || !item.notes.empty()) {
        object["notes"] = notesOf(item);
    }
    addCount(object, "more_notes", item.moreNotes);
    if (item.outcome) object["outcome"] = outcomeOf(item, *item.outcome, isVerified);
    return object;
}

Json skipOf(const PlanSkip& skip) {
    Json object = Json::object();
    if (!skip.path.empty()) addPath(object, "path", skip.path);
    addText(object, "application", skip.application);
    object["reason"] = wordFor(skip.reason);
    addText(object, "detail", skip.detail);
    return object;
}

Json totalsObject(const Plan& plan) {
    const Totals totals = totalsOf(plan);
    Json object = {{"items", totals.items},
                   {"files", totals.files},
                   {"folders", totals.folders},
                   {"bytes", totals.bytes},
                   {"rows", totals.rows}};
    addCount(object, "keys", totals.keys);
    addCount(object, "entries", totals.entries);
    return object;
}

std::string timeText(std::int64_t seconds) {
    return fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", fmt::gmtime(static_cast<std::time_t>(seconds)));
}

/// Writes an array, each element made only when its turn comes.
template <typename Elements, typename Maker>
void writeArray(const char* key, const Elements& elements, const Maker& jsonOf, std::ostream& out) {
    out << "  \"" << key << "\": [";
    const char* separator = "\n    ";
    for (const auto& element : elements) {
        out << separator << indentedTextOf(jsonOf(element), 4);
        separator = ",\n    ";
    }
    out << (elements.empty() ? "],\n" : "\n  ],\n");
}

}  // namespace

void writeReportDocument(const Plan& plan, const DocumentFrame& frame, std::ostream& out) {
    const auto write = [&](const char* key, const Json& value, const char* end) {
        out << "  \"" << key << "\": " << indentedTextOf(value, 2) << end;
    };
    out << "{\n";
    write("version", 1, ",\n");
    write("program", "Dorvanel X " DORVANEL_VERSION, ",\n");
    write("started", timeText(frame.started), ",\n");
    if (frame.ended) write("ended", timeText(*frame.ended), ",\n");
    writeArray(
        "items", plan.items, [&](const PlanItem& item) { return itemOf(item, frame.isVerified); },
        out);
    writeArray("skipped", plan.skipped, skipOf, out);
    write("totals", totalsObject(plan), ",\n");
    write("status", frame.status, "\n}\n");
}

int previewStatus(const Plan& plan) {
    const auto isAFault = [](const PlanSkip& skip) {
        return skip.reason != PlanSkip::Reason::running;
    };
    return std::ranges::any_of(plan.skipped, isAFault) ? 1 : 0;
}

}  // namespace dorvanel
