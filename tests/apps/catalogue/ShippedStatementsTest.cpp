// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>

#include "apps/catalogue/Catalogue.h"
#include "apps/catalogue/SampleDatabase.h"
#include "support/Schemas.h"

namespace dorvanel::test {
namespace {

using catalogue::Catalogue;
using catalogue::DatabaseCleaning;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSubsetOf;
using ::testing::UnorderedElementsAre;

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

/// What the databases of an application are made by, by file name.
std::map<std::string, std::string_view> schemasOf(const std::string& id) {
    if (id == "epiphany") return {{"ephy-history.db", schema::epiphany}};
    if (id == "falkon") return {{"browsedata.db", schema::falkon}};
    if (id == "qutebrowser") return {{"history.sqlite", schema::qutebrowser}};
    if (id == "thunderbird") return {{"history.sqlite", schema::addressBook}};
    if (id == "firefox" || id == "librewolf") {
        return {{"places.sqlite", schema::places},
                {"favicons.sqlite", schema::favicons},
                {"permissions.sqlite", schema::permissions}};
    }
    return {{"History", schema::chromiumHistory}, {"Web Data", schema::webData}};
}

class ShippedStatementsTest : public ::testing::Test {
  protected:
    /// The cleanings of one kind for the database of this name, in the order of the file.
    [[nodiscard]] std::vector<DatabaseCleaning> cleanings(const std::string& id,
                                                          const std::string& kind,
                                                          const std::string& database) const {
        std::vector<DatabaseCleaning> found;
        const catalogue::Entry* entry = catalogue_.find(id);
        EXPECT_NE(entry, nullptr) << id;
        if (entry == nullptr) return found;
        for (const catalogue::Trace& trace : entry->traces) {
            if (trace.kind != kind) continue;
            for (const DatabaseCleaning& cleaning : trace.clean) {
                if (nameOf(cleaning.database) == database) found.push_back(cleaning);
            }
        }
        EXPECT_THAT(found, ::testing::Not(IsEmpty())) << id << " " << kind << " " << database;
        return found;
    }

    void clean(const SampleDatabase& database, const std::string& id, const std::string& kind,
               const std::string& name) const {
        for (const DatabaseCleaning& cleaning : cleanings(id, kind, name)) database.clean(cleaning);
    }

    template <typename Call>
    void eachCleaning(Call call) const {
        for (const catalogue::Entry& entry : catalogue_.entries()) {
            for (const catalogue::Trace& trace : entry.traces) {
                for (const DatabaseCleaning& cleaning : trace.clean) {
                    SCOPED_TRACE(entry.id + ", " + trace.kind + ", " + cleaning.database);
                    const auto schemas = schemasOf(entry.id);
                    const auto schema = schemas.find(nameOf(cleaning.database));
                    ASSERT_NE(schema, schemas.end());
                    const SampleDatabase database(schema->second);
                    std::vector<std::unique_ptr<SampleDatabase>> others;
                    for (const auto& [name, path] : cleaning.attach) {
                        const auto other = schemas.find(nameOf(path));
                        ASSERT_NE(other, schemas.end());
                        others.push_back(std::make_unique<SampleDatabase>(other->second));
                        database.attach(name, *others.back());
                    }
                    call(database, cleaning);
                }
            }
        }
    }

