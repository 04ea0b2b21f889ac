// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

/// The tables of the applications' databases, as the applications make them; of their indices those
/// that refuse something.
namespace dorvanel::test::schema {

/// Firefox, version 86 of places.sqlite.
inline constexpr std::string_view places = R"sql(
CREATE TABLE moz_origins (id INTEGER PRIMARY KEY, prefix TEXT NOT NULL, host TEXT NOT NULL,
  frecency INTEGER NOT NULL, recalc_frecency INTEGER NOT NULL DEFAULT 0, alt_frecency INTEGER,
  recalc_alt_frecency INTEGER NOT NULL DEFAULT 0, block_until_ms INTEGER, block_pages_until_ms
  INTEGER, UNIQUE (prefix, host));
CREATE TABLE moz_places (id INTEGER PRIMARY KEY, url LONGVARCHAR, title LONGVARCHAR, rev_host
  LONGVARCHAR, visit_count INTEGER DEFAULT 0, hidden INTEGER DEFAULT 0 NOT NULL, typed INTEGER
  DEFAULT 0 NOT NULL, frecency INTEGER DEFAULT -1 NOT NULL, last_visit_date INTEGER , guid TEXT,
  foreign_count INTEGER DEFAULT 0 NOT NULL, url_hash INTEGER DEFAULT 0 NOT NULL , description
  TEXT, preview_image_url TEXT, site_name TEXT, origin_id INTEGER REFERENCES moz_origins(id),
  recalc_frecency INTEGER NOT NULL DEFAULT 0, alt_frecency INTEGER, recalc_alt_frecency INTEGER
  NOT NULL DEFAULT 0);
CREATE TABLE moz_places_extra (place_id INTEGER PRIMARY KEY NOT NULL, sync_json TEXT, FOREIGN
  KEY (place_id) REFERENCES moz_places(id) ON DELETE CASCADE);
CREATE UNIQUE INDEX moz_places_guid_uniqueindex ON moz_places (guid);
CREATE TABLE moz_historyvisits (id INTEGER PRIMARY KEY, from_visit INTEGER, place_id INTEGER,
  visit_date INTEGER, visit_type INTEGER, session INTEGER, source INTEGER DEFAULT 0 NOT NULL,
  triggeringPlaceId INTEGER);
CREATE TABLE moz_historyvisits_extra (visit_id INTEGER PRIMARY KEY NOT NULL, sync_json TEXT,
  FOREIGN KEY (visit_id) REFERENCES moz_historyvisits(id) ON DELETE CASCADE);
CREATE TABLE moz_inputhistory (place_id INTEGER NOT NULL, input LONGVARCHAR NOT NULL, use_count
  INTEGER, PRIMARY KEY (place_id, input));
CREATE TABLE moz_bookmarks (id INTEGER PRIMARY KEY, type INTEGER, fk INTEGER DEFAULT NULL,
  parent INTEGER, position INTEGER, title LONGVARCHAR, keyword_id INTEGER, folder_type TEXT,
  dateAdded INTEGER, lastModified INTEGER, guid TEXT, syncStatus INTEGER NOT NULL DEFAULT 0,
  syncChangeCounter INTEGER NOT NULL DEFAULT 1);
CREATE TABLE moz_bookmarks_deleted (guid TEXT PRIMARY KEY, dateRemoved INTEGER NOT NULL DEFAULT
  0);
CREATE UNIQUE INDEX moz_bookmarks_guid_uniqueindex ON moz_bookmarks (guid);
CREATE TABLE moz_keywords (id INTEGER PRIMARY KEY AUTOINCREMENT, keyword TEXT UNIQUE, place_id
  INTEGER, post_data TEXT);
CREATE UNIQUE INDEX moz_keywords_placepostdata_uniqueindex ON moz_keywords (place_id,
  post_data);
CREATE TABLE moz_anno_attributes (id INTEGER PRIMARY KEY, name VARCHAR(32) UNIQUE NOT NULL);
CREATE TABLE moz_annos (id INTEGER PRIMARY KEY, place_id INTEGER NOT NULL, anno_attribute_id
  INTEGER, content LONGVARCHAR, flags INTEGER DEFAULT 0, expiration INTEGER DEFAULT 0, type
  INTEGER DEFAULT 0, dateAdded INTEGER DEFAULT 0, lastModified INTEGER DEFAULT 0);
CREATE UNIQUE INDEX moz_annos_placeattributeindex ON moz_annos (place_id, anno_attribute_id);
CREATE TABLE moz_items_annos (id INTEGER PRIMARY KEY, item_id INTEGER NOT NULL,
  anno_attribute_id INTEGER, content LONGVARCHAR, flags INTEGER DEFAULT 0, expiration INTEGER
  DEFAULT 0, type INTEGER DEFAULT 0, dateAdded INTEGER DEFAULT 0, lastModified INTEGER DEFAULT
  0);
CREATE UNIQUE INDEX moz_items_annos_itemattributeindex ON moz_items_annos (item_id,
  anno_attribute_id);
CREATE TABLE moz_meta (key TEXT PRIMARY KEY, value NOT NULL) WITHOUT ROWID ;
CREATE TABLE moz_places_metadata (id INTEGER PRIMARY KEY, place_id INTEGER NOT NULL,
  referrer_place_id INTEGER, created_at INTEGER NOT NULL DEFAULT 0, updated_at INTEGER NOT NULL
  DEFAULT 0, total_view_time INTEGER NOT NULL DEFAULT 0, typing_time INTEGER NOT NULL DEFAULT 0,
  key_presses INTEGER NOT NULL DEFAULT 0, scrolling_time INTEGER NOT NULL DEFAULT 0,
  scrolling_distance INTEGER NOT NULL DEFAULT 0, document_type INTEGER NOT NULL DEFAULT 0,
  search_query_id INTEGER, FOREIGN KEY (place_id) REFERENCES moz_places(id) ON DELETE CASCADE,
  FOREIGN KEY (referrer_place_id) REFERENCES moz_places(id) ON DELETE CASCADE, FOREIGN
  KEY(search_query_id) REFERENCES moz_places_metadata_search_queries(id) ON DELETE CASCADE
  CHECK(place_id != referrer_place_id));
CREATE UNIQUE INDEX moz_places_metadata_placecreated_uniqueindex ON moz_places_metadata
  (place_id, created_at);
CREATE TABLE moz_places_metadata_search_queries (id INTEGER PRIMARY KEY, terms TEXT NOT NULL
  UNIQUE);
CREATE TABLE moz_previews_tombstones (hash TEXT PRIMARY KEY) WITHOUT ROWID;
CREATE TABLE moz_newtab_story_click (feature TEXT NOT NULL, timestamp_s INTEGER NOT NULL,
  card_format_enum INTEGER NOT NULL, position INTEGER NOT NULL, section_position INTEGER NOT
  NULL, feature_value REAL NOT NULL DEFAULT 1);
CREATE TABLE moz_newtab_story_impression (feature TEXT NOT NULL, timestamp_s INTEGER NOT NULL,
  card_format_enum INTEGER NOT NULL, position INTEGER NOT NULL, section_position INTEGER NOT
  NULL, feature_value REAL NOT NULL DEFAULT 1);
CREATE TABLE moz_newtab_shortcuts_interaction (id INTEGER PRIMARY KEY, place_id INTEGER NOT NULL
  REFERENCES moz_places(id) ON DELETE CASCADE, event_type INTEGER NOT NULL, timestamp_s INTEGER
  NOT NULL, pinned INTEGER NOT NULL CHECK (pinned IN (0, 1)), tile_position INTEGER NOT NULL);
)sql";

