// SPDX-License-Identifier: MIT
#include "targets/mentions/RecentList.h"

#include <expat.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace dorvanel::mentions {
namespace {

/// Elements nested deeper are no list of a desktop.
constexpr std::size_t deepest = 1000;

/// The parsing of one list. No exception may leave what the parser calls: it is written in C.
class Reading {
  public:
    explicit Reading(std::vector<RecentEntry>& entries)
        : entries_(entries), parser_(XML_ParserCreate(nullptr), XML_ParserFree) {
        if (parser_ == nullptr) return;
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(parser_.get(), begins, ends);
        XML_SetEntityDeclHandler(parser_.get(), declares);
    }

    /// Why the list is none; nothing where it is one.
    std::optional<std::string> read(const std::string& list) {
        if (parser_ == nullptr) return "out of memory";
        constexpr std::size_t most = std::size_t{1} << 20;
        for (std::size_t at = 0; reason_.empty(); at += most) {
            const std::size_t size = std::min(most, list.size() - at);
            const bool isLast = at + size == list.size();
            const XML_Status status =
                XML_Parse(parser_.get(), list.data() + at, static_cast<int>(size), isLast);
            if (status != XML_STATUS_OK && reason_.empty()) {
                reason_ = XML_ErrorString(XML_GetErrorCode(parser_.get()));
            }
            if (isLast) break;
        }
        if (reason_.empty()) return std::nullopt;
        return reason_;
    }

  private:
    static Reading& of(void* user) { return *static_cast<Reading*>(user); }

    /// Does the work; where memory runs out, or the work says why, the parser stops.
    template <typename Work>
    void guarded(Work work) {
        try {
            if (const char* reason = work()) stop(reason);
        } catch (const std::exception&) {
            stop("out of memory");
        }
    }

    static void begins(void* user, const XML_Char* name, const XML_Char** attributes) {
        of(user).guarded([&] { return of(user).begin(name, attributes); });
    }
    static void ends(void* user, const XML_Char* name) {
        of(user).guarded([&] { return of(user).end(name); });
    }
    static void declares(void* user, const XML_Char* /*name*/, int /*isParameter*/,
                         const XML_Char* /*value*/, int /*length*/, const XML_Char* /*base*/,
                         const XML_Char* /*system*/, const XML_Char* /*publicId*/,
                         const XML_Char* /*notation*/) {
        of(user).guarded([] { return "declares entities of its own"; });
    }

    const char* begin(std::string_view name, const XML_Char** attributes) {
        if (depth_ == 0 && name != "xbel") return "is no list of bookmarks";
        if (++depth_ > deepest) return "is nested too deep";
        if (name != "bookmark") return nullptr;
        RecentEntry entry;
        for (; attributes[0] != nullptr; attributes += 2) {
            if (std::string_view(attributes[0]) == "href") entry.uri = attributes[1];
        }
        entry.begin = place();
        open_.push_back(entries_.size());
        entries_.push_back(std::move(entry));
        return nullptr;
    }

    const char* end(std::string_view name) {
        --depth_;
        if (name != "bookmark") return nullptr;
        // Of an element without contents this is one tag, whose end is already the place.
        entries_[open_.back()].end =
            place() + static_cast<std::size_t>(XML_GetCurrentByteCount(parser_.get()));
        open_.pop_back();
        return nullptr;
    }

    void stop(const char* reason) {
        reason_ = reason;
        XML_StopParser(parser_.get(), XML_FALSE);
    }

    std::size_t place() const {
        return static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get()));
    }

    std::vector<RecentEntry>& entries_;
    std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> parser_;
    std::vector<std::size_t> open_;  ///< bookmarks that have begun and not ended, by number
    std::size_t depth_ = 0;
    std::string reason_;
};

/// Where the line begins that the entry has for itself up to its end; else where the entry begins.
std::size_t lineOf(const std::string& list, std::size_t begin) {
    std::size_t line = begin;
    while (line > 0 && (list[line - 1] == ' ' || list[line - 1] == '\t')) --line;
    if (line == 0 || list[line - 1] != '\n') return begin;
    --line;
    return line > 0 && list[line - 1] == '\r' ? line - 1 : line;
}

}  // namespace

Result<std::vector<RecentEntry>> readRecentList(const std::string& list) {
    std::vector<RecentEntry> entries;
    if (const auto reason = Reading(entries).read(list)) return Error{0, "parse", {}, *reason};
    return entries;
}

Result<std::string> withoutEntries(const std::string& list,
                                   const std::vector<RecentEntry>& entries) {
    const Result<std::vector<RecentEntry>> all = readRecentList(list);
    if (!all) return all.error();
    // Where a character has more than one byte, blanks and line breaks have zeros among them.
    const bool hasLines = list.find('\0') == std::string::npos;
    std::string rest;
    std::vector<std::string> kept;
    std::size_t copied = 0;  // up to here the list has been copied or passed over
    const auto isTaken = [&entries](const RecentEntry& entry) {
        return std::ranges::binary_search(entries, entry.begin, {}, &RecentEntry::begin);
    };
    for (const RecentEntry& entry : all.value()) {
        if (entry.begin < copied) continue;  // within one that goes
        if (!isTaken(entry)) {
            kept.push_back(entry.uri);
            continue;
        }
        const std::size_t begin =
            std::max(copied, hasLines ? lineOf(list, entry.begin) : entry.begin);
        rest.append(list, copied, begin - copied);
        copied = entry.end;
    }
    rest.append(list, copied);

    const Result<std::vector<RecentEntry>> left = readRecentList(rest);
    if (!left) return left.error();
    if (!std::ranges::equal(left.value(), kept, {}, &RecentEntry::uri)) {
        return Error{0, "parse", {}, "the rest is not what it should be"};
    }
    return rest;
}

}  // namespace dorvanel::mentions