    const Catalogue catalogue_ = Catalogue::load({SHIPPED, {}}, platform::defaultFileManager());
};

TEST_F(ShippedStatementsTest, EachOneRunsOnTheDatabaseThatItIsFor) {
    // What newer versions of Chromium no longer have.
    const std::set<std::string> former = {"typed_url_sync_metadata", "downloads_reroute_info"};
    eachCleaning([&](const SampleDatabase& database, const DatabaseCleaning& cleaning) {
        for (const catalogue::Statement& statement : cleaning.run) {
            for (const std::string& needed : statement.needs) {
                EXPECT_NE(database.has(needed), former.contains(needed)) << needed;
            }
        }
        database.clean(cleaning);
    });
}

TEST_F(ShippedStatementsTest, EachOneNamesAllThatItNeeds) {
    eachCleaning([&](const SampleDatabase& database, const DatabaseCleaning& cleaning) {
        for (const catalogue::Statement& statement : cleaning.run) {
            const bool can = std::ranges::all_of(
                statement.needs, [&](const std::string& needed) { return database.has(needed); });
            if (!can) continue;
            std::set<std::string> named(statement.needs.begin(), statement.needs.end());
            for (const std::string& needed : statement.needs) {
                named.insert(needed.substr(0, needed.find('.')));
            }
            EXPECT_THAT(database.usedBy(statement.sql), IsSubsetOf(named)) << statement.sql;
        }
    });
}

TEST_F(ShippedStatementsTest, NoneMindsThatThereIsNoneOfItsTables) {
    eachCleaning([&](const SampleDatabase&, const DatabaseCleaning& cleaning) {
        DatabaseCleaning withoutKeep = cleaning;
        withoutKeep.keep.clear();
        SampleDatabase("CREATE TABLE other (id INTEGER)").clean(withoutKeep);
    });
}

/// Pages: 1 bookmarked, tagged and visited, 2 with a keyword, 3 visited, 4 a download, 5 a download
/// that is bookmarked and was visited before, 6 a download that led on to page 3.
constexpr const char* places = R"sql(
INSERT INTO moz_places (id, url, title, visit_count, hidden, typed, frecency, last_visit_date, guid,
  foreign_count) VALUES
  (1, 'https://kept.example/a', 'Kept', 3, 0, 1, 900, 30, 'g1', 2),
  (2, 'https://word.example/?q=%s', 'Word', 0, 0, 0, 50, NULL, 'g2', 1),
  (3, 'https://secret.example/b', 'Secret', 2, 0, 0, 700, 70, 'g3', 0),
  (4, 'https://files.example/f.zip', 'File', 0, 0, 0, 0, 50, 'g4', 0),
  (5, 'https://both.example/g.zip', 'Both', 1, 0, 0, 100, 60, 'g5', 1),
  (6, 'https://files.example/h.zip', 'Other file', 0, 0, 0, 0, 65, 'g6', 0);
INSERT INTO moz_historyvisits (id, from_visit, place_id, visit_date, visit_type) VALUES
  (1, 0, 1, 30, 2), (2, 1, 3, 40, 1), (3, 2, 4, 50, 7), (4, 0, 5, 55, 1), (5, 2, 5, 60, 7),
  (6, 2, 6, 65, 7), (7, 6, 3, 70, 1);
INSERT INTO moz_bookmarks (id, type, fk, parent, position, title, guid) VALUES
  (1, 2, NULL, 0, 0, '', 'root'), (2, 2, NULL, 1, 0, 'menu', 'menu'), (3, 1, 1, 2, 0, 'Kept', 'b1'),
  (4, 2, NULL, 1, 1, 'tags', 'tags'), (5, 2, NULL, 4, 0, 'a tag', 'tag1'), (6, 1, 1, 5, 0, NULL,
  'b2'), (7, 1, 5, 2, 1, 'Both', 'b3');
INSERT INTO moz_keywords (id, keyword, place_id) VALUES (1, 'w', 2);
INSERT INTO moz_inputhistory VALUES (1, 'kep', 2), (3, 'sec', 1), (4, 'fil', 1);
INSERT INTO moz_anno_attributes VALUES (1, 'downloads/destinationFileURI'), (2, 'note'),
  (3, 'downloads/metaData');
INSERT INTO moz_annos (id, place_id, anno_attribute_id, content) VALUES
  (1, 4, 1, 'file:///f.zip'), (2, 5, 1, 'file:///g.zip'), (3, 1, 2, 'a note'), (4, 3, 2, 'b'),
  (5, 4, 3, '{}'), (6, 6, 1, 'file:///h.zip');
)sql";

constexpr const char* newerPlaces = R"sql(
INSERT INTO moz_origins (id, prefix, host, frecency, alt_frecency, block_until_ms) VALUES
  (1, 'https://', 'kept.example', 900, 5, 9), (2, 'https://', 'word.example', 50, NULL, NULL),
  (3, 'https://', 'secret.example', 700, 5, NULL), (4, 'https://', 'files.example', 0, NULL, NULL),
  (5, 'https://', 'both.example', 100, NULL, NULL);
UPDATE moz_places SET origin_id=id, alt_frecency=7, recalc_frecency=0;
UPDATE moz_places SET origin_id=4 WHERE id=6;
INSERT INTO moz_places_extra VALUES (1, '{}'), (3, '{}'), (4, '{}');
INSERT INTO moz_historyvisits_extra VALUES (1, '{}'), (3, '{}');
INSERT INTO moz_places_metadata_search_queries VALUES (1, 'secret terms');
INSERT INTO moz_places_metadata (id, place_id, referrer_place_id, created_at, search_query_id)
  VALUES (1, 3, 1, 1, 1), (2, 1, 3, 2, NULL), (3, 4, NULL, 3, NULL), (4, 3, 4, 4, NULL);
INSERT INTO moz_newtab_shortcuts_interaction VALUES (1, 3, 0, 1, 0, 0), (2, 1, 0, 1, 0, 0);
INSERT INTO moz_newtab_story_click VALUES ('f', 1, 0, 0, 0, 1);
INSERT INTO moz_newtab_story_impression VALUES ('f', 1, 0, 0, 0, 1);
INSERT INTO moz_previews_tombstones VALUES ('h');
)sql";

