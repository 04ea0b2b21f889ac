// SPDX-License-Identifier: MIT
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "prefs/DefaultsFixture.h"

namespace dorvanel::test {
namespace {

using Strings = std::vector<std::string>;

std::string nested(int levels) {
    std::string list = "<plist version=\"1.0\"><dict><key>a</key>";
    for (int i = 0; i < levels; ++i) list += "<array>";
    for (int i = 0; i < levels; ++i) list += "</array>";
    return list + "</dict></plist>";
}

class DamagedDefaultsTest : public DefaultsFixture {
  protected:
    [[nodiscard]] std::string aside(int number = 1) const {
        return path() + " (damaged " + std::to_string(number) + ")";
    }
};

TEST_F(DamagedDefaultsTest, AFileThatCannotBeParsedIsReportedAtEveryStartAndStaysAsItIs) {
    const std::string xml = "<?xml version=\"1.0\"?><plist version=\"1.0\">";
    const Strings damaged = {
        "",
        "  \n",
        "hello world",
        "bplist00",
        std::string("bplist00\0\0\0\0\0\0", 14),
        "{ a = 1; }",
        std::string(3, '\0'),
        xml,
        xml + "</plist>",
        xml + "<dict><key>a</key><true/>",
        xml + "<dict><key>a</key><true/></dict>",
        xml + "<dict><key>a</key><true/></dict></plist> and more",
        xml + "<dict><key>a</key><true/></plist>",
        xml + "<dict><true/></dict></plist>",
        xml + "<dict><key>a</key><novelty/></dict></plist>",
        xml + "<array><true/></array></plist>",
        xml + "<string>YES</string></plist>",
        nested(1000),
        nested(30000),
        "<plist version=\"1.0\"><dict><key>a</key><string>" + std::string(600 * 1024, 'x') +
            "</string></dict></plist>",
    };
    for (const std::string& bytes : damaged) {
        SCOPED_TRACE(bytes.substr(0, 80));
        reports.clear();
        writeFile(path(), bytes);
        for (std::size_t start = 1; start <= 2; ++start) {
            const auto defaults = open();
            EXPECT_FALSE(defaults->isKnown());
            ASSERT_EQ(reports.size(), start);
            EXPECT_TRUE(reports.back().starts_with(path() + ": parse: ")) << reports.back();
            defaults->setBool(true, "ShredHistory");
            EXPECT_FALSE(defaults->hasObjectForKey("ShredHistory")) << "a change is dropped";
            const auto saved = defaults->synchronize();
            ASSERT_FALSE(saved);
            EXPECT_EQ(saved.error().message(), reports.back());
            EXPECT_EQ(readFile(path()), bytes);
            EXPECT_EQ(names(), Strings{name});
        }
    }
}

TEST_F(DamagedDefaultsTest, NoTruncationOfTheXmlFormIsTakenForAList) {
    store("{'ShredHistory': True, 'EnabledBrowsers': ['Safari', 'iCab'], 'NumberOfWrites': 3}");
    std::string whole = readFile(path());
    whole.pop_back();  // the last newline may go
    for (std::size_t length = 0; length < whole.size(); length += 1) {
        writeFile(path(), whole.substr(0, length));
        ASSERT_FALSE(open()->isKnown()) << length;
        ASSERT_EQ(readFile(path()), whole.substr(0, length));
    }
}

TEST_F(DamagedDefaultsTest, AFreshStartSetsTheFileAsideUnderANewNameAndWritesAnEmptyList) {
    writeFile(aside(1), "of another day");
    writeFile(path(), "junk");
    const auto defaults = open();
    reports.clear();
    ASSERT_TRUE(defaults->startAfresh());
    EXPECT_TRUE(defaults->isKnown());
    EXPECT_EQ(reports, Strings{path() + ": parse: not a whole property list; kept as " + aside(2)});
    EXPECT_EQ(readFile(aside(1)), "of another day");
    EXPECT_EQ(readFile(aside(2)), "junk");
    EXPECT_EQ(stored(), "{}");
    defaults->setBool(true, "ShredHistory");
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(stored(), "{'ShredHistory': True}");
    EXPECT_TRUE(open()->isKnown());
}

TEST_F(DamagedDefaultsTest, AFreshStartLeavesAListThatCanBeReadByThenAndReadsIt) {
    writeFile(path(), "junk");
    const auto defaults = open();
    EXPECT_FALSE(defaults->hasObjectForKey("ShredHistory"));
    store("{'ShredHistory': True}");
    ASSERT_TRUE(defaults->startAfresh());
    EXPECT_TRUE(defaults->boolForKey("ShredHistory"));
    EXPECT_EQ(names(), Strings{name});
    defaults->removeObjectForKey("ShredHistory");
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(stored(), "{}") << "what was absent while nothing was known is a change all the same";
}

TEST_F(DamagedDefaultsTest, DamageDoneWhileTheProgramRunsIsNotOverwritten) {
    store("{'ShredHistory': True, 'EnabledBrowsers': ['Safari']}");
    const auto defaults = open();
    writeFile(path(), "junk");
    defaults->setBool(true, "NSA");
    EXPECT_FALSE(defaults->synchronize());
    EXPECT_TRUE(defaults->isKnown()) << "what was read before is what the user chose";
    EXPECT_EQ(readFile(path()), "junk");
    EXPECT_EQ(names(), Strings{name});

    ASSERT_TRUE(defaults->startAfresh());
    EXPECT_EQ(readFile(aside()), "junk");
    EXPECT_EQ(stored("dict(sorted(d.items()))"),
              "{'EnabledBrowsers': ['Safari'], 'NSA': True, 'ShredHistory': True}");
}

TEST_F(DamagedDefaultsTest, TheTargetOfALinkIsSetAsideBesideItself) {
    writeFile(home / "dotfiles/prefs.plist", "junk");
    std::filesystem::create_symlink("../../dotfiles/prefs.plist", path());
    ASSERT_TRUE(open()->startAfresh());
    EXPECT_EQ(readFile(home / "dotfiles/prefs.plist (damaged 1)"), "junk");
    EXPECT_TRUE(std::filesystem::is_symlink(path()));
    EXPECT_EQ(names(), Strings{name});
    EXPECT_EQ(stored(), "{}");
}

TEST_F(DamagedDefaultsTest, AFolderInThePlaceOfTheFileIsSetAsideWithWhatItHolds) {
    writeFile(path() + "/inside", "kept");
    ASSERT_TRUE(open()->startAfresh());
    EXPECT_EQ(readFile(aside() + "/inside"), "kept");
    EXPECT_EQ(stored(), "{}");
}

TEST_F(DamagedDefaultsTest, WhereNothingCanBeSetAsideNothingIsKnownAndTheFileStays) {
    writeFile(path(), "junk");
    std::filesystem::permissions(preferences(), std::filesystem::perms(0555));
    for (const std::string& folder : {home.path().string(), home / "Library"}) {
        ASSERT_EQ(chmod(folder.c_str(), 0755), 0);
    }
    ASSERT_EQ(chmod(path().c_str(), 0644), 0);
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && setuid(65534) != 0) _exit(2);
        const auto defaults = open();
        if (defaults->startAfresh().ok()) _exit(3);
        _exit(defaults->isKnown() ? 4 : 0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readFile(path()), "junk");
    std::filesystem::permissions(preferences(), std::filesystem::perms(0755));
}

TEST_F(DamagedDefaultsTest, WhatCouldNotBeReadBackIsNotSaved) {
    store("{'ShredHistory': True}");
    Strings profiles;
    for (int i = 0; i < 12000; ++i) profiles.push_back("profile-" + std::string(60, 'x'));
    {
        const auto defaults = open();
        defaults->setArray(profiles, "ProfilesMenu");
        const auto saved = defaults->synchronize();
        ASSERT_FALSE(saved);
        EXPECT_EQ(saved.error().message(),
                  path() + ": save preferences: too large for a list of preferences");
        profiles.resize(3);
        defaults->setArray(profiles, "ProfilesMenu");
        ASSERT_TRUE(defaults->synchronize());
    }
    EXPECT_TRUE(open()->isKnown());
    EXPECT_EQ(stored("len(d['ProfilesMenu'])"), "3");
}

TEST_F(DamagedDefaultsTest, WhateverASaveTakesTheNextStartReads) {
    // Sizes around the largest list, byte by byte at the end.
    const std::size_t limit = std::size_t{512} * 1024;
    for (std::size_t size = limit - 300; size < limit; ++size) {
        std::filesystem::remove(path());
        const auto defaults = open();
        defaults->setArray({std::string(size, 'x')}, "ProfilesMenu");
        const bool isSaved = defaults->synchronize().ok();
        EXPECT_EQ(std::filesystem::exists(path()), isSaved);
        ASSERT_TRUE(open()->isKnown()) << size;
    }
    EXPECT_FALSE(std::filesystem::exists(path())) << "the last ones are too large";
}

TEST_F(DamagedDefaultsTest, AByteOrderMarkIsNoDamage) {
    store("{'ShredHistory': True}");
    writeFile(path(), "\xEF\xBB\xBF" + readFile(path()));
    EXPECT_TRUE(open()->boolForKey("ShredHistory"));
    EXPECT_EQ(reports, Strings{});
}

TEST_F(DamagedDefaultsTest, WhatIsNoFileIsReportedAndLeftAlone) {
    std::filesystem::create_directory(path());
    const auto defaults = open();
    EXPECT_EQ(reports, Strings{path() + ": read: not a regular file"});
    EXPECT_FALSE(defaults->isKnown());
    defaults->setBool(true, "ShredHistory");
    EXPECT_FALSE(defaults->synchronize());
    EXPECT_TRUE(std::filesystem::is_directory(path()));
    EXPECT_EQ(names(), Strings{name});
}

TEST_F(DamagedDefaultsTest, APipeInThePlaceOfTheFileHangsNothing) {
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    const auto defaults = open();
    EXPECT_EQ(reports, Strings{path() + ": read: not a regular file"});
    EXPECT_FALSE(defaults->isKnown());
    defaults->setBool(true, "ShredHistory");
    EXPECT_FALSE(defaults->synchronize());
}

TEST_F(DamagedDefaultsTest, AFileThatMayNotBeReadIsReportedAndLeftAlone) {
    store("{'ShredHistory': True}");
    const std::string before = readFile(path());
    ASSERT_EQ(chmod(path().c_str(), 0), 0);
    // An ordinary user's process: root reads everything. It may write the folder.
    for (const std::string& folder :
         {home.path().string(), home / "Library", home / "Library/Preferences"}) {
        ASSERT_EQ(chmod(folder.c_str(), 0777), 0);
    }
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && setuid(65534) != 0) _exit(2);
        const auto defaults = open();
        if (reports != Strings{path() + ": open: Permission denied"}) _exit(3);
        if (defaults->isKnown()) _exit(5);
        defaults->setBool(true, "ShredCache");
        _exit(defaults->synchronize().ok() ? 4 : 0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    ASSERT_EQ(chmod(path().c_str(), 0600), 0);
    EXPECT_EQ(readFile(path()), before);
    EXPECT_EQ(names(), Strings{name});
}

}  // namespace
}  // namespace dorvanel::test
