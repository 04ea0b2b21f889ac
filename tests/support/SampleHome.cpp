// SPDX-License-Identifier: MIT
#include "support/SampleHome.h"

#include <utility>

#include "support/SampleIndex.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

const std::vector<std::string> browserCaches = {
    "Library/Caches/Safari",
    "Library/Safari/Icons",
    "Library/Caches/MS Internet Cache",
    "Library/Preferences/MS Internet Cache",
    "Library/Preferences/Explorer/Download Cache",
    "Library/Preferences/iCab Preferences/iCab Cache",
    "Library/Caches/com.omnigroup.OmniWeb5/Cache.bundle",
    "Library/Caches/com.omnigroup.OmniWeb5/Page Icons",
    "Library/Preferences/Opera Preferences/Cache \u0192",
    "Library/Preferences/Opera 6 Preferences/Cache \u0192",
    "Library/Caches/Opera Cache/Cache \u0192",
    "Library/Preferences/Opera Preferences/Icons",
    "Library/Caches/Quicktime",
};

const std::vector<std::string> browserFiles = {
    "Library/Safari/History.plist",
    "Library/Safari/Downloads.plist",
    "Library/Preferences/Explorer/History.html",
    "Library/Preferences/Explorer/Downloads.html",
    "Library/Preferences/iCab Preferences/iCab Global History",
    "Library/Application Support/OmniWeb/HistoryIndex.ox",
    "Library/Application Support/OmniWeb/HistoryIndex.ox.lock",
    "Library/Application Support/OmniWeb/HistoryIndex.ox.log",
    "Library/Application Support/OmniWeb/PersistentHistory.plist",
    "Library/Application Support/OmniWeb 5/History.plist",
    "Library/Application Support/OmniWeb 5/HistoryIndex.ox",
    "Library/Application Support/OmniWeb 5/HistoryIndex.ox.lock",
    "Library/Application Support/OmniWeb 5/HistoryIndex.ox.log",
    "Library/Application Support/OmniWeb 5/PersistentHistory.plist",
    "Library/Preferences/Opera Preferences/Opera Global History",
    "Library/Preferences/Opera Preferences/Opera Visited Links",
    "Library/Preferences/Opera Preferences/Opera Window Settings",
    "Library/Preferences/Opera Preferences/Opera Direct History",
    "Library/Preferences/Opera Preferences/vlink4.dat",
    "Library/Preferences/Opera Preferences/vlink4.new",
    "Library/Preferences/Opera Preferences/download.dat",
    "Library/Preferences/Opera 6 Preferences/Opera Global History",
    "Library/Preferences/Opera 6 Preferences/Opera Direct History",
    "Library/Preferences/Opera 6 Preferences/vlink4.dat",
    "Library/Preferences/Opera 6 Preferences/autopera.win",
    "Library/Preferences/Opera 6 Preferences/Opera Transfer List.xml",
};

const std::vector<std::string> bystanders = {
    "Desktop/.DS_Store",
    "Desktop/R\u00e9sum\u00e9.doc",
    "Documents/.DS_Store",
    "Documents/Letter to Anna.rtf",
    "Documents/\u65e5\u672c\u8a9e.txt",
    "Documents/Taxes 2005/Receipts.pdf",
    "Pictures/Caf\xE9.jpg",  // a name from before Unicode
    "Pictures/Summer/IMG_0001.jpg",
    "Music/\u00c9tude.mp3",
    "Library/Safari/Bookmarks.plist",
    "Library/Preferences/com.apple.Safari.plist",
    "Library/Preferences/com.apple.mail.plist",
    "Library/Preferences/Explorer/Favorites.html",
    "Library/Preferences/Opera Preferences/Bookmarks",
    "Library/Application Support/OmniWeb 5/Bookmarks.html",
    "Library/Application Support/AddressBook/AddressBook.data",
    "Library/Caches/.DS_Store",
};

}  // namespace

SampleHome::SampleHome(std::filesystem::path home, std::uint32_t seed)
    : home_(std::move(home)), random_(seed) {
    std::filesystem::create_directories(home_);
}

void SampleHome::addEverything() {
    addBystanders();
    addBrowsers();
    addMailboxes();
    addMozillaProfile("default", 1, 2);
    addMozillaProfile("Ren\u00e9e", 2, 1);
    addMozillaProfile("never started", 0, 0);
    addFile("Library/Mozilla/Profiles/.DS_Store");
    addFirefoxProfile(randomName(8) + ".default");
    addFirefoxProfile(randomName(8) + ".work");
    addFile("Library/Application Support/Firefox/Profiles/.DS_Store");
    addOldProfiles(1, 1);
    addMailAccount("POP-joe@mail.example.org");
    addMailAccount("POP:anna@mail.example.org");
    addMailAccount("IMAP-joe@imap.example.org");
    addEnvelopeIndex({"local:///Inbox", "local:///Junk", "local:///Deleted%20Messages",
                      "pop://joe@mail.example.org/INBOX", "pop://joe@mail.example.org/Trash",
                      "pop://joe@mail.example.org/Junk", "imap://joe@imap.example.org:143/Trash",
                      "local:///Reisen%20nach%20K%C3%B6ln"},
                     12);
    addMailsmith(true);
}