constexpr const char* icons = R"sql(
INSERT INTO moz_icons (id, icon_url, fixed_icon_url_hash, root) VALUES
  (1, 'https://kept.example/icon.png', 1, 0), (2, 'https://secret.example/icon.png', 2, 0),
  (3, 'https://kept.example/favicon.ico', 3, 1), (4, 'https://secret.example/favicon.ico', 4, 1),
  (5, 'https://keptXexample/favicon.ico', 5, 1), (6, 'https://word.example/favicon.ico', 6, 1);
INSERT INTO moz_pages_w_icons VALUES (1, 'https://kept.example/a', 1),
  (2, 'https://secret.example/b', 2);
INSERT INTO moz_icons_to_pages (page_id, icon_id) VALUES (1, 1), (2, 2), (2, 1);
)sql";

class FirefoxStatementsTest : public ShippedStatementsTest {
  protected:
    FirefoxStatementsTest() {
        places_.execute(places);
        places_.execute(newerPlaces);
        favicons_.execute(icons);
    }

    const SampleDatabase places_{schema::places};
    const SampleDatabase favicons_{schema::favicons};
};

TEST_F(FirefoxStatementsTest, HistoryTakesTheVisitsAndLeavesWhatPeopleMade) {
    const auto bookmarks = places_.rows("SELECT * FROM moz_bookmarks");
    clean(places_, "firefox", "history", "places.sqlite");
    for (const std::string table :
         {"moz_historyvisits", "moz_historyvisits_extra", "moz_inputhistory", "moz_places_metadata",
          "moz_places_metadata_search_queries", "moz_newtab_shortcuts_interaction",
          "moz_newtab_story_click", "moz_newtab_story_impression", "moz_previews_tombstones"}) {
        EXPECT_THAT(places_.rows("SELECT * FROM " + table), IsEmpty()) << table;
    }
    EXPECT_EQ(places_.rows("SELECT * FROM moz_bookmarks"), bookmarks);
    EXPECT_THAT(places_.rows("SELECT keyword, place_id FROM moz_keywords"), ElementsAre("w|2"));
    EXPECT_THAT(places_.rows("SELECT content FROM moz_annos"), ElementsAre("a note"));
    EXPECT_THAT(places_.rows("SELECT place_id FROM moz_places_extra"), ElementsAre("1"));
}

TEST_F(FirefoxStatementsTest, HistoryLeavesNoCountOfVisits) {
    clean(places_, "firefox", "history", "places.sqlite");
    EXPECT_THAT(places_.rows("SELECT id, title, visit_count, typed, hidden, frecency, "
                             "ifnull(last_visit_date, '-'), foreign_count, recalc_frecency, "
                             "ifnull(alt_frecency, '-'), recalc_alt_frecency FROM moz_places"),
                ElementsAre("1|Kept|0|0|0|-1|-|2|1|-|1", "2|Word|0|0|0|-1|-|1|1|-|1",
                            "5|Both|0|0|0|-1|-|1|1|-|1"));
    EXPECT_THAT(places_.rows("SELECT host, frecency, recalc_frecency, ifnull(alt_frecency, '-'), "
                             "ifnull(block_until_ms, '-') FROM moz_origins"),
                UnorderedElementsAre("kept.example|-1|1|-|-", "word.example|-1|1|-|-",
                                     "both.example|-1|1|-|-"));
}

