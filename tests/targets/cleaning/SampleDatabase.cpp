// SPDX-License-Identifier: MIT
#include "targets/cleaning/SampleDatabase.h"

#include <memory>
#include <stdexcept>

namespace dorvanel::test {
namespace {

const char* const placesTables = R"(
PRAGMA page_size=32768;
PRAGMA auto_vacuum=INCREMENTAL;
CREATE TABLE moz_origins (id INTEGER PRIMARY KEY, prefix TEXT NOT NULL, host TEXT NOT NULL,
  frecency INTEGER NOT NULL, recalc_frecency INTEGER NOT NULL DEFAULT 0, alt_frecency INTEGER,
  recalc_alt_frecency INTEGER NOT NULL DEFAULT 0, UNIQUE (prefix, host));
CREATE TABLE moz_places (id INTEGER PRIMARY KEY, url LONGVARCHAR, title LONGVARCHAR,
  rev_host LONGVARCHAR, visit_count INTEGER DEFAULT 0, hidden INTEGER DEFAULT 0 NOT NULL,
  typed INTEGER DEFAULT 0 NOT NULL, frecency INTEGER DEFAULT -1 NOT NULL,
  last_visit_date INTEGER, guid TEXT, foreign_count INTEGER DEFAULT 0 NOT NULL,
  url_hash INTEGER DEFAULT 0 NOT NULL, description TEXT, preview_image_url TEXT, site_name TEXT,
  origin_id INTEGER REFERENCES moz_origins(id), recalc_frecency INTEGER NOT NULL DEFAULT 0,
  alt_frecency INTEGER, recalc_alt_frecency INTEGER NOT NULL DEFAULT 0);
CREATE TABLE moz_places_extra (place_id INTEGER PRIMARY KEY NOT NULL, sync_json TEXT,
  FOREIGN KEY (place_id) REFERENCES moz_places(id) ON DELETE CASCADE);
CREATE TABLE moz_historyvisits (id INTEGER PRIMARY KEY, from_visit INTEGER, place_id INTEGER,
  visit_date INTEGER, visit_type INTEGER, session INTEGER, source INTEGER DEFAULT 0 NOT NULL,
  triggeringPlaceId INTEGER);
CREATE TABLE moz_historyvisits_extra (visit_id INTEGER PRIMARY KEY NOT NULL, sync_json TEXT,
  FOREIGN KEY (visit_id) REFERENCES moz_historyvisits(id) ON DELETE CASCADE);
CREATE TABLE moz_inputhistory (place_id INTEGER NOT NULL, input LONGVARCHAR NOT NULL,
  use_count INTEGER, PRIMARY KEY (place_id, input));
CREATE TABLE moz_bookmarks (id INTEGER PRIMARY KEY, type INTEGER, fk INTEGER DEFAULT NULL,
  parent INTEGER, position INTEGER, title LONGVARCHAR, keyword_id INTEGER, folder_type TEXT,
  dateAdded INTEGER, lastModified INTEGER, guid TEXT, syncStatus INTEGER NOT NULL DEFAULT 0,
  syncChangeCounter INTEGER NOT NULL DEFAULT 1);
CREATE TABLE moz_bookmarks_deleted (guid TEXT PRIMARY KEY, dateRemoved INTEGER NOT NULL DEFAULT 0);
CREATE TABLE moz_keywords (id INTEGER PRIMARY KEY AUTOINCREMENT, keyword TEXT UNIQUE,
  place_id INTEGER, post_data TEXT);
CREATE TABLE moz_anno_attributes (id INTEGER PRIMARY KEY, name VARCHAR(32) UNIQUE NOT NULL);
CREATE TABLE moz_annos (id INTEGER PRIMARY KEY, place_id INTEGER NOT NULL,
  anno_attribute_id INTEGER, content LONGVARCHAR, flags INTEGER DEFAULT 0,
  expiration INTEGER DEFAULT 0, type INTEGER DEFAULT 0, dateAdded INTEGER DEFAULT 0,
  lastModified INTEGER DEFAULT 0);
CREATE TABLE moz_items_annos (id INTEGER PRIMARY KEY, item_id INTEGER NOT NULL,
  anno_attribute_id INTEGER, content LONGVARCHAR);
CREATE TABLE moz_meta (key TEXT PRIMARY KEY, value NOT NULL) WITHOUT ROWID;
CREATE TABLE moz_places_metadata (id INTEGER PRIMARY KEY, place_id INTEGER NOT NULL,
  referrer_place_id INTEGER, created_at INTEGER NOT NULL DEFAULT 0,
  updated_at INTEGER NOT NULL DEFAULT 0, total_view_time INTEGER NOT NULL DEFAULT 0,
  search_query_id INTEGER,
  FOREIGN KEY (place_id) REFERENCES moz_places(id) ON DELETE CASCADE,
  FOREIGN KEY (referrer_place_id) REFERENCES moz_places(id) ON DELETE CASCADE,
  FOREIGN KEY (search_query_id) REFERENCES moz_places_metadata_search_queries(id) ON DELETE CASCADE,
  CHECK(place_id != referrer_place_id));
CREATE TABLE moz_places_metadata_search_queries (id INTEGER PRIMARY KEY,
  terms TEXT NOT NULL UNIQUE);
CREATE TABLE moz_previews_tombstones (hash TEXT PRIMARY KEY) WITHOUT ROWID;
CREATE INDEX moz_places_url_hashindex ON moz_places (url_hash);
CREATE INDEX moz_places_hostindex ON moz_places (rev_host);
CREATE INDEX moz_places_lastvisitdateindex ON moz_places (last_visit_date);
CREATE UNIQUE INDEX moz_places_guid_uniqueindex ON moz_places (guid);
CREATE INDEX moz_places_originidindex ON moz_places (origin_id);
CREATE INDEX moz_historyvisits_placedateindex ON moz_historyvisits (place_id, visit_date);
CREATE INDEX moz_bookmarks_itemindex ON moz_bookmarks (fk, type);
CREATE UNIQUE INDEX moz_annos_placeattributeindex ON moz_annos (place_id, anno_attribute_id);
PRAGMA user_version=77;
PRAGMA application_id=1234567;
)";

/// Pages 1 to 3 are a bookmark, a tagged bookmark and one with a keyword; the others were visited,
/// every tenth to download from it.
const char* const placesRows = R"(
INSERT INTO moz_origins VALUES (1, 'https://', 'KEPT.example', 100, 0, 5, 0),
  (2, 'https://', 'TRACE.example', 100, 0, 5, 0);
INSERT INTO moz_places (id, url, title, rev_host, visit_count, typed, frecency, last_visit_date,
  guid, foreign_count, origin_id)
  SELECT value, 'https://KEPT.example/' || value, 'KEPT title ' || value, 'elpmaxe.', 9, 1, 2000,
  1700000000000000, 'k' || value, 2, 1 FROM n WHERE value <= 3;
INSERT INTO moz_places (id, url, title, rev_host, visit_count, typed, frecency, last_visit_date,
  guid, origin_id, description)
  SELECT value, 'https://TRACE.example/page/' || value, 'TRACE title ' || value, 'elpmaxe.', 3, 0,
  100, 1700000000000000 + value, 'g' || value, 2, 'TRACE described ' || value
  FROM n WHERE value > 3;
INSERT INTO moz_places_extra SELECT value, '{"TRACE":1}' FROM n WHERE value > 3 AND value % 7 = 0;
INSERT INTO moz_historyvisits (id, from_visit, place_id, visit_date, visit_type)
  SELECT value, value - 1, value, 1700000000000000 + value, CASE WHEN value % 10 = 0 THEN 7 ELSE 1
  END FROM n;
INSERT INTO moz_historyvisits_extra SELECT value, '{"TRACE":2}' FROM n WHERE value % 9 = 0;
INSERT INTO moz_inputhistory SELECT value, 'TRACE typed ' || value, 1 FROM n WHERE value % 5 = 0;
INSERT INTO moz_bookmarks (id, type, fk, parent, title, guid) VALUES
  (1, 2, NULL, 0, '', 'root'), (2, 2, NULL, 1, 'KEPT menu', 'menu'), (3, 2, NULL, 1, '', 'tags'),
  (4, 1, 1, 2, 'KEPT bookmark one', 'b1'), (5, 1, 2, 2, 'KEPT bookmark two', 'b2'),
  (6, 2, NULL, 3, 'KEPT tag', 't1'), (7, 1, 2, 6, NULL, 't2');
INSERT INTO moz_keywords (keyword, place_id) VALUES ('KEPTword', 3);
INSERT INTO moz_anno_attributes VALUES (1, 'downloads/destinationFileURI'),
  (2, 'downloads/metaData'), (3, 'bookmarkProperties/KEPT');
INSERT INTO moz_annos (place_id, anno_attribute_id, content)
  SELECT value, 1, 'file:///TRACE/download' || value FROM n WHERE value % 10 = 0;
INSERT INTO moz_annos (place_id, anno_attribute_id, content) VALUES (1, 3, 'KEPT note'),
  (1, 1, 'file:///TRACE/of/a/bookmark'), (4, 3, 'TRACE note');
INSERT INTO moz_meta VALUES ('KEPT', 1);
INSERT INTO moz_places_metadata_search_queries VALUES (1, 'TRACE searched');
INSERT INTO moz_places_metadata (place_id, referrer_place_id, search_query_id)
  SELECT value, value - 1, 1 FROM n WHERE value % 4 = 1 AND value > 1;
INSERT INTO moz_previews_tombstones VALUES ('TRACE hash');
)";

