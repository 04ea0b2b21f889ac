// SPDX-License-Identifier: MIT
#include "support/SampleProfiles.h"

#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <utility>

#include "support/Schemas.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

struct Closer {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};

/// Pages 1 to 6 are bookmarked, page 7 has a keyword, every twentieth was downloaded from.
constexpr std::string_view placesRows = R"sql(
INSERT INTO moz_origins (id, prefix, host, frecency) VALUES (1, 'https://', 'kept.example', 2000),
  (2, 'https://', 'seen.example', 100);
INSERT INTO moz_places (id, url, title, rev_host, visit_count, typed, frecency, last_visit_date,
  guid, foreign_count, origin_id)
  SELECT n, 'https://kept.example/page/' || n, 'Page ' || n || ', kept', 'elpmaxe.', 3, 1,
  2000, 1760000000000000 + n, printf('kept%08d', n), 1, 1 FROM pages WHERE n <= 7;
INSERT INTO moz_places (id, url, title, rev_host, visit_count, frecency, last_visit_date, guid,
  origin_id, description)
  SELECT n, 'https://seen.example/page/' || n, 'Page ' || n || ', only seen', 'elpmaxe.', 1,
  100, 1760000000000000 + n, printf('seen%08d', n), 2, 'What was seen on page ' || n FROM pages
  WHERE n > 7;
INSERT INTO moz_historyvisits (from_visit, place_id, visit_date, visit_type)
  SELECT n - 1, n, 1760000000000000 + n, CASE WHEN n % 20 = 0 THEN 7 ELSE 1 END FROM pages;
INSERT INTO moz_inputhistory SELECT n, 'seen ' || n, 1 FROM pages WHERE n % 10 = 0;
INSERT INTO moz_places_metadata (place_id, referrer_place_id, created_at, total_view_time)
  SELECT n, n - 1, 1760000000000 + n, 5000 FROM pages WHERE n % 5 = 0;
INSERT INTO moz_anno_attributes VALUES (1, 'downloads/destinationFileURI'),
  (2, 'downloads/metaData');
INSERT INTO moz_annos (place_id, anno_attribute_id, content)
  SELECT n, 1, 'file:///home/jo/Downloads/seen-' || n || '.pdf' FROM pages WHERE n % 20 = 0;
INSERT INTO moz_annos (place_id, anno_attribute_id, content)
  SELECT n, 2, '{"state":1,"endTime":1760000000000}' FROM pages WHERE n % 20 = 0;
INSERT INTO moz_bookmarks (id, type, parent, position, title, guid) VALUES
  (1, 2, 0, 0, '', 'root________'), (2, 2, 1, 0, 'menu', 'menu________'),
  (3, 2, 1, 1, 'toolbar', 'toolbar_____'), (4, 2, 1, 2, 'tags', 'tags________'),
  (5, 2, 1, 3, 'unfiled', 'unfiled_____'), (6, 2, 1, 4, 'mobile', 'mobile______');
INSERT INTO moz_bookmarks (type, fk, parent, position, title, guid)
  SELECT 1, n, 3, n, 'Bookmark ' || n || ', kept', printf('bookmark%04d', n) FROM pages
  WHERE n <= 6;
INSERT INTO moz_keywords (keyword, place_id) VALUES ('kept', 7);
)sql";

constexpr std::string_view faviconsRows = R"sql(
INSERT INTO moz_icons (id, icon_url, fixed_icon_url_hash, width, root, data) VALUES
  (1, 'https://kept.example/favicon.ico', 1, 32, 1, zeroblob(1200)),
  (2, 'https://seen.example/favicon.ico', 2, 32, 1, zeroblob(1200));
INSERT INTO moz_pages_w_icons SELECT n, 'https://' || CASE WHEN n <= 7 THEN 'kept' ELSE 'seen' END
  || '.example/page/' || n, n FROM pages;
INSERT INTO moz_icons_to_pages (page_id, icon_id)
  SELECT n, CASE WHEN n <= 7 THEN 1 ELSE 2 END FROM pages;
)sql";