/// Firefox, favicons.sqlite.
inline constexpr std::string_view favicons = R"sql(
CREATE TABLE moz_icons (id INTEGER PRIMARY KEY, icon_url TEXT NOT NULL, fixed_icon_url_hash
  INTEGER NOT NULL, width INTEGER NOT NULL DEFAULT 0, root INTEGER NOT NULL DEFAULT 0, color
  INTEGER, expire_ms INTEGER NOT NULL DEFAULT 0, flags INTEGER NOT NULL DEFAULT 0, data BLOB);
CREATE TABLE moz_pages_w_icons (id INTEGER PRIMARY KEY, page_url TEXT NOT NULL, page_url_hash
  INTEGER NOT NULL);
CREATE TABLE moz_icons_to_pages (page_id INTEGER NOT NULL, icon_id INTEGER NOT NULL, expire_ms
  INTEGER NOT NULL DEFAULT 0, PRIMARY KEY (page_id, icon_id), FOREIGN KEY (page_id) REFERENCES
  moz_pages_w_icons ON DELETE CASCADE, FOREIGN KEY (icon_id) REFERENCES moz_icons ON DELETE
  CASCADE) WITHOUT ROWID ;
)sql";

/// Firefox, permissions.sqlite.
inline constexpr std::string_view permissions = R"sql(
CREATE TABLE moz_perms (id INTEGER PRIMARY KEY,origin TEXT,type TEXT,permission
  INTEGER,expireType INTEGER,expireTime INTEGER,modificationTime INTEGER);