TEST_F(FirefoxStatementsTest, DownloadsLeaveTheOtherVisits) {
    clean(places_, "firefox", "downloads", "places.sqlite");
    EXPECT_THAT(places_.rows("SELECT id, from_visit FROM moz_historyvisits"),
                ElementsAre("1|0", "2|1", "4|0", "7|0"));
    EXPECT_THAT(places_.rows("SELECT id, visit_count, ifnull(last_visit_date, '-'), "
                             "recalc_frecency FROM moz_places"),
                ElementsAre("1|3|30|0", "2|0|-|0", "3|2|70|0", "5|1|55|1"));
    EXPECT_THAT(
        places_.rows("SELECT host FROM moz_origins"),
        UnorderedElementsAre("kept.example", "word.example", "secret.example", "both.example"));
    EXPECT_THAT(places_.rows("SELECT content FROM moz_annos"), ElementsAre("a note", "b"));
    EXPECT_THAT(places_.rows("SELECT place_id FROM moz_inputhistory"), ElementsAre("1", "3"));
    EXPECT_THAT(places_.rows("SELECT id FROM moz_places_metadata"), UnorderedElementsAre("1", "2"));
    EXPECT_THAT(places_.rows("SELECT visit_id FROM moz_historyvisits_extra"), ElementsAre("1"));
}

TEST_F(FirefoxStatementsTest, DownloadsAfterTheHistoryFindNothing) {
    clean(places_, "firefox", "history", "places.sqlite");
    const auto pages = places_.rows("SELECT * FROM moz_places");
    clean(places_, "firefox", "downloads", "places.sqlite");
    EXPECT_EQ(places_.rows("SELECT * FROM moz_places"), pages);
}

TEST_F(FirefoxStatementsTest, WithTheHistoryGoIconsOfPagesThatNobodyKnows) {
    clean(places_, "firefox", "history", "places.sqlite");
    favicons_.attach("p", places_);
    clean(favicons_, "firefox", "history", "favicons.sqlite");
    EXPECT_THAT(favicons_.rows("SELECT id FROM moz_icons"), ElementsAre("1", "3", "6"));
    EXPECT_THAT(favicons_.rows("SELECT page_url FROM moz_pages_w_icons"),
                ElementsAre("https://kept.example/a"));
    EXPECT_THAT(favicons_.rows("SELECT page_id, icon_id FROM moz_icons_to_pages"),
                ElementsAre("1|1"));
}

TEST_F(FirefoxStatementsTest, IconsOfBookmarksStay) {
    favicons_.attach("p", places_);
    clean(favicons_, "firefox", "icons", "favicons.sqlite");
    EXPECT_THAT(favicons_.rows("SELECT id FROM moz_icons"), ElementsAre("1", "3"));
    EXPECT_THAT(favicons_.rows("SELECT page_url FROM moz_pages_w_icons"),
                ElementsAre("https://kept.example/a"));
}

TEST_F(FirefoxStatementsTest, FormerVersionsAreCleanedAsFarAsTheyGo) {
    const SampleDatabase former(schema::formerPlaces);
    former.execute(places);
    clean(former, "firefox", "downloads", "places.sqlite");
    EXPECT_THAT(former.rows("SELECT id, ifnull(last_visit_date, '-') FROM moz_places"),
                ElementsAre("1|30", "2|-", "3|70", "5|55"));
    clean(former, "firefox", "history", "places.sqlite");
    EXPECT_THAT(former.rows("SELECT id, visit_count, ifnull(last_visit_date, '-'), foreign_count "
                            "FROM moz_places"),
                ElementsAre("1|0|-|2", "2|0|-|1", "5|0|-|1"));
    EXPECT_THAT(former.rows("SELECT * FROM moz_historyvisits"), IsEmpty());
    EXPECT_THAT(former.rows("SELECT count(*) FROM moz_bookmarks"), ElementsAre("7"));
}

