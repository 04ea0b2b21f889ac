// SPDX-License-Identifier: MIT
#include "app/desktop/Translations.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QCoreApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QPushButton>

#include "app/desktop/AlertWords.h"
#include "app/desktop/InterfaceFile.h"
#include "app/desktop/Words.h"
#include "platform/Resources.h"
#include "support/EnvironmentVariable.h"

namespace dorvanel::desktop {
namespace {

QList<QTranslator*> translators() {
    return QCoreApplication::instance()->findChildren<QTranslator*>();
}

/// Another language than the one of the other tests, as long as it lives.
class Language {
  public:
    explicit Language(const QLocale& locale) {
        installTranslations(platform::resourcesFolder(), locale);
    }
    ~Language() {
        for (QTranslator* translator : translators()) {
            if (!before_.contains(translator)) delete translator;
        }
    }
    Language(const Language&) = delete;
    Language& operator=(const Language&) = delete;

    /// The files that are in use, besides what English needs.
    [[nodiscard]] QStringList files() const {
        QStringList names;
        for (const QTranslator* translator : translators()) {
            if (before_.contains(translator) || translator->filePath().isEmpty()) continue;
            names << QFileInfo(translator->filePath()).fileName();
        }
        return names;
    }

  private:
    QList<QTranslator*> before_ = translators();
};

TEST(TranslationsTest, AnEnglishTextAgreesWithItsNumber) {
    EXPECT_EQ(englishFor("%n item(s) (is|are) still there.", 1), "%n item is still there.");
    EXPECT_EQ(englishFor("%n item(s) (is|are) still there.", 2), "%n items are still there.");
    EXPECT_EQ(englishFor("%n item(s)", 0), "%n items");
}

TEST(TranslationsTest, BracketsThatAreNoChoiceStay) {
    EXPECT_EQ(englishFor("%n file(s) (all of them)", 1), "%n file (all of them)");
}

TEST(TranslationsTest, TheProgramsTextsAgreeWithTheirNumbers) {
    EXPECT_EQ(Words::tr("%n file(s)", nullptr, 1), "1 file");
    EXPECT_EQ(Words::tr("%n file(s)", nullptr, 3), "3 files");
    EXPECT_EQ(Words::tr("A text (s) without a number"), "A text (s) without a number");
}

TEST(TranslationsTest, TheWindowIsGermanForAGerman) {
    const Language german(QLocale(QLocale::German, QLocale::Austria));
    const auto window = loadInterfaceFile(platform::resourcesFolder(), "MainMenu");
    ASSERT_NE(window, nullptr);
    const auto* button = window->findChild<QPushButton*>(QStringLiteral("shredNowButton"));
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(), "&Spuren schreddern");
    const auto* action = window->findChild<QAction*>(QStringLiteral("reallyQuitAction"));
    ASSERT_NE(action, nullptr);
    EXPECT_EQ(action->text(), "Dorvanel &beenden");
    EXPECT_EQ(action->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
}

TEST(TranslationsTest, TheAlertsOfARunAreGermanForAGerman) {
    const std::string question =
        "Are you sure you want to shred these items: Browser Cache, Mail TrashApple Mail Junk, "
        "Some Reader (cache) ?";
    const std::string rest =
        " Email or Browser Applications did not quit.  Please quit them and click OK to continue.  "
        "If you continue without quitting those applicaitons some items will not be shredded.";
    EXPECT_EQ(alertWords(question), question);
    EXPECT_EQ(alertWords("2" + rest), "2" + rest);
    const Language german{QLocale(QLocale::German)};
    EXPECT_EQ(alertWords(question),
              "Sollen diese Objekte wirklich geschreddert werden: Zwischenspeicher der Browser, "
              "E-Mail-PapierkorbJunk von Apple Mail, Some Reader (cache)?");
    EXPECT_EQ(alertWords("1" + rest).substr(0, 15), "1 E-Mail-Progra");
    EXPECT_EQ(alertWords("x" + rest), "x" + rest);
    EXPECT_EQ(alertWords("Shred"), "Shred");
    EXPECT_EQ(statusWords("No supported applications are running..."),
              "Keine unterstützte Anwendung läuft.");
    EXPECT_EQ(statusWords("Shred"), "Shred");
}

TEST(TranslationsTest, TheToolkitSpeaksTheSameLanguageWhereItCan) {
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    const bool isThere = QFile::exists(folder + QStringLiteral("/qtbase_de.qm"));
    const Language german{QLocale(QLocale::German)};
    QStringList expected{QStringLiteral("dorvanel-x_de.qm")};
    if (isThere) {
        expected << QStringLiteral("qtbase_de.qm");
        EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Abbrechen");
    } else {
        std::puts("not run: the toolkit's own texts are not installed here");
    }
    EXPECT_EQ(german.files(), expected);
}

TEST(TranslationsTest, NoLanguageIsTakenThatIsWantedLessThanEnglish) {
    const test::EnvironmentVariable locale("LC_ALL", "en_US.UTF-8");
    const test::EnvironmentVariable languages("LANGUAGE", "en_US:de");
    ASSERT_TRUE(QLocale::system().uiLanguages().contains(QStringLiteral("de")));
    EXPECT_EQ(Language(QLocale::system()).files(), QStringList());
    EXPECT_EQ(Language(QLocale(QLocale::Swahili)).files(), QStringList());
}

TEST(TranslationsTest, WhatALanguageLacksAgreesWithItsNumberInEnglish) {
    const Language german{QLocale(QLocale::German)};
    EXPECT_EQ(Words::tr("%n nowhere said text(s)", nullptr, 1), "1 nowhere said text");
    EXPECT_EQ(Words::tr("%n nowhere said text(s)", nullptr, 2), "2 nowhere said texts");
}

}  // namespace
}  // namespace dorvanel::desktop
