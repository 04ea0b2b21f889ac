#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/DefaultsFixture.h"

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

TEST_F(DamagedDefaultsTest, AFileThatCannotBeParsedIsSetAsideAndReported) {
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
        const auto defaults = open();
        ASSERT_EQ(reports.size(), 1U);
        EXPECT_TRUE(reports[0].starts_with(path() + ": parse: ")) << reports[0];
        EXPECT_TRUE(reports[0].ends_with("; kept as " + aside())) << reports[0];
        EXPECT_EQ(readFile(aside()), bytes);
        EXPECT_FALSE(defaults->hasObjectForKey("a"));
        defaults->setBool(true, "ShredHistory");
        ASSERT_TRUE(defaults->synchronize());
        EXPECT_EQ(stored(), "{'ShredHistory': True}");
        EXPECT_EQ(readFile(aside()), bytes);
        std::filesystem::remove(aside());
    }
}

TEST_F(DamagedDefaultsTest, EveryTruncationOfTheXmlFormIsSetAside) {
    store("{'ShredHistory': True, 'EnabledBrowsers': ['Safari', 'iCab'], 'NumberOfWrites': 3}");
    std::string whole = readFile(path());
    whole.pop_back();  // the last newline may go
    for (std::size_t length = 0; length < whole.size(); length += 1) {
        reports.clear();
        writeFile(path(), whole.substr(0, length));
        open();
        ASSERT_EQ(reports.size(), 1U) << length;
        ASSERT_EQ(readFile(aside()), whole.substr(0, length));
        std::filesystem::remove(aside());
    }
}

TEST_F(DamagedDefaultsTest, AnEarlierFileThatWasSetAsideIsKept) {
    for (const char* bytes : {"one", "two", "three"}) {
        writeFile(path(), bytes);
        open();
    }
    EXPECT_EQ(readFile(aside(1)), "one");
    EXPECT_EQ(readFile(aside(2)), "two");
    EXPECT_EQ(readFile(aside(3)), "three");
    EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(DamagedDefaultsTest, DamageDoneWhileTheProgramRunsIsReportedBySynchronize) {
    const auto defaults = open();
    writeFile(path(), "junk");
    defaults->setBool(true, "ShredHistory");
    ASSERT_TRUE(defaults->synchronize());
    EXPECT_EQ(reports.size(), 1U);
    EXPECT_EQ(readFile(aside()), "junk");
    EXPECT_EQ(stored(), "{'ShredHistory': True}");
}

TEST_F(DamagedDefaultsTest, TheTargetOfALinkIsSetAsideBesideItself) {
    writeFile(home / "dotfiles/prefs.plist", "junk");
    std::filesystem::create_symlink("../../dotfiles/prefs.plist", path());
    open();
    EXPECT_EQ(reports.size(), 1U);
    EXPECT_EQ(readFile(home / "dotfiles/prefs.plist (damaged 1)"), "junk");
    EXPECT_EQ(names(), Strings{name});
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
    defaults->setBool(true, "ShredHistory");
    EXPECT_FALSE(defaults->synchronize());
    EXPECT_TRUE(std::filesystem::is_directory(path()));
    EXPECT_EQ(names(), Strings{name});
}

TEST_F(DamagedDefaultsTest, APipeInThePlaceOfTheFileHangsNothing) {
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    const auto defaults = open();
    EXPECT_EQ(reports, Strings{path() + ": read: not a regular file"});
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