CREATE TABLE moz_hosts (id INTEGER PRIMARY KEY,host TEXT,type TEXT,permission INTEGER,expireType
  INTEGER,expireTime INTEGER,modificationTime INTEGER,isInBrowserElement INTEGER);
CREATE TABLE moz_origin_interactions (origin TEXT PRIMARY KEY,lastInteractionTime INTEGER);
)sql";

/// Chromium, version 70 of History.
inline constexpr std::string_view chromiumHistory = R"sql(
CREATE TABLE meta(key LONGVARCHAR NOT NULL UNIQUE PRIMARY KEY, value LONGVARCHAR);
CREATE TABLE urls(id INTEGER PRIMARY KEY AUTOINCREMENT,url LONGVARCHAR,title
  LONGVARCHAR,visit_count INTEGER DEFAULT 0 NOT NULL,typed_count INTEGER DEFAULT 0 NOT
  NULL,last_visit_time INTEGER NOT NULL,hidden INTEGER DEFAULT 0 NOT NULL);
CREATE TABLE visits(id INTEGER PRIMARY KEY AUTOINCREMENT,url INTEGER NOT NULL,visit_time INTEGER
  NOT NULL,from_visit INTEGER,external_referrer_url TEXT,transition INTEGER DEFAULT 0 NOT
  NULL,segment_id INTEGER,visit_duration INTEGER DEFAULT 0 NOT
  NULL,incremented_omnibox_typed_score BOOLEAN DEFAULT FALSE NOT NULL,opener_visit
  INTEGER,originator_cache_guid TEXT,originator_visit_id INTEGER,originator_from_visit
  INTEGER,originator_opener_visit INTEGER,is_known_to_sync BOOLEAN DEFAULT FALSE NOT
  NULL,consider_for_ntp_most_visited BOOLEAN DEFAULT FALSE NOT NULL,visited_link_id INTEGER
  DEFAULT 0 NOT NULL,app_id TEXT);
CREATE TABLE visit_source(id INTEGER PRIMARY KEY,source INTEGER NOT NULL);
CREATE TABLE keyword_search_terms (keyword_id INTEGER NOT NULL,url_id INTEGER NOT NULL,term
  LONGVARCHAR NOT NULL,normalized_term LONGVARCHAR NOT NULL);
CREATE TABLE downloads (id INTEGER PRIMARY KEY,guid VARCHAR NOT NULL,current_path LONGVARCHAR
  NOT NULL,target_path LONGVARCHAR NOT NULL,start_time INTEGER NOT NULL,received_bytes INTEGER
  NOT NULL,total_bytes INTEGER NOT NULL,state INTEGER NOT NULL,danger_type INTEGER NOT
  NULL,interrupt_reason INTEGER NOT NULL,hash BLOB NOT NULL,end_time INTEGER NOT NULL,opened
  INTEGER NOT NULL,last_access_time INTEGER NOT NULL,transient INTEGER NOT NULL,referrer VARCHAR
  NOT NULL,site_url VARCHAR NOT NULL,embedder_download_data VARCHAR NOT NULL,tab_url VARCHAR NOT
  NULL,tab_referrer_url VARCHAR NOT NULL,http_method VARCHAR NOT NULL,by_ext_id VARCHAR NOT
  NULL,by_ext_name VARCHAR NOT NULL,by_web_app_id VARCHAR NOT NULL,etag VARCHAR NOT
  NULL,last_modified VARCHAR NOT NULL,mime_type VARCHAR(255) NOT NULL,original_mime_type
  VARCHAR(255) NOT NULL);
