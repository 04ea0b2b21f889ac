#pragma once

#include <string_view>

namespace dorvanel {

/// One file or folder that an application always keeps in the same place.
struct FixedPath {
    constexpr FixedPath() = default;
    constexpr FixedPath(const char* name) : path(name), shredAs(name), skipAs(name) {}

    /// The same path under another name in both lines of the log.
    [[nodiscard]] constexpr FixedPath loggedAs(const char* name) const {
        FixedPath other = *this;
        other.shredAs = other.skipAs = name;
        return other;
    }
    /// The same path under another name in the Skip line only.
    [[nodiscard]] constexpr FixedPath skippedAs(const char* name) const {
        FixedPath other = *this;
        other.skipAs = name;
        return other;
    }

    /// What is shredded: UTF-8; a leading "~" is the home folder, without one the path starts at
    /// the root of the start-up volume.
    std::string_view path;
    std::string_view shredAs;  ///< in the "Shred: " line
    std::string_view skipAs;   ///< in the "Skip: " line
};

/// The paths that one preference key turns on and off; the first empty path ends them.
struct FixedPathGroup {
    std::string_view key{};
    FixedPath paths[5]{};
};

/// What one collector does; the first group without a key ends the groups.
struct FixedPathTargets {
    std::string_view collector;   ///< the operation of `Collectors` that this row stands for
    std::string_view label;       ///< its heading in the log
    std::string_view enableName;  ///< the application to ask for; empty: there is none to ask for
    FixedPathGroup groups[4]{};
};

/// The applications whose traces lie at fixed places, a row for each version. To add one, add its
/// row, its operation in `Collectors` and its place in the order of the shredding run.
///
/// Some keys serve several applications: ShredIEDownloadCache is the switch for every download
/// list, shredSafariFavicon for every page icon, ShredAppleMailJunk for Eudora's junk mail too.
/// "\u0192" is the letter that the log, written in Mac OS Roman, has as the byte 0xC4.
// clang-format off
inline constexpr FixedPathTargets fixedPathCatalogue[] = {
    {"QuicktimeCache", "Quicktime Cache", "",
        {{"ShredQuicktimeCache", {"~/Library/Caches/Quicktime"}}}},

    {"MailCache", "Mail Cache", "Apple Mail",
        {{"ShredMailCache", {"~/Library/Caches/Mail"}}}},

    {"IE51", "IE", "Internet Explorer",
        {{"ShredCache", {
            "~/Library/Caches/MS Internet Cache",
            FixedPath("~/Library/Preferences/MS Internet Cache")
                .skippedAs("~/Preferences/MS Internet Cache")}},
         {"ShredHistory", {"~/Library/Preferences/Explorer/History.html"}},
         {"ShredIEDownloadCache", {
            "~/Library/Preferences/Explorer/Download Cache",
            "~/Library/Preferences/Explorer/Downloads.html"}}}},

    {"iCab28", "iCab", "iCab",
        {{"ShredCache", {"~/Library/Preferences/iCab Preferences/iCab Cache"}},
         {"ShredHistory", {"~/Library/Preferences/iCab Preferences/iCab Global History"}}}},

    // OmniWeb 4 keeps no cache: its cache key is read, and whatever it says changes nothing.
    {"OmniWeb41", "OmniWeb 4", "Omniweb",
        {{"ShredCache", {}},
         {"ShredHistory", {
            "~/Library/Application Support/OmniWeb/HistoryIndex.ox",
            "~/Library/Application Support/OmniWeb/HistoryIndex.ox.lock",
            "~/Library/Application Support/OmniWeb/HistoryIndex.ox.log",
            "~/Library/Application Support/OmniWeb/PersistentHistory.plist"}}}},

    {"OmniWeb51", "OmniWeb 5", "Omniweb",
        {{"ShredCache", {"~/Library/Caches/com.omnigroup.OmniWeb5/Cache.bundle"}},
         {"ShredHistory", {
            "~/Library/Application Support/OmniWeb 5/History.plist",
            "~/Library/Application Support/OmniWeb 5/HistoryIndex.ox",
            "~/Library/Application Support/OmniWeb 5/HistoryIndex.ox.lock",
            "~/Library/Application Support/OmniWeb 5/HistoryIndex.ox.log",
            "~/Library/Application Support/OmniWeb 5/PersistentHistory.plist"}},
         {"shredSafariFavicon", {"~/Library/Caches/com.omnigroup.OmniWeb5/Page Icons"}}}},

    {"Opera50", "Opera 5.x", "Opera",
        {{"ShredCache", {
            FixedPath("~/Library/Preferences/Opera Preferences/Cache \u0192")
                .loggedAs("~/Library/Preferences/Opera Preferences/Cache \xC4")}},
         {"ShredHistory", {
            "~/Library/Preferences/Opera Preferences/Opera Global History",
            "~/Library/Preferences/Opera Preferences/Opera Visited Links",
            "~/Library/Preferences/Opera Preferences/Opera Window Settings"}}}},

    {"Opera60", "Opera 6.x", "Opera",
        {{"ShredCache", {
            FixedPath("~/Library/Preferences/Opera 6 Preferences/Cache \u0192")
                .loggedAs("~/Library/Preferences/Opera 6 Preferences/Cache \xC4")}},
         {"ShredHistory", {
            "~/Library/Preferences/Opera 6 Preferences/Opera Global History",
            "~/Library/Preferences/Opera 6 Preferences/Opera Direct History",
            "~/Library/Preferences/Opera 6 Preferences/vlink4.dat",
            "~/Library/Preferences/Opera 6 Preferences/autopera.win"}},
         {"ShredIEDownloadCache", {
            "~/Library/Preferences/Opera 6 Preferences/Opera Transfer List.xml"}}}},

    {"Opera70", "Opera 7.x", "Opera",
        {{"ShredCache", {
            FixedPath("~/Library/Caches/Opera Cache/Cache \u0192")
                .loggedAs("~/Library/Caches/Opera Cache/Cache \xC4")}},
         {"ShredHistory", {
            "~/Library/Preferences/Opera Preferences/Opera Global History",
            "~/Library/Preferences/Opera Preferences/Opera Direct History",
            "~/Library/Preferences/Opera Preferences/vlink4.dat",
            "~/Library/Preferences/Opera Preferences/vlink4.new"}},
         {"ShredIEDownloadCache", {"~/Library/Preferences/Opera Preferences/download.dat"}},
         {"shredSafariFavicon", {"~/Library/Preferences/Opera Preferences/Icons"}}}},

    {"AppleMail11", "Apple Mail 1.1", "Apple Mail",
        {{"ShredMailTrash", {
            "~/Library/Mail/Mailboxes/Deleted Items.mbox",
            "~/Library/Mail/Mailboxes/Deleted Messages.mbox",
            "~/Library/Mail/Mailboxes/Trash.mbox"}}}},

    {"Eudora51", "Eudora 5.x", "Eudora",
        {{"ShredMailTrash", {"~/Documents/Eudora Folder/Mail Folder/Trash"}}}},

    // Eudora 6 is looked for at the root of the start-up volume as well.
    {"Eudora62", "Eudora 6.x", "Eudora",
        {{"ShredMailTrash", {"/Documents/Eudora Folder/Mail Folder/Trash"}},
         {"ShredAppleMailJunk", {
            "~/Documents/Eudora Folder/Mail Folder/Junk",
            "/Documents/Eudora Folder/Mail Folder/Junk"}}}},

    {"Safari10", "Safari", "Safari",
        {{"ShredCache", {"~/Library/Caches/Safari"}},
         {"ShredHistory", {"~/Library/Safari/History.plist"}},
         {"ShredIEDownloadCache", {"~/Library/Safari/Downloads.plist"}},
         {"shredSafariFavicon", {"~/Library/Safari/Icons"}}}},
};
// clang-format on

}  // namespace dorvanel
