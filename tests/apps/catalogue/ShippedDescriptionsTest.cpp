// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "apps/catalogue/Catalogue.h"

namespace dorvanel::test {
namespace {

using catalogue::Catalogue;

class ShippedDescriptionsTest : public ::testing::Test {
  protected:
    const Catalogue catalogue_ = Catalogue::load({SHIPPED, {}}, platform::defaultFileManager());
};

TEST_F(ShippedDescriptionsTest, NoneHasAFault) {
    for (const Catalogue::Fault& fault : catalogue_.faults()) {
        ADD_FAILURE() << fault.file << ":" << fault.problem.line << ": " << fault.problem.reason;
    }
}

TEST_F(ShippedDescriptionsTest, ThereIsOneForEachApplicationThatTheFactsCarry) {
    std::vector<std::string> ids;
    for (const catalogue::Entry& entry : catalogue_.entries()) ids.push_back(entry.id);
    EXPECT_THAT(ids,
                ::testing::ElementsAre("brave", "chromium", "claws-mail", "desktop", "epiphany",
                                       "evolution", "falkon", "firefox", "geary", "google-chrome",
                                       "kmail", "konqueror", "librewolf", "microsoft-edge", "opera",
                                       "qutebrowser", "thunderbird", "vivaldi"));
}

TEST_F(ShippedDescriptionsTest, OnlyWhatNobodyWouldMissIsRecommended) {
    const std::set<std::string> recommended = {"cache",      "history", "downloads",
                                               "thumbnails", "crashes", "logs"};
    for (const catalogue::Entry& entry : catalogue_.entries()) {
        for (const catalogue::Trace& trace : entry.traces) {
            EXPECT_EQ(trace.recommended, recommended.contains(trace.kind))
                << entry.id << ", " << trace.kind;
        }
    }
}

TEST_F(ShippedDescriptionsTest, WhatIsNotRecommendedSaysWhatIsLostWithIt) {
    for (const catalogue::Entry& entry : catalogue_.entries()) {
        for (const catalogue::Trace& trace : entry.traces) {
            if (trace.recommended) continue;
            EXPECT_TRUE(trace.why.ends_with(".")) << entry.id << ", " << trace.kind;
        }
    }
}

/// Whether a pattern whose last component is `pattern` finds a file of this name.
bool finds(std::string_view pattern, std::string_view name) {
    if (pattern.empty()) return name.empty();
    if (pattern.front() == '*') {
        return finds(pattern.substr(1), name) || (!name.empty() && finds(pattern, name.substr(1)));
    }
    if (name.empty() || (pattern.front() != '?' && pattern.front() != name.front())) return false;
    return finds(pattern.substr(1), name.substr(1));
}

TEST_F(ShippedDescriptionsTest, NoPathLeadsToWhatMustStay) {
    const std::vector<std::string> kept = {
        // Firefox, Thunderbird and their kin
        "{profile}/logins.json",
        "{profile}/logins.db",
        "{profile}/key4.db",
        "{profile}/cert9.db",
        "{profile}/prefs.js",
        "{profile}/user.js",
        "{profile}/bookmarkbackups",
        "{profile}/search.json.mozlz4",
        "{profile}/extensions",
        "{profile}/extensions.json",
        "{profile}/storage",
        "{profile}/storage/default",
        "{profile}/storage/permanent",
        "{profile}/storage/default/moz-extension+++1",
        "{profile}/abook.sqlite",
        "{profile}/openpgp.sqlite",
        "{profile}/calendar-data",
        "{profile}/ImapMail",
        "{profile}/Mail",
        "{profile}/Mail/Local Folders",
        "{profile}/Mail/pop.example/Inbox",
        "{profile}/Mail/pop.example/Inbox.msf",
        "{profile}/Mail/pop.example/popstate.dat",
        "{profile}/Mail/pop.example/msgFilterRules.dat",
        "{profile}/virtualFolders.dat",
        "{profile}/ImapMail/imap.example/msgFilterRules.dat",
        "{config}/profiles.ini",
        "{config}/installs.ini",
        // Chromium and its kin
        "{profile}/Bookmarks",
        "{profile}/Bookmarks.bak",
        "{profile}/EncryptedBookmarks2",
        "{profile}/Login Data",
        "{profile}/Login Data For Account",
        "{profile}/Preferences",
        "{profile}/Secure Preferences",
        "{profile}/Extensions",
        "{profile}/Extension Cookies",
        "{profile}/Local Extension Settings",
        "{profile}/Web Data",
        "{profile}/History",
        "{config}/Local State",
        // the other browsers
        "{data}/bookmarks.gvdb",
        "{profile}/bookmarks.json",
        "{profile}/browsedata.db",
        "{profile}/sessions",
        "{profile}/settings.ini",
        "{data}/bookmarks.xml",
        "{data}/sessions",
        "{data}/sessions/my-own.yml",
        "{data}/webengine/user_prefs.json",
        // the other mail programs
        "{data}/mail/local/cur",
        "{data}/mail/local/folders.db",
        "{data}/local-mail/inbox/cur",
        "{data}/akonadi/akonadi.db",
        "{data}/akonadi/file_db_data",
        "{config}/accountrc",
        "{config}/folderlist.xml",
        "{config}/tagsdb",
        "{config}/uidl",
        "{mail}/inbox/1",
        "{mail}/trash/.claws_mark",
    };
    for (const catalogue::Entry& entry : catalogue_.entries()) {
        for (const catalogue::Trace& trace : entry.traces) {
            for (const std::string& path : trace.shred) {
                for (const std::string& name : kept) {
                    const bool isAsDeep =
                        std::ranges::count(path, '/') == std::ranges::count(name, '/');
                    EXPECT_FALSE(isAsDeep && finds(path, name)) << entry.id << ": " << path;
                    EXPECT_FALSE(name.starts_with(path + "/")) << entry.id << ": " << path;
                }
                EXPECT_TRUE(path.starts_with("{cache}/") || !path.ends_with("}")) << entry.id;
            }
        }
    }
}

TEST_F(ShippedDescriptionsTest, ExtensionsOfChromiumKeepTheirDatabases) {
    for (const catalogue::Trace& trace : catalogue_.find("chromium")->traces) {
        for (const std::string& path : trace.shred) {
            EXPECT_NE(path, "{profile}/IndexedDB");
            EXPECT_FALSE(finds(path, "{profile}/IndexedDB/chrome-extension_a_0.indexeddb.leveldb"))
                << path;
        }
    }
}

TEST_F(ShippedDescriptionsTest, OnlyTrashAndJunkAreEmptied) {
    for (const catalogue::Entry& entry : catalogue_.entries()) {
        for (const catalogue::Trace& trace : entry.traces) {
            EXPECT_TRUE(trace.empty.empty() || trace.kind == "trash" || trace.kind == "junk")
                << entry.id << ", " << trace.kind;
        }
    }
}

TEST_F(ShippedDescriptionsTest, OfSettingsOnlyTheseKeysGo) {
    for (const catalogue::Entry& entry : catalogue_.entries()) {
        for (const catalogue::Trace& trace : entry.traces) {
            for (const catalogue::JsonCleaning& json : trace.json) {
                EXPECT_EQ(json.file, "{profile}/Preferences") << entry.id;
                for (const std::string& key : json.remove) {
                    const bool isOfSites = key.starts_with("profile.content_settings.exceptions.");
                    EXPECT_TRUE(isOfSites || trace.kind == "logs") << entry.id << ": " << key;
                }
            }
        }
    }
}

TEST_F(ShippedDescriptionsTest, AFamilySharesItsTraces) {
    const catalogue::Entry* chromium = catalogue_.find("chromium");
    ASSERT_NE(chromium, nullptr);
    for (const std::string id : {"brave", "google-chrome", "microsoft-edge", "opera", "vivaldi"}) {
        const catalogue::Entry* entry = catalogue_.find(id);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(entry->traces.size(), chromium->traces.size()) << id;
        for (const catalogue::Install& install : entry->installs) {
            EXPECT_TRUE(std::ranges::none_of(chromium->installs, [&](const auto& other) {
                return other.roots.at("config") == install.roots.at("config");
            })) << id;
        }
    }
}

}  // namespace
}  // namespace dorvanel::test