CREATE TABLE downloads_url_chains (id INTEGER NOT NULL,chain_index INTEGER NOT NULL,url
  LONGVARCHAR NOT NULL, PRIMARY KEY (id, chain_index));
CREATE TABLE downloads_slices (download_id INTEGER NOT NULL,offset INTEGER NOT
  NULL,received_bytes INTEGER NOT NULL,finished INTEGER NOT NULL DEFAULT 0,PRIMARY KEY
  (download_id, offset));
CREATE TABLE segments (id INTEGER PRIMARY KEY,name VARCHAR,url_id INTEGER NON NULL);
CREATE TABLE segment_usage (id INTEGER PRIMARY KEY,segment_id INTEGER NOT NULL,time_slot INTEGER
  NOT NULL,visit_count INTEGER DEFAULT 0 NOT NULL);
CREATE TABLE content_annotations(visit_id INTEGER PRIMARY KEY,visibility_score
  NUMERIC,floc_protected_score NUMERIC,categories VARCHAR,page_topics_model_version
  INTEGER,annotation_flags INTEGER NOT NULL,entities VARCHAR,related_searches
  VARCHAR,search_normalized_url VARCHAR,search_terms LONGVARCHAR,alternative_title
  VARCHAR,page_language VARCHAR,password_state INTEGER DEFAULT 0 NOT NULL,has_url_keyed_image
  BOOLEAN NOT NULL);
CREATE TABLE context_annotations(visit_id INTEGER PRIMARY KEY,context_annotation_flags INTEGER
  NOT NULL,duration_since_last_visit INTEGER,page_end_reason INTEGER,total_foreground_duration
  INTEGER,browser_type INTEGER DEFAULT 0 NOT NULL,window_id INTEGER DEFAULT -1 NOT NULL,tab_id
  INTEGER DEFAULT -1 NOT NULL,task_id INTEGER DEFAULT -1 NOT NULL,root_task_id INTEGER DEFAULT
  -1 NOT NULL,parent_task_id INTEGER DEFAULT -1 NOT NULL,response_code INTEGER DEFAULT 0 NOT
  NULL);
CREATE TABLE clusters(cluster_id INTEGER PRIMARY KEY
  AUTOINCREMENT,should_show_on_prominent_ui_surfaces BOOLEAN NOT NULL,label VARCHAR NOT
  NULL,raw_label VARCHAR NOT NULL,triggerability_calculated BOOLEAN NOT
  NULL,originator_cache_guid TEXT NOT NULL,originator_cluster_id INTEGER NOT NULL);
CREATE TABLE clusters_and_visits(cluster_id INTEGER NOT NULL,visit_id INTEGER NOT NULL,score
  NUMERIC DEFAULT 0 NOT NULL,engagement_score NUMERIC DEFAULT 0 NOT NULL,url_for_deduping
  LONGVARCHAR NOT NULL,normalized_url LONGVARCHAR NOT NULL,url_for_display LONGVARCHAR NOT
  NULL,interaction_state INTEGER DEFAULT 0 NOT NULL,PRIMARY KEY(cluster_id,visit_id))WITHOUT
  ROWID;
CREATE TABLE cluster_keywords(cluster_id INTEGER NOT NULL,keyword VARCHAR NOT NULL,type INTEGER
  NOT NULL,score NUMERIC NOT NULL,collections VARCHAR NOT NULL);
CREATE TABLE cluster_visit_duplicates(visit_id INTEGER NOT NULL,duplicate_visit_id INTEGER NOT
  NULL,PRIMARY KEY(visit_id,duplicate_visit_id))WITHOUT ROWID;