const char* const faviconsTables = R"(
CREATE TABLE moz_icons (id INTEGER PRIMARY KEY, icon_url TEXT NOT NULL,
  fixed_icon_url_hash INTEGER NOT NULL DEFAULT 0, width INTEGER NOT NULL DEFAULT 0,
  root INTEGER NOT NULL DEFAULT 0, color INTEGER, expire_ms INTEGER NOT NULL DEFAULT 0,
  data BLOB, flags INTEGER NOT NULL DEFAULT 0);
CREATE TABLE moz_pages_w_icons (id INTEGER PRIMARY KEY, page_url TEXT NOT NULL,
  page_url_hash INTEGER NOT NULL DEFAULT 0);
CREATE TABLE moz_icons_to_pages (page_id INTEGER NOT NULL, icon_id INTEGER NOT NULL,
  expire_ms INTEGER NOT NULL DEFAULT 0, PRIMARY KEY (page_id, icon_id),
  FOREIGN KEY (page_id) REFERENCES moz_pages_w_icons ON DELETE CASCADE,
  FOREIGN KEY (icon_id) REFERENCES moz_icons ON DELETE CASCADE) WITHOUT ROWID;
INSERT INTO moz_icons (id, icon_url, root, data) VALUES
  (1, 'https://KEPT.example/favicon.ico', 1, randomblob(3000)),
  (2, 'https://KEPT.example/one.png', 0, randomblob(3000)),
  (3, 'https://TRACE.example/favicon.ico', 1, randomblob(3000)),
  (4, 'https://TRACE.example/page.png', 0, randomblob(3000));