constexpr std::string_view cookiesRows = R"sql(
INSERT INTO moz_cookies (name, value, host, path, expiry, lastAccessed, creationTime, isSecure,
  isHttpOnly) SELECT 'id' || n, 'seen' || n * 7919, 'seen.example', '/', 1800000000,
  1760000000000000, 1760000000000000, 1, 1 FROM pages WHERE n <= 60;
)sql";

constexpr std::string_view formRows = R"sql(
INSERT INTO moz_formhistory (fieldname, value, timesUsed, firstUsed, lastUsed, guid)
  SELECT 'searchbar-history', 'seen words ' || n, 1, 1760000000000000, 1760000000000000,
  printf('form%012d', n) FROM pages WHERE n <= 40;
)sql";

constexpr std::string_view permissionRows = R"sql(
INSERT INTO moz_perms (origin, type, permission) VALUES
  ('https://kept.example', 'desktop-notification', 1),
  ('moz-extension://6d1f8c1e-8f5b-4e6b-9a54-0c6a2f9b3d11', 'persistent-storage', 1);
INSERT INTO moz_origin_interactions SELECT 'https://seen' || n || '.example', 1760000000000 FROM
  pages WHERE n <= 30;
)sql";

constexpr std::string_view zoomRows = R"sql(
INSERT INTO groups VALUES (1, 'seen.example');
INSERT INTO settings VALUES (1, 'browser.content.full-zoom');
INSERT INTO prefs VALUES (1, 1, 1, 1.2, 1760000000);
)sql";

constexpr std::string_view historyRows = R"sql(
INSERT INTO meta VALUES ('version', '70'), ('last_compatible_version', '16');
INSERT INTO urls (id, url, title, visit_count, typed_count, last_visit_time)
  SELECT n, 'https://seen.example/page/' || n, 'Page ' || n || ', only seen', 1, 0,
  13400000000000000 + n FROM pages;
INSERT INTO visits (id, url, visit_time, from_visit, transition)
  SELECT n, n, 13400000000000000 + n, n - 1, 805306368 FROM pages;
INSERT INTO keyword_search_terms SELECT 2, n, 'Seen words ' || n, 'seen words ' || n FROM pages
  WHERE n % 8 = 0;
INSERT INTO segments SELECT n, 'http://seen.example/' || n, n FROM pages WHERE n <= 5;
INSERT INTO downloads (id, guid, current_path, target_path, start_time, received_bytes, total_bytes,
  state, danger_type, interrupt_reason, hash, end_time, opened, last_access_time, transient,
  referrer, site_url, embedder_download_data, tab_url, tab_referrer_url, http_method, by_ext_id,
  by_ext_name, by_web_app_id, etag, last_modified, mime_type, original_mime_type)
  SELECT n, printf('00000000-0000-4000-8000-%012d', n), '/home/jo/Downloads/seen-' || n || '.pdf',
  '/home/jo/Downloads/seen-' || n || '.pdf', 13400000000000000, 4096, 4096, 1, 0, 0, '',
  13400000000000000, 0, 0, 0, '', '', '', 'https://seen.example/page/' || n, '', '', '', '', '', '',
  '', 'application/pdf', 'application/pdf' FROM pages WHERE n <= 12;
INSERT INTO downloads_url_chains SELECT n, 0, 'https://seen.example/seen-' || n || '.pdf' FROM pages
  WHERE n <= 12;
)sql";

constexpr std::string_view webDataRows = R"sql(
INSERT INTO autofill (name, value, value_lower) SELECT 'q', 'seen words ' || n, 'seen words ' || n
  FROM pages WHERE n <= 25;
INSERT INTO addresses (guid, use_count, label) VALUES
  ('00000000-0000-4000-8000-000000000001', 2, 'Home, kept');
INSERT INTO keywords (id, short_name, keyword, favicon_url, url, usage_count, last_visited) VALUES
  (2, 'Kept search', 'kept.example', '', 'https://kept.example/?q={searchTerms}', 9, 1);
)sql";

constexpr std::string_view chromiumCookiesRows = R"sql(
INSERT INTO cookies SELECT 13400000000000000 + n, '.seen.example', '', 'id' || n, '', zeroblob(64),
  '/', 13500000000000000, 1, 1, 13400000000000000, 1, 1, 1, 0, 2, 443, 13400000000000000, 1, 0 FROM
  pages WHERE n <= 45;
)sql";