CREATE TABLE visited_links(id INTEGER PRIMARY KEY AUTOINCREMENT,link_url_id INTEGER NOT
  NULL,top_level_url LONGVARCHAR NOT NULL,frame_url LONGVARCHAR NOT NULL,visit_count INTEGER
  DEFAULT 0 NOT NULL);
CREATE TABLE history_sync_metadata (storage_key INTEGER PRIMARY KEY NOT NULL, value BLOB);
CREATE TABLE journeys (journey_id TEXT PRIMARY KEY NOT NULL, title TEXT NOT NULL, emoji TEXT,
  overview TEXT, short_overview TEXT, creation_time_micros INTEGER NOT NULL);
CREATE TABLE journey_history_entries (journey_id TEXT NOT NULL, visit_timestamp_micros INTEGER
  NOT NULL, PRIMARY KEY (journey_id, visit_timestamp_micros)) WITHOUT ROWID;
CREATE TABLE journey_continuation_queries (id INTEGER PRIMARY KEY, journey_id TEXT NOT NULL,
  title TEXT NOT NULL, prompt TEXT NOT NULL);
CREATE TABLE journey_sync_metadata (storage_key TEXT PRIMARY KEY NOT NULL, value BLOB NOT NULL);
)sql";

/// Chromium, version 158 of Web Data; addresses stand for all that people entered themselves.
inline constexpr std::string_view webData = R"sql(
CREATE TABLE autocomplete (name VARCHAR, label VARCHAR, label_normalized VARCHAR, value VARCHAR,
  value_lower VARCHAR, date_created INTEGER DEFAULT 0, date_last_used INTEGER DEFAULT 0, count
  INTEGER DEFAULT 1, PRIMARY KEY (name, label, value));
CREATE TABLE autofill (name VARCHAR, value VARCHAR, value_lower VARCHAR, date_created INTEGER
  DEFAULT 0, date_last_used INTEGER DEFAULT 0, count INTEGER DEFAULT 1, PRIMARY KEY (name,
  value));
CREATE TABLE addresses (guid VARCHAR PRIMARY KEY, use_count INTEGER NOT NULL DEFAULT 0, use_date
  INTEGER NOT NULL DEFAULT 0, date_modified INTEGER NOT NULL DEFAULT 0, language_code VARCHAR,
  label VARCHAR, initial_creator_id INTEGER DEFAULT 0, record_type INTEGER);
CREATE TABLE address_type_tokens (guid VARCHAR, type INTEGER, value VARCHAR, verification_status
  INTEGER DEFAULT 0, observations BLOB, PRIMARY KEY (guid, type));
CREATE TABLE keywords (id INTEGER PRIMARY KEY,short_name VARCHAR NOT NULL,keyword VARCHAR NOT
  NULL,favicon_url VARCHAR NOT NULL,url VARCHAR NOT NULL,safe_for_autoreplace
  INTEGER,originating_url VARCHAR,date_created INTEGER DEFAULT 0,usage_count INTEGER DEFAULT
  0,input_encodings VARCHAR,suggest_url VARCHAR,prepopulate_id INTEGER DEFAULT
  0,created_by_policy INTEGER DEFAULT 0,last_modified INTEGER DEFAULT 0,sync_guid
  VARCHAR,alternate_urls VARCHAR,image_url VARCHAR,search_url_post_params
  VARCHAR,suggest_url_post_params VARCHAR,image_url_post_params VARCHAR,new_tab_url
  VARCHAR,last_visited INTEGER DEFAULT 0, created_from_play_api INTEGER DEFAULT 0, is_active
  INTEGER DEFAULT 0, starter_pack_id INTEGER DEFAULT 0, enforced_by_policy INTEGER DEFAULT 0,
  featured_by_policy INTEGER DEFAULT 0, url_hash BLOB);
)sql";

/// Firefox, cookies.sqlite.
inline constexpr std::string_view cookies = R"sql(
CREATE TABLE moz_cookies (id INTEGER PRIMARY KEY, originAttributes TEXT NOT NULL DEFAULT '', name
  TEXT, value TEXT, host TEXT, path TEXT, expiry INTEGER, lastAccessed INTEGER, creationTime
  INTEGER, isSecure INTEGER, isHttpOnly INTEGER, inBrowserElement INTEGER DEFAULT 0, sameSite
  INTEGER DEFAULT 0, schemeMap INTEGER DEFAULT 0, isPartitionedAttributeSet INTEGER DEFAULT 0,
  CONSTRAINT moz_uniqueid UNIQUE (name, host, path, originAttributes));
)sql";