TEST_F(FirefoxStatementsTest, ExtensionsMayWhatTheyMight) {
    const SampleDatabase permissions(schema::permissions);
    permissions.execute(
        "INSERT INTO moz_perms (id, origin, type) VALUES (1, 'https://a.example', 'camera'), "
        "(2, 'moz-extension://1234', 'unlimited');"
        "INSERT INTO moz_hosts (id, host) VALUES (1, 'b.example');"
        "INSERT INTO moz_origin_interactions VALUES ('https://c.example', 1)");
    clean(permissions, "firefox", "history", "permissions.sqlite");
    EXPECT_THAT(permissions.rows("SELECT * FROM moz_origin_interactions"), IsEmpty());
    EXPECT_THAT(permissions.rows("SELECT id FROM moz_perms"), ElementsAre("1", "2"));
    clean(permissions, "firefox", "permissions", "permissions.sqlite");
    EXPECT_THAT(permissions.rows("SELECT id FROM moz_perms"), ElementsAre("2"));
    EXPECT_THAT(permissions.rows("SELECT id FROM moz_hosts"), IsEmpty());
}

TEST_F(ShippedStatementsTest, ChromiumsHistoryAndDownloadsGoEachByItself) {
    const std::string rows =
        "INSERT INTO urls (id, url, last_visit_time) VALUES (1, 'https://a.example', 1);"
        "INSERT INTO visits (id, url, visit_time) VALUES (1, 1, 1);"
        "INSERT INTO downloads_url_chains VALUES (1, 0, 'https://a.example/f');"
        "INSERT INTO meta VALUES ('version', '70')";
    const SampleDatabase history(schema::chromiumHistory);
    history.execute(rows);
    clean(history, "chromium", "history", "History");
    EXPECT_THAT(history.rows("SELECT * FROM urls"), IsEmpty());
    EXPECT_THAT(history.rows("SELECT * FROM visits"), IsEmpty());
    EXPECT_THAT(history.rows("SELECT id FROM downloads_url_chains"), ElementsAre("1"));
    clean(history, "brave", "downloads", "History");
    EXPECT_THAT(history.rows("SELECT * FROM downloads_url_chains"), IsEmpty());
    EXPECT_THAT(history.rows("SELECT value FROM meta"), ElementsAre("70"));
}

TEST_F(ShippedStatementsTest, ChromiumsFormerHistoryIsEmptiedToo) {
    const SampleDatabase history(schema::formerChromiumHistory);
    history.execute(
        "INSERT INTO urls (id, url) VALUES (1, 'https://a.example');"
        "INSERT INTO visits VALUES (1, 1, 1); INSERT INTO typed_url_sync_metadata VALUES (1, 'x');"
        "INSERT INTO downloads VALUES (1, '/f'); INSERT INTO downloads_reroute_info VALUES (1)");
    clean(history, "chromium", "history", "History");
    clean(history, "chromium", "downloads", "History");
    for (const std::string table :
         {"urls", "visits", "typed_url_sync_metadata", "downloads", "downloads_reroute_info"}) {
        EXPECT_THAT(history.rows("SELECT * FROM " + table), IsEmpty()) << table;
    }
}

TEST_F(ShippedStatementsTest, ChromiumsFormsLeaveAddressesAndSearchEngines) {
    const SampleDatabase data(schema::webData);
    data.execute(
        "INSERT INTO autofill (name, value) VALUES ('q', 'secret');"
        "INSERT INTO autocomplete (name, label, value) VALUES ('q', '', 'secret');"
        "INSERT INTO addresses (guid) VALUES ('g');"
        "INSERT INTO keywords (id, short_name, keyword, favicon_url, url, usage_count, "
        "last_visited) VALUES (1, 'Own', 'own', '', 'https://s.example/?q={searchTerms}', 4, 9)");
    clean(data, "chromium", "forms", "Web Data");
    EXPECT_THAT(data.rows("SELECT * FROM autofill"), IsEmpty());
    EXPECT_THAT(data.rows("SELECT * FROM autocomplete"), IsEmpty());
    EXPECT_THAT(data.rows("SELECT guid FROM addresses"), ElementsAre("g"));
    EXPECT_THAT(data.rows("SELECT keyword, usage_count, last_visited FROM keywords"),
                ElementsAre("own|0|0"));
}