constexpr std::string_view chromiumFaviconsRows = R"sql(
INSERT INTO favicons VALUES (1, 'https://seen.example/favicon.ico', 1);
INSERT INTO favicon_bitmaps (icon_id, image_data, width, height) VALUES (1, zeroblob(1200), 32, 32);
INSERT INTO icon_mapping SELECT n, 'https://seen.example/page/' || n, 1 FROM pages;
)sql";

constexpr std::string_view loginsRows = R"sql(
INSERT INTO logins (origin_url, username_element, username_value, password_element, password_value,
  signon_realm, date_created, blacklisted_by_user, scheme)
  SELECT 'https://kept' || n || '.example/login', 'user', 'jo', 'password', zeroblob(32),
  'https://kept' || n || '.example/', 13400000000000000, 0, 0 FROM pages WHERE n <= 3;
)sql";

constexpr std::string_view mailIndexRows = R"sql(
INSERT INTO folderLocations VALUES (1, 'mailbox://jo@pop.example.org/Inbox', 0, 'Inbox', 50);
INSERT INTO conversations SELECT n, 'Letter ' || n, 1760000000, 1760000000 FROM pages WHERE n <= 20;
INSERT INTO messages (id, folderID, messageKey, conversationID, date, headerMessageID)
  SELECT n, 1, n, n, 1760000000, n || '@example.org' FROM pages WHERE n <= 20;
INSERT INTO messagesText_content SELECT n, 'Dear Jo, this is letter ' || n, 'Letter ' || n, '',
  'Anna', 'Jo' FROM pages WHERE n <= 20;
)sql";

constexpr std::string_view keptAddressRows = R"sql(
INSERT INTO properties SELECT printf('card-%d', n), 'PrimaryEmail', 'kept' || n || '@example.org'
  FROM pages WHERE n <= 8;
)sql";

constexpr std::string_view collectedAddressRows = R"sql(
INSERT INTO properties SELECT printf('card-%d', n), 'PrimaryEmail', 'seen' || n || '@example.org'
  FROM pages WHERE n <= 30;
)sql";

/// Mails as an mbox file holds them.
std::string mailbox(const std::string& word, int mails) {
    std::string text;
    for (int i = 1; i <= mails; ++i) {
        const std::string number = std::to_string(i);
        text += "From - Thu Oct 09 08:53:20 2025\nX-Mozilla-Status: 0001\nFrom: anna@example.org\n";
        text += "To: jo@example.org\nSubject: Letter " + number + ", " + word + "\n";
        text += "Message-ID: <" + word + number + "@example.org>\n\nDear Jo,\n\nthis is " + word;
        text += ".\n\nYours, Anna\n\n";
    }
    return text;
}

}  // namespace

SampleProfiles::SampleProfiles(std::filesystem::path home, std::uint32_t seed)
    : home_(std::move(home)), random_(seed) {
    std::filesystem::create_directories(home_);
}

void SampleProfiles::addEverything() {
    addFirefox();
    addChromium();
    addThunderbird();
    addDesktop();
}