/// Firefox, formhistory.sqlite.
inline constexpr std::string_view formHistory = R"sql(
CREATE TABLE moz_formhistory (id INTEGER PRIMARY KEY, fieldname TEXT NOT NULL, value TEXT NOT
  NULL, timesUsed INTEGER, firstUsed INTEGER, lastUsed INTEGER, guid TEXT);
CREATE TABLE moz_deleted_formhistory (id INTEGER PRIMARY KEY, timeDeleted INTEGER, guid TEXT);
CREATE TABLE moz_sources (id INTEGER PRIMARY KEY, source TEXT NOT NULL);
CREATE TABLE moz_history_to_sources (history_id INTEGER, source_id INTEGER, PRIMARY KEY
  (history_id, source_id), FOREIGN KEY (history_id) REFERENCES moz_formhistory(id) ON DELETE
  CASCADE, FOREIGN KEY (source_id) REFERENCES moz_sources(id) ON DELETE CASCADE) WITHOUT ROWID;
)sql";

/// Firefox, content-prefs.sqlite.
inline constexpr std::string_view contentPreferences = R"sql(
CREATE TABLE groups (id INTEGER PRIMARY KEY, name TEXT NOT NULL);
CREATE TABLE settings (id INTEGER PRIMARY KEY, name TEXT NOT NULL);
CREATE TABLE prefs (id INTEGER PRIMARY KEY, groupID INTEGER REFERENCES groups(id), settingID
  INTEGER NOT NULL REFERENCES settings(id), value BLOB, timestamp INTEGER NOT NULL DEFAULT 0);
)sql";

/// Chromium, Cookies.
inline constexpr std::string_view chromiumCookies = R"sql(
CREATE TABLE meta(key LONGVARCHAR NOT NULL UNIQUE PRIMARY KEY, value LONGVARCHAR);
CREATE TABLE cookies(creation_utc INTEGER NOT NULL,host_key TEXT NOT NULL,top_frame_site_key TEXT
  NOT NULL,name TEXT NOT NULL,value TEXT NOT NULL,encrypted_value BLOB NOT NULL,path TEXT NOT
  NULL,expires_utc INTEGER NOT NULL,is_secure INTEGER NOT NULL,is_httponly INTEGER NOT
  NULL,last_access_utc INTEGER NOT NULL,has_expires INTEGER NOT NULL,is_persistent INTEGER NOT
  NULL,priority INTEGER NOT NULL,samesite INTEGER NOT NULL,source_scheme INTEGER NOT
  NULL,source_port INTEGER NOT NULL,last_update_utc INTEGER NOT NULL,source_type INTEGER NOT
  NULL,has_cross_site_ancestor INTEGER NOT NULL);
)sql";

/// Chromium, Favicons.
inline constexpr std::string_view chromiumFavicons = R"sql(
CREATE TABLE meta(key LONGVARCHAR NOT NULL UNIQUE PRIMARY KEY, value LONGVARCHAR);
CREATE TABLE favicons(id INTEGER PRIMARY KEY,url LONGVARCHAR NOT NULL,icon_type INTEGER DEFAULT 1);
CREATE TABLE favicon_bitmaps(id INTEGER PRIMARY KEY,icon_id INTEGER NOT NULL,last_updated INTEGER
  DEFAULT 0,image_data BLOB,width INTEGER DEFAULT 0,height INTEGER DEFAULT 0,last_requested INTEGER
  DEFAULT 0);
CREATE TABLE icon_mapping(id INTEGER PRIMARY KEY,page_url LONGVARCHAR NOT NULL,icon_id INTEGER);
)sql";

