// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "app/terminal/OutcomeText.h"
#include "app/terminal/TestTerminal.h"
#include "log/ActivityLog.h"
#include "platform/Language.h"
#include "platform/Resources.h"
#include "prefs/PropertyListDefaults.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

/// The program itself, with the translation that was built beside it.
class GermanTest : public ::testing::Test {
  protected:
    /// What the command line prints on both streams, in a language.
    static std::string says(const std::string& language, const std::string& words) {
        const EnvironmentVariable wanted("LANGUAGE", language);
        const EnvironmentVariable locale("LC_ALL", "C.UTF-8");
        const std::string command = "'" DORVANEL_PROGRAM "' " + words + " 2>&1 </dev/null";
        std::FILE* pipe = popen(command.c_str(), "r");
        std::string said;
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
            said += static_cast<char>(c);
        }
        pclose(pipe);
        return said;
    }
    static bool holds(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }

    TemporaryHome home;
};

TEST_F(GermanTest, WhatWasDoneIsToldWithNumbersThatAgree) {
    writeFile(home / "one", "1");
    EXPECT_EQ(says("de", "shred '" + home / "one" + "'"),
              "1 Objekt: 1 Datei überschrieben (1 Byte), 1 Datei und 0 Ordner entfernt\n");
    writeFile(home / "a", "12");
    writeFile(home / "b", "3");
    EXPECT_EQ(says("de", "shred '" + home / "a" + "' '" + home / "b" + "'"),
              "2 Objekte: 2 Dateien überschrieben (3 Byte), 2 Dateien und 0 Ordner entfernt\n");
}

TEST_F(GermanTest, ARefusalIsGermanAndIsEscapedAsEver) {
    EXPECT_EQ(says("de", "shred \"$(printf 'no\\nthing')\""),
              "dorvanel: „no\\nthing“ existiert nicht\n");
    EXPECT_EQ(says("de", "apps enable Mosaic"),
              "dorvanel: es gibt keine Anwendung „Mosaic“; „dorvanel apps“ listet alle auf\n");
}

TEST_F(GermanTest, WhatFailedIsToldInTheOrderOfTheLanguage) {
    const EnvironmentVariable wanted("LANGUAGE", "de");
    const EnvironmentVariable locale("LC_ALL", "C.UTF-8");
    platform::speakLanguageOfEnvironment(platform::translationsFolder());
    TestTerminal console;
    Outcome outcome;
    outcome.notRemoved = 1;
    outcome.notCleaned = 2;
    outcome.note("/x", "open", 0, "busy");
    outcome.note("/y", "juggle", 0, "busy");
    terminal::tellOutcome(outcome, console.terminal);
    platform::speakEnglish();
    EXPECT_EQ(console.err.str(),
              "dorvanel: /x: konnte nicht geöffnet werden: busy\n"
              "dorvanel: /y: fehlgeschlagen (juggle): busy\n"
              "dorvanel: 1 Objekt ist noch da\n"
              "dorvanel: 2 Stellen konnten nicht bereinigt werden\n");
}

TEST_F(GermanTest, HelpIsGermanAndItsWordsAreTheSame) {
    for (const std::string command : {"", "shred ", "recover ", "watch ", "run ", "prefs ", "apps ",
                                      "profiles ", "traces ", "trash ", "log "}) {
        const std::string help = says("de", command + "--help");
        EXPECT_TRUE(help.find("Aufruf: dorvanel") != std::string::npos) << help;
        EXPECT_TRUE(holds(help, "\nOptionen:\n  -h,--help")) << help;
        EXPECT_FALSE(holds(help, "Options:") || holds(help, "Subcommands:")) << help;
    }
    EXPECT_TRUE(holds(says("de", "--help"), "\nBefehle:\n  shred "));
    EXPECT_TRUE(holds(says("de", "shred --help"), "--preview"));
}

TEST_F(GermanTest, WhatScriptsReadIsTheSameInEveryLanguage) {
    writeFile(home / ".cache/mozilla/firefox/x.default/cache2/entries/A", "page");
    std::filesystem::create_directories(home / "Library/Mozilla/Profiles/somebody");
    for (const std::string words : {"prefs", "prefs get NumberOfWrites", "apps", "profiles",
                                    "traces --json --all", "--version", "run --preview --json"}) {
        const std::string english = says("en", words);
        EXPECT_FALSE(english.empty()) << words;
        const auto withoutTime = [](std::string text) {
            const std::size_t start = text.find("\"started\"");
            return start == std::string::npos ? text
                                              : text.erase(start, text.find('\n', start) - start);
        };
        EXPECT_EQ(withoutTime(says("de", words)), withoutTime(english)) << words;
    }
}

TEST_F(GermanTest, ReasonsInAReportAreEnglish) {
    writeFile(home / "file");
    const std::string inside = home / "file/inside";
    EXPECT_EQ(says("de", "shred --json '" + inside + "'"),
              "dorvanel: \"" + inside + "\" cannot be looked at: Not a directory\n");
    EXPECT_TRUE(holds(says("de", "shred '" + inside + "'"), "“ kann nicht untersucht werden: "));
}

TEST_F(GermanTest, QuestionsAreEnglishAsTheirAnswersAre) {
    says("en", "prefs set ConfirmShredding YES");
    writeFile(home / ".local/share/Trash/files/x", "secret");
    const std::string said = says("de", "trash");
    EXPECT_TRUE(holds(said,
                      "Dorvanel Confirmation\nAre you sure you want to shred these items: "
                      "1 item in the trash (6 bytes) ?\n[No] Yes: "))
        << said;
}

TEST_F(GermanTest, WhatIsStoredIsTheSameInEveryLanguage) {
    writeFile(home / ".local/share/Trash/files/x", "secret");
    const auto stored = [&](const std::string& language) {
        std::filesystem::remove_all(home / "Library");
        says(language, "prefs set NumberOfWrites 4");
        says(language, "prefs set ActivityLog YES");
        says(language, "prefs set ShredHistory YES");
        says(language, "run --yes");
        std::string log = readFile(activityLogPath());
        for (char& c : log) {
            if (c >= '0' && c <= '9') c = '0';  // its dates
        }
        EXPECT_FALSE(log.empty());
        return readFile(userDefaultsPath()) + log;
    };
    EXPECT_EQ(stored("de"), stored("en"));
}

}  // namespace
}  // namespace dorvanel::test