TEST_F(ShippedStatementsTest, TheWebOfGnomeForgetsVisitsAndThenHowSitesWereZoomed) {
    const SampleDatabase history(schema::epiphany);
    history.execute(
        "INSERT INTO hosts (id, url, visit_count, zoom_level) VALUES (1, 'https://a.example', 3, "
        "1.0), (2, 'https://b.example', 4, 1.5), (3, 'https://c.example', 1, 0.0);"
        "INSERT INTO urls (id, host, url) VALUES (1, 1, 'https://a.example/x'), (2, 2, "
        "'https://b.example/y');"
        "INSERT INTO visits (id, url, visit_time, visit_type) VALUES (1, 1, 1, 1), (2, 2, 1, 1)");
    clean(history, "epiphany", "permissions", "ephy-history.db");
    EXPECT_THAT(history.rows("SELECT DISTINCT zoom_level FROM hosts"), ElementsAre("0.0"));
    history.execute("UPDATE hosts SET zoom_level=1.5 WHERE id=2");
    clean(history, "epiphany", "history", "ephy-history.db");
    EXPECT_THAT(history.rows("SELECT * FROM visits"), IsEmpty());
    EXPECT_THAT(history.rows("SELECT * FROM urls"), IsEmpty());
    EXPECT_THAT(history.rows("SELECT id, visit_count, zoom_level FROM hosts"),
                ElementsAre("2|0|1.5"));
}

TEST_F(ShippedStatementsTest, FalkonsPasswordsAndSearchEnginesStay) {
    const SampleDatabase data(schema::falkon);
    data.execute(
        "INSERT INTO autofill (id, server, password, last_used) VALUES (1, 's', 'p', 9);"
        "INSERT INTO autofill_encrypted (id, server) VALUES (1, 's');"
        "INSERT INTO autofill_exceptions VALUES (1, 'never');"
        "INSERT INTO search_engines (id, name) VALUES (1, 'Own');"
        "INSERT INTO history (id, url) VALUES (1, 'https://a.example');"
        "INSERT INTO icons VALUES (1, 'https://a.example', x'00')");
    clean(data, "falkon", "history", "browsedata.db");
    EXPECT_THAT(data.rows("SELECT * FROM history"), IsEmpty());
    EXPECT_THAT(data.rows("SELECT password, last_used FROM autofill"), ElementsAre("p|0"));
    EXPECT_THAT(data.rows("SELECT id FROM icons"), ElementsAre("1"));
    EXPECT_THAT(data.rows("SELECT server FROM autofill_exceptions"), ElementsAre("never"));
    clean(data, "falkon", "icons", "browsedata.db");
    clean(data, "falkon", "permissions", "browsedata.db");
    EXPECT_THAT(data.rows("SELECT * FROM icons"), IsEmpty());
    EXPECT_THAT(data.rows("SELECT * FROM autofill_exceptions"), IsEmpty());
    EXPECT_THAT(data.rows("SELECT name FROM search_engines"), ElementsAre("Own"));
    EXPECT_THAT(data.rows("SELECT server FROM autofill_encrypted"), ElementsAre("s"));
}

TEST_F(ShippedStatementsTest, QutebrowserForgetsPagesAndKeepsHowItCompletes) {
    const SampleDatabase history(schema::qutebrowser);
    history.execute(
        "INSERT INTO History VALUES ('https://a.example', 'A', 1, 0);"
        "INSERT INTO CompletionHistory VALUES ('https://a.example', 'A', 1);"
        "INSERT INTO CompletionMetaInfo VALUES ('force_rebuild', 0)");
    clean(history, "qutebrowser", "history", "history.sqlite");
    EXPECT_THAT(history.rows("SELECT * FROM History"), IsEmpty());
    EXPECT_THAT(history.rows("SELECT * FROM CompletionHistory"), IsEmpty());
    EXPECT_THAT(history.rows("SELECT * FROM CompletionMetaInfo"), ElementsAre("force_rebuild|0"));
}

TEST_F(ShippedStatementsTest, ThunderbirdForgetsTheAddressesItCollected) {
    const SampleDatabase addresses(schema::addressBook);
    addresses.execute(
        "INSERT INTO properties VALUES ('c', 'PrimaryEmail', 'a@b.example');"
        "INSERT INTO lists VALUES ('l', 'n', '', ''); INSERT INTO list_cards VALUES ('l', 'c')");
    clean(addresses, "thunderbird", "collected", "history.sqlite");
    for (const std::string table : {"properties", "lists", "list_cards"}) {
        EXPECT_THAT(addresses.rows("SELECT * FROM " + table), IsEmpty()) << table;
    }
}

}  // namespace
}  // namespace dorvanel::test