/// Chromium, Login Data: passwords.
inline constexpr std::string_view logins = R"sql(
CREATE TABLE meta(key LONGVARCHAR NOT NULL UNIQUE PRIMARY KEY, value LONGVARCHAR);
CREATE TABLE logins (origin_url VARCHAR NOT NULL, action_url VARCHAR, username_element VARCHAR,
  username_value VARCHAR, password_element VARCHAR, password_value BLOB, submit_element VARCHAR,
  signon_realm VARCHAR NOT NULL, date_created INTEGER NOT NULL, blacklisted_by_user INTEGER NOT
  NULL, scheme INTEGER NOT NULL, password_type INTEGER, times_used INTEGER, form_data BLOB,
  display_name VARCHAR, icon_url VARCHAR, federation_url VARCHAR, skip_zero_click INTEGER,
  generation_upload_status INTEGER, possible_username_pairs BLOB, id INTEGER PRIMARY KEY
  AUTOINCREMENT, date_last_used INTEGER NOT NULL DEFAULT 0, moving_blocked_for BLOB,
  date_password_modified INTEGER NOT NULL DEFAULT 0, UNIQUE (origin_url, username_element,
  username_value, password_element, signon_realm));
)sql";

/// GNOME Web, ephy-history.db.
inline constexpr std::string_view epiphany = R"sql(
CREATE TABLE hosts (id INTEGER PRIMARY KEY,url LONGVARCAR,title LONGVARCAR,visit_count INTEGER
  DEFAULT 0 NOT NULL,zoom_level REAL DEFAULT 0.0);
CREATE TABLE urls (id INTEGER PRIMARY KEY,host INTEGER NOT NULL REFERENCES hosts(id) ON DELETE
  CASCADE,url LONGVARCAR,title LONGVARCAR,sync_id LONGVARCAR,visit_count INTEGER DEFAULT 0 NOT
  NULL,typed_count INTEGER DEFAULT 0 NOT NULL,last_visit_time INTEGER,thumbnail_update_time
  INTEGER DEFAULT 0,hidden_from_overview INTEGER DEFAULT 0);
CREATE TABLE visits (id INTEGER PRIMARY KEY,url INTEGER NOT NULL REFERENCES urls(id) ON DELETE
  CASCADE,visit_time INTEGER NOT NULL,visit_type INTEGER NOT NULL,referring_visit INTEGER);
)sql";

/// Falkon, browsedata.db.
inline constexpr std::string_view falkon = R"sql(
CREATE TABLE autofill (id INTEGER PRIMARY KEY, server TEXT NOT NULL, data TEXT, password TEXT,
  username TEXT, last_used INTEGER DEFAULT 0 NOT NULL);
CREATE TABLE autofill_encrypted (id INTEGER PRIMARY KEY, server TEXT NOT NULL, data_encrypted
  TEXT, password_encrypted TEXT, username_encrypted TEXT, last_used INTEGER DEFAULT 0 NOT NULL);
CREATE TABLE autofill_exceptions (id INTEGER PRIMARY KEY, server TEXT NOT NULL);
CREATE TABLE history (id INTEGER PRIMARY KEY, url TEXT NOT NULL, title TEXT, date INTEGER
  DEFAULT 0 NOT NULL, count INTEGER DEFAULT 0 NOT NULL);
CREATE UNIQUE INDEX history_urluniqueindex ON history (url);
CREATE TABLE search_engines (id INTEGER PRIMARY KEY, name TEXT NOT NULL, url TEXT, icon BLOB,
  shortcut TEXT, suggestionsUrl TEXT, suggestionsParameters TEXT, postData TEXT);
CREATE TABLE icons (id INTEGER PRIMARY KEY, url TEXT NOT NULL, icon BLOB);
CREATE UNIQUE INDEX icons_urluniqueindex ON icons (url);
)sql";

/// qutebrowser, version 4 of history.sqlite.
inline constexpr std::string_view qutebrowser = R"sql(
CREATE TABLE History (url NOT NULL, title NOT NULL, atime NOT NULL, redirect NOT NULL);
CREATE TABLE CompletionHistory (url PRIMARY KEY, title NOT NULL, last_atime NOT NULL);
CREATE TABLE CompletionMetaInfo (key PRIMARY KEY, value);
)sql";