void SampleProfiles::addFirefox() {
    const std::string config = ".config/mozilla/firefox/";
    write(config + "profiles.ini",
          "[Profile1]\nName=default\nIsRelative=1\nPath=a8b2c4d6.default\nDefault=1\n\n"
          "[Profile0]\nName=default-release\nIsRelative=1\nPath=k3v9q1xz.default-release\n\n"
          "[General]\nStartWithLastProfile=1\nVersion=2\n\n"
          "[Install4F96D1932A9F858E]\nDefault=k3v9q1xz.default-release\nLocked=1\n");
    write(config + "installs.ini",
          "[4F96D1932A9F858E]\nDefault=k3v9q1xz.default-release\nLocked=1\n");
    write(config + "a8b2c4d6.default/times.json",
          "{\n\"created\": 1760000000000,\n\"firstUse\": null\n}\n");
    addFirefoxProfile(config + "k3v9q1xz.default-release/");
    addCache(".cache/mozilla/firefox/k3v9q1xz.default-release/cache2/entries", 150);
    addNoise(".cache/mozilla/firefox/k3v9q1xz.default-release/cache2/index", 9000);
    addNoise(".cache/mozilla/firefox/k3v9q1xz.default-release/startupCache/startupCache.8.little",
             80'000);
}

void SampleProfiles::addFirefoxProfile(const std::string& profile) {
    addDatabase(profile + "places.sqlite", schema::places, placesRows);
    addDatabase(profile + "favicons.sqlite", schema::favicons, faviconsRows);
    addDatabase(profile + "cookies.sqlite", schema::cookies, cookiesRows);
    addDatabase(profile + "formhistory.sqlite", schema::formHistory, formRows);
    addDatabase(profile + "permissions.sqlite", schema::permissions, permissionRows);
    addDatabase(profile + "content-prefs.sqlite", schema::contentPreferences, zoomRows);
    write(profile + "prefs.js",
          "// Mozilla User Preferences\n\n"
          "user_pref(\"browser.startup.homepage\", \"https://kept.example/\");\n");
    write(profile + "logins.json",
          R"({"nextId":4,"logins":[)"
          R"({"id":1,"hostname":"https://kept1.example","encryptedPassword":"a2VwdA=="},)"
          R"({"id":2,"hostname":"https://kept2.example","encryptedPassword":"a2VwdA=="},)"
          R"({"id":3,"hostname":"https://kept3.example","encryptedPassword":"a2VwdA=="}],)"
          R"("potentiallyVulnerablePasswords":[],"version":3})");
    addNoise(profile + "key4.db", 36'864);
    addNoise(profile + "cert9.db", 28'672);
    addNoise(profile + "extensions/helper@kept.example.xpi", 40'000);
    addNoise(profile + "bookmarkbackups/bookmarks-2025-10-09_6_kept.jsonlz4", 2000);
    addNoise(profile + "sessionstore.jsonlz4", 12'000);
    addNoise(profile + "sessionstore-backups/previous.jsonlz4", 11'000);
    addNoise(profile + "sessionstore-backups/upgrade.jsonlz4-20251001000000", 10'000);
    addNoise(profile + "storage/default/https+++seen.example/ls/data.sqlite", 6144);
    addNoise(profile + "storage/default/https+++seen.example/.metadata-v2", 60);
    addNoise(profile +
                 "storage/default/moz-extension+++6d1f8c1e-8f5b-4e6b-9a54-0c6a2f9b3d11/"
                 ".metadata-v2",
             60);
    addNoise(profile + "datareporting/archived/2025-10/1.main.jsonlz4", 15'000);
    write(profile + "crashes/store.json.mozlz4", "seen");
}

void SampleProfiles::addChromium() {
    write(".config/chromium/Local State",
          R"({"profile":{"info_cache":{"Default":{"name":"Jo"},"Profile 1":{"name":"Work"}},)"
          R"("last_used":"Default"}})");
    for (const std::string profile : {"Default/", "Profile 1/"}) {
        addChromiumProfile(".config/chromium/" + profile, ".cache/chromium/" + profile);
    }
}

void SampleProfiles::addChromiumProfile(const std::string& profile, const std::string& cache) {
    addDatabase(profile + "History", schema::chromiumHistory, historyRows);
    addDatabase(profile + "Favicons", schema::chromiumFavicons, chromiumFaviconsRows);
    addDatabase(profile + "Web Data", schema::webData, webDataRows);
    addDatabase(profile + "Login Data", schema::logins, loginsRows);
    addDatabase(profile + "Cookies", schema::chromiumCookies, chromiumCookiesRows);
    write(profile + "Bookmarks",
          R"({"roots":{"bookmark_bar":{"children":[)"
          R"({"id":"4","name":"One, kept","type":"url","url":"https://kept.example/1"},)"
          R"({"id":"5","name":"Two, kept","type":"url","url":"https://kept.example/2"}],)"
          R"("id":"1","name":"Bookmarks bar","type":"folder"}},"version":1})");
    write(profile + "Preferences",
          R"({"homepage":"https://kept.example/","profile":{"name":"kept","content_settings":)"
          R"({"exceptions":{"site_engagement":{"https://seen.example:443,*":{"setting":)"
          R"({"rawScore":2.1}}},"notifications":{"https://seen.example:443,*":{"setting":1}}}}}})");
    addNoise(profile + "Top Sites", 20'480);
    addNoise(profile + "Visited Links", 131'072);
    addNoise(profile + "Sessions/Session_13400000000000000", 8000);
    addNoise(profile + "Sessions/Tabs_13400000000000000", 4000);
    addNoise(profile + "Local Storage/leveldb/000003.log", 5000);
    addNoise(profile + "Extensions/keptkeptkeptkeptkeptkeptkeptkept/1.0_0/manifest.json", 900);
    addCache(cache + "Cache/Cache_Data", 60);
    addCache(cache + "Code Cache/js", 20);
}

void SampleProfiles::addThunderbird() {
    const std::string profile = ".thunderbird/m5n7p9r1.default-release/";
    const std::string mail = profile + "Mail/pop.example.org/";
    write(".thunderbird/profiles.ini",
          "[Profile0]\nName=default-release\nIsRelative=1\nPath=m5n7p9r1.default-release\n"
          "Default=1\n\n[General]\nStartWithLastProfile=1\nVersion=2\n");
    write(mail + "Inbox", mailbox("kept", 20));
    addNoise(mail + "Inbox.msf", 9000);
    write(mail + "Trash", mailbox("seen", 15));
    addNoise(mail + "Trash.msf", 7000);
    write(mail + "msgFilterRules.dat", "version=\"9\"\nlogging=\"no\"\n");
    addDatabase(profile + "global-messages-db.sqlite", schema::mailIndex, mailIndexRows);
    addDatabase(profile + "abook.sqlite", schema::addressBook, keptAddressRows);
    addDatabase(profile + "history.sqlite", schema::addressBook, collectedAddressRows);
    write(profile + "prefs.js",
          "user_pref(\"mail.server.server1.hostname\", \"pop.example.org\");\n");
    addCache(".cache/thunderbird/m5n7p9r1.default-release/cache2/entries", 12);
}

void SampleProfiles::addDesktop() {
    write(".local/share/recently-used.xbel",
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xbel version=\"1.0\">\n"
          "  <bookmark href=\"file:///home/jo/Documents/seen.odt\""
          " modified=\"2025-10-09T08:53:20Z\"/>\n</xbel>\n");
    for (int i = 0; i < 40; ++i) {
        const std::string folder = i % 2 == 0 ? "normal/" : "large/";
        const std::string number = std::to_string(10 + i);
        addNoise(".cache/thumbnails/" + folder + "d41d8cd98f00b204e9800998ecf842" + number + ".png",
                 4000 + 500 * static_cast<std::size_t>(i));
    }
    write("Documents/Kept.odt", "kept");
    write("Downloads/kept.pdf", "kept");
}

void SampleProfiles::write(const std::string& path, const std::string& contents) {
    writeFile(home_ / path, contents);
}

void SampleProfiles::addNoise(const std::string& path, std::size_t size) {
    std::string bytes;
    bytes.reserve(size);
    while (bytes.size() < size) bytes += static_cast<char>(random_() & 0xFF);
    write(path, bytes);
}

void SampleProfiles::addCache(const std::string& path, int files) {
    for (int i = 0; i < files; ++i) {
        std::string name;
        while (name.size() < 40) name += "0123456789ABCDEF"[random_() % 16];
        addNoise(path + "/" + name, 2048 + random_() % 60'000);
    }
}

void SampleProfiles::addDatabase(const std::string& path, std::string_view schema,
                                 std::string_view rows) {
    const std::string file = home_ / path;
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    sqlite3* opened = nullptr;
    const int result = sqlite3_open(file.c_str(), &opened);
    const std::unique_ptr<sqlite3, Closer> database(opened);
    const std::string statements =
        "PRAGMA synchronous=OFF; BEGIN; CREATE TEMP TABLE pages AS WITH RECURSIVE c(n) AS "
        "(SELECT 1 UNION ALL SELECT n + 1 FROM c WHERE n < 400) SELECT n FROM c;" +
        std::string(schema) + std::string(rows) + "COMMIT;";
    if (result != SQLITE_OK ||
        sqlite3_exec(opened, statements.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(file + ": " + sqlite3_errmsg(opened));
    }
}

}  // namespace dorvanel::test
