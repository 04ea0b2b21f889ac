// SPDX-License-Identifier: MIT
#include "app/Texts.h"

#include <gtest/gtest.h>
#include <locale.h>

#include <cstdlib>

#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {
namespace {

/// Translations that are made for the test, and a process that asks for one of them.
class TextsTest : public ::testing::Test {
  protected:
    ~TextsTest() override { platform::speakEnglish(); }

    /// Adds a translation of the texts: entries of a .po file.
    void translate(const std::string& language, const std::string& plurals,
                   const std::string& entries) {
        const std::string words = folder / (language + ".po");
        const std::string compiled = folder / (language + "/LC_MESSAGES/dorvanel.mo");
        writeFile(compiled);
        writeFile(words,
                  "msgid \"\"\nmsgstr \"\"\n\"Content-Type: text/plain; charset=UTF-8\\n\"\n"
                  "\"Plural-Forms: " +
                      plurals + ";\\n\"\n" + entries);
        // As it is: a translation that does not fit its text is what some tests are about.
        const std::string command = "msgfmt -o '" + compiled + "' '" + words + "'";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    }

    void speak(const std::string& languages, const char* locale = "C.UTF-8") {
        const EnvironmentVariable all("LC_ALL", locale);
        setenv("LANGUAGE", languages.c_str(), 1);
        platform::speakLanguageOfEnvironment(folder.path());
    }

    void translateToGerman(const std::string& entries) {
        translate("de", "nplurals=2; plural=(n != 1)", entries);
    }

    EnvironmentVariable formerLanguages{"LANGUAGE", ""};
    TemporaryFolder folder;
};

TEST_F(TextsTest, WithoutATranslationEnglishIsSaid) {
    speak("de");
    EXPECT_EQ(tr("{} and {}"), "{} and {}") << "without arguments nothing is filled in";
    EXPECT_EQ(tr("{} and {}", "one", "two"), "one and two");
    EXPECT_EQ(trn("{} file", "{} files", 0), "0 files");
    EXPECT_EQ(trn("{} file", "{} files", 1), "1 file");
    EXPECT_EQ(trn("{} file", "{} files", 2), "2 files");
    EXPECT_EQ(tr(""), "");
}

TEST_F(TextsTest, ATranslationMayPutThingsInAnotherOrder) {
    translateToGerman("msgid \"{} before {}\"\nmsgstr \"{1} hinter {0}\"\n");
    speak("de");
    EXPECT_EQ(tr("{} before {}", "a", "b"), "b hinter a");
    EXPECT_EQ(tr(""), "") << "not what the translation says of itself";
}

TEST_F(TextsTest, NumbersAgreeAsTheLanguageHasIt) {
    translate("pl",
              "nplurals=3; plural=(n==1 ? 0 : n%10>=2 && n%10<=4 && (n%100<10 || n%100>=20) ? 1 : "
              "2)",
              "msgid \"{} file\"\nmsgid_plural \"{} files\"\nmsgstr[0] \"{} plik\"\n"
              "msgstr[1] \"{} pliki\"\nmsgstr[2] \"{} plików\"\n");
    speak("pl");
    EXPECT_EQ(trn("{} file", "{} files", 1), "1 plik");
    EXPECT_EQ(trn("{} file", "{} files", 22), "22 pliki");
    EXPECT_EQ(trn("{} file", "{} files", 5), "5 plików");
}

TEST_F(TextsTest, ATranslationThatDoesNotFitIsPassedOver) {
    translateToGerman(
        "msgid \"left: {}\"\nmsgstr \"übrig: {} {}\"\n"
        "msgid \"right: {}\"\nmsgstr \"rechts: {:d}\"\n"
        "msgid \"open: {}\"\nmsgstr \"offen: {\"\n"
        "msgid \"{} file\"\nmsgid_plural \"{} files\"\nmsgstr[0] \"{1}\"\nmsgstr[1] \"{0:s}\"\n");
    speak("de");
    EXPECT_EQ(tr("left: {}", "x"), "left: x");
    EXPECT_EQ(tr("right: {}", "x"), "right: x");
    EXPECT_EQ(tr("open: {}", "x"), "open: x");
    EXPECT_EQ(trn("{} file", "{} files", 1), "1 file");
    EXPECT_EQ(trn("{} file", "{} files", 2), "2 files");
}

TEST_F(TextsTest, NoLanguageIsTakenThatIsWantedLessThanEnglish) {
    translateToGerman("msgid \"yes\"\nmsgstr \"ja\"\n");
    speak("en_GB:de");
    EXPECT_EQ(tr("yes"), "yes");
    speak("fr:en:de");
    EXPECT_EQ(tr("yes"), "yes");
    speak("fr:de");
    EXPECT_EQ(tr("yes"), "ja");
    speak("de:en");
    EXPECT_EQ(tr("yes"), "ja");
}

TEST_F(TextsTest, InTheLocaleOfScriptsEnglishIsSaid) {
    translateToGerman("msgid \"yes\"\nmsgstr \"ja\"\n");
    speak("de", "C");
    EXPECT_EQ(tr("yes"), "yes");
    speak("de", "xx_XX.UTF-8");
    EXPECT_EQ(tr("yes"), "yes") << "a locale that the machine does not have";
}

TEST_F(TextsTest, OnlyTextsFollowTheLocale) {
    translateToGerman("msgid \"yes\"\nmsgstr \"ja\"\n");
    const EnvironmentVariable path("LOCPATH", folder.path());
    const std::string make = "localedef -i de_DE -f ";
    if (std::system((make + "UTF-8 '" + folder / "de_DE.UTF-8'").c_str()) != 0 ||
        std::system((make + "ISO-8859-1 '" + folder / "de_DE.ISO-8859-1'").c_str()) != 0) {
        std::puts("not run: no German locale can be made here");
        return;
    }
    speak("", "de_DE.UTF-8");
    EXPECT_EQ(tr("yes"), "ja");
    EXPECT_STREQ(setlocale(LC_NUMERIC, nullptr), "C");
    EXPECT_STREQ(setlocale(LC_TIME, nullptr), "C");
    EXPECT_STREQ(setlocale(LC_COLLATE, nullptr), "C");
    EXPECT_EQ(tr("{:.1f} MiB", 1.5), "1.5 MiB");

    platform::speakEnglish();
    EXPECT_EQ(tr("yes"), "yes");
    EXPECT_STREQ(setlocale(LC_MESSAGES, nullptr), "C");

    speak("", "de_DE.ISO-8859-1");
    EXPECT_EQ(tr("yes"), "yes") << "characters that are not written as UTF-8";
    EXPECT_STREQ(setlocale(LC_CTYPE, nullptr), "C");
}

}  // namespace
}  // namespace dorvanel::test