/// Thunderbird, global-messages-db.sqlite: what finds mails by their words. The full texts stand in
/// a virtual table, of which this is the part with the texts.
inline constexpr std::string_view mailIndex = R"sql(
CREATE TABLE folderLocations (id INTEGER PRIMARY KEY, folderURI TEXT NOT NULL, dirtyStatus INTEGER
  NOT NULL, name TEXT NOT NULL, indexingPriority INTEGER NOT NULL);
CREATE TABLE conversations (id INTEGER PRIMARY KEY, subject TEXT NOT NULL, oldestMessageDate
  INTEGER, newestMessageDate INTEGER);
CREATE TABLE messages (id INTEGER PRIMARY KEY, folderID INTEGER, messageKey INTEGER, conversationID
  INTEGER NOT NULL, date INTEGER, headerMessageID TEXT, deleted INTEGER NOT NULL default 0,
  jsonAttributes TEXT, notability INTEGER NOT NULL default 0);
CREATE TABLE messagesText_content (docid INTEGER PRIMARY KEY, c0body, c1subject,
  c2attachmentNames, c3author, c4recipients);
)sql";

/// Thunderbird, abook.sqlite, the addresses that people keep, and history.sqlite, those that were
/// collected.
inline constexpr std::string_view addressBook = R"sql(
CREATE TABLE properties (card TEXT, name TEXT, value TEXT);
CREATE TABLE lists (uid TEXT PRIMARY KEY, name TEXT, nickName TEXT, description TEXT);
CREATE TABLE list_cards (list TEXT, card TEXT, PRIMARY KEY(list, card));
)sql";

/// Firefox before the sites of pages had a table, and before notes on visits.
inline constexpr std::string_view formerPlaces = R"sql(
CREATE TABLE moz_places (id INTEGER PRIMARY KEY, url LONGVARCHAR, title LONGVARCHAR, rev_host
  LONGVARCHAR, visit_count INTEGER DEFAULT 0, hidden INTEGER DEFAULT 0 NOT NULL, typed INTEGER
  DEFAULT 0 NOT NULL, frecency INTEGER DEFAULT -1 NOT NULL, last_visit_date INTEGER, guid TEXT,
  foreign_count INTEGER DEFAULT 0 NOT NULL);
CREATE TABLE moz_historyvisits (id INTEGER PRIMARY KEY, from_visit INTEGER, place_id INTEGER,
  visit_date INTEGER, visit_type INTEGER, session INTEGER);
CREATE TABLE moz_inputhistory (place_id INTEGER NOT NULL, input LONGVARCHAR NOT NULL, use_count
  INTEGER, PRIMARY KEY (place_id, input));
CREATE TABLE moz_bookmarks (id INTEGER PRIMARY KEY, type INTEGER, fk INTEGER DEFAULT NULL, parent
  INTEGER, position INTEGER, title LONGVARCHAR, guid TEXT);
CREATE TABLE moz_keywords (id INTEGER PRIMARY KEY AUTOINCREMENT, keyword TEXT UNIQUE, place_id
  INTEGER, post_data TEXT);
CREATE TABLE moz_anno_attributes (id INTEGER PRIMARY KEY, name VARCHAR(32) UNIQUE NOT NULL);
CREATE TABLE moz_annos (id INTEGER PRIMARY KEY, place_id INTEGER NOT NULL, anno_attribute_id
  INTEGER, content LONGVARCHAR);
)sql";

/// Chromium before it grouped visits, with a table that went since.
inline constexpr std::string_view formerChromiumHistory = R"sql(
CREATE TABLE urls(id INTEGER PRIMARY KEY, url LONGVARCHAR, title LONGVARCHAR);
CREATE TABLE visits(id INTEGER PRIMARY KEY, url INTEGER NOT NULL, visit_time INTEGER NOT NULL);
CREATE TABLE typed_url_sync_metadata (storage_key INTEGER PRIMARY KEY NOT NULL, value BLOB);
CREATE TABLE downloads (id INTEGER PRIMARY KEY, target_path LONGVARCHAR NOT NULL);
CREATE TABLE downloads_reroute_info (download_id INTEGER NOT NULL PRIMARY KEY);
)sql";

}  // namespace dorvanel::test::schema