void SampleHome::addBystanders() {
    for (const std::string& path : bystanders) addFile(path);
}

void SampleHome::addBrowsers() {
    for (const std::string& path : browserCaches) addCache(path, 5 + static_cast<int>(below(8)));
    for (const std::string& path : browserFiles) addFile(path);
}

void SampleHome::addMailboxes() {
    addCache("Library/Caches/Mail", 6);
    for (const char* mailbox : {"Inbox", "Drafts", "Junk", "Deleted Items", "Deleted Messages",
                                "Trash", "Reisen nach K\u00f6ln"}) {
        const std::string folder = std::string("Library/Mail/Mailboxes/") + mailbox + ".mbox/";
        addFile(folder + "mbox");
        addFile(folder + "table_of_contents");
    }
    addFile("Library/Mail/.DS_Store");
    for (const char* mailbox : {"In", "Out", "Trash", "Junk"}) {
        addFile(std::string("Documents/Eudora Folder/Mail Folder/") + mailbox);
    }
}

void SampleHome::addMozillaProfile(const std::string& name, int salts, int accounts) {
    const std::string profile = "Library/Mozilla/Profiles/" + name + "/";
    std::filesystem::create_directories(home_ / profile);
    for (int i = 0; i < salts; ++i) {
        const std::string salt = profile + randomName(8) + ".slt/";
        addProfileFiles(salt);
        addFile(salt + "history.mab");
        addFile(salt + "Netscape History");
        if (accounts > 0) addFile(salt + "Mail/.DS_Store");
        for (int account = 1; account <= accounts; ++account) {
            const std::string mail = salt + "Mail/pop" + std::to_string(account) + ".example.org/";
            for (const char* file : {"Inbox", "Inbox.msf", "Trash", "Trash.msf"}) {
                addFile(mail + file);
            }
        }
    }
}

void SampleHome::addFirefoxProfile(const std::string& name) {
    addProfileFiles("Library/Application Support/Firefox/Profiles/" + name + "/");
    addCache("Library/Caches/Firefox/Profiles/" + name + "/Cache", 4);
}

void SampleHome::addOldProfiles(int camino07Salts, int firefox08Salts) {
    const std::string camino07 = "Library/Application Support/Chimera/Profiles/default/";
    const std::string firefox08 = "Library/Phoenix/Profiles/default/";
    std::filesystem::create_directories(home_ / camino07);
    std::filesystem::create_directories(home_ / firefox08);
    for (int i = 0; i < camino07Salts; ++i) addProfileFiles(camino07 + randomName(8) + ".slt/");
    for (int i = 0; i < firefox08Salts; ++i) addProfileFiles(firefox08 + randomName(8) + ".slt/");
    addProfileFiles("Library/Application Support/Camino/");
}

void SampleHome::addMailAccount(const std::string& folder) {
    const std::string account = "Library/Mail/" + folder + "/";
    for (const char* mailbox : {"INBOX", "Deleted Messages", "Trash", "Junk"}) {
        addFile(account + mailbox + ".mbox/mbox");
    }
}

void SampleHome::addEnvelopeIndex(const std::vector<std::string>& urls, int messagesEach) {
    SampleIndex index(home_ / "Library/Mail/Envelope Index");
    index.run("begin");
    index.createTables();
    for (const std::string& url : urls) index.addMailbox(url, messagesEach);
    index.run("commit");
}

void SampleHome::addMailsmith(bool withTemplate) {
    const std::string mail = "Mail/Mailsmith User Data/Mail/";
    for (const char* mailbox : {"(incoming mail)", "(spam)", "Deleted Mail"}) {
        addFile(mail + mailbox + "/Messages");
        addFile(mail + mailbox + "/Index");
    }
    if (withTemplate) writeFile(home_ / (mail + "(dorvanelx)/Index"));
}

void SampleHome::addFile(const std::string& path) {
    std::string contents = "made for " + path + "\n";
    const std::size_t size = 100 + below(below(9000) + 1);
    while (contents.size() < size) contents += static_cast<char>(below(256));
    writeFile(home_ / path, contents);
}

void SampleHome::addCache(const std::string& path, int files) {
    std::filesystem::create_directories(home_ / path);
    for (int i = 0; i < files; ++i) {
        const std::string folder = path + "/0" + std::to_string(below(10)) + "/";
        addFile(folder + randomName(10) + ".cache");
    }
}

void SampleHome::addProfileFiles(const std::string& profile) {
    addCache(profile + "Cache", 4);
    for (const char* file : {"history.dat", "downloads.rdf", "bookmarks.html", "prefs.js"}) {
        addFile(profile + file);
    }
}

std::uint32_t SampleHome::below(std::uint32_t bound) {
    return static_cast<std::uint32_t>(random_()) % bound;
}

std::string SampleHome::randomName(int length) {
    std::string name;
    for (int i = 0; i < length; ++i) name += "abcdefghijklmnopqrstuvwxyz0123456789"[below(36)];
    return name;
}

}  // namespace dorvanel::test