INSERT INTO moz_pages_w_icons (id, page_url) VALUES (1, 'https://KEPT.example/1'),
  (2, 'https://TRACE.example/page/10'), (3, 'https://TRACE.example/page/11');
INSERT INTO moz_icons_to_pages (page_id, icon_id) VALUES (1, 1), (1, 2), (2, 3), (2, 4), (3, 4);
)";

std::string filledIn(std::string text, const std::string& trace, const std::string& kept) {
    const auto replace = [&](const std::string& word, const std::string& by) {
        for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; at += by.size()) {
            text.replace(at, word.size(), by);
        }
    };
    replace("TRACE", trace);
    replace("KEPT", kept);
    return text;
}

}  // namespace

SampleDatabase::SampleDatabase(const std::string& path) {
    if (sqlite3_open(path.c_str(), &database_) != SQLITE_OK) {
        throw std::runtime_error(path + ": cannot be opened");
    }
}

SampleDatabase::~SampleDatabase() {
    sqlite3_close(database_);
}

void SampleDatabase::run(const std::string& statements) {
    char* message = nullptr;
    if (sqlite3_exec(database_, statements.c_str(), nullptr, nullptr, &message) == SQLITE_OK) {
        return;
    }
    const std::string reason = message == nullptr ? "failed" : message;
    sqlite3_free(message);
    throw std::runtime_error(reason + ": " + statements);
}

std::string SampleDatabase::text(const std::string& query) const {
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(database_, query.c_str(), -1, &prepared, nullptr) != SQLITE_OK) {
        throw std::runtime_error(std::string(sqlite3_errmsg(database_)) + ": " + query);
    }
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(prepared, &sqlite3_finalize);
    std::string text;
    int result = SQLITE_OK;
    while ((result = sqlite3_step(prepared)) == SQLITE_ROW) {
        if (!text.empty()) text += '\n';
        for (int i = 0; i < sqlite3_column_count(prepared); ++i) {
            const auto* value = sqlite3_column_text(prepared, i);
            text += i == 0 ? "" : ",";
            text += value == nullptr ? "NULL" : reinterpret_cast<const char*>(value);
        }
    }
    if (result != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(database_));
    return text;
}

void makePlaces(SampleDatabase& places, const std::string& trace, const std::string& kept,
                int pages) {
    places.run(placesTables);
    places.run(
        "BEGIN; CREATE TEMP TABLE n AS WITH RECURSIVE c(value) AS (SELECT 1 UNION ALL "
        "SELECT value + 1 FROM c WHERE value < " +
        std::to_string(pages) + ") SELECT value FROM c;");
    places.run(filledIn(placesRows, trace, kept));
    places.run("DROP TABLE n; COMMIT");
}

void makeFavicons(SampleDatabase& favicons, const std::string& trace, const std::string& kept) {
    favicons.run(filledIn(faviconsTables, trace, kept));
}

}  // namespace dorvanel::test
