// SPDX-License-Identifier: MIT
#include <QClipboard>
#include <QDir>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTextBrowser>

#include "DesktopFixture.h"
#include "OpenedAddresses.h"
#include "app/desktop/help/HelpPages.h"

namespace dorvanel::test {
namespace {

class HelpTest : public DesktopFixture {
  protected:
    desktop::HelpWindow& help() { return desktop->help(); }
    QString message() {
        auto* label = help().findChild<QLabel*>("helpMessage");
        return label->isVisible() ? label->text() : QString();
    }
    void follow(const char* link) {
        emit help().findChild<QTextBrowser*>("helpText")->anchorClicked(QUrl(link));
    }
    QDir folder() { return QDir(desktop::helpFolder(resources)); }
    QString source(const QString& file) {
        return QString::fromStdString(readFile(folder().filePath(file).toStdString()));
    }
};

TEST_F(HelpTest, EveryPageOfTheListIsInstalledWithItsTitle) {
    QStringList files;
    for (const desktop::HelpPage& page : desktop::helpPages()) {
        files << page.file;
        ASSERT_TRUE(folder().exists(page.file)) << page.file;
        EXPECT_TRUE(source(page.file).contains("<h1>" + page.title + "</h1>")) << page.file;
    }
    files.sort();
    EXPECT_EQ(files, folder().entryList({"*.html"}, QDir::Files, QDir::Name));
}

TEST_F(HelpTest, EveryLinkLeadsToAPageOfTheHelp) {
    const QRegularExpression link(QStringLiteral("href=\"([^\"]*)\""));
    int links = 0;
    for (const QString& file : folder().entryList({"*.html"}, QDir::Files)) {
        for (auto match = link.globalMatch(source(file)); match.hasNext(); ++links) {
            const QString target = match.next().captured(1);
            const QString page = target.section('#', 0, 0), anchor = target.section('#', 1);
            EXPECT_TRUE(folder().exists(page))
                << file.toStdString() << ": " << target.toStdString();
            if (anchor.isEmpty()) continue;
            EXPECT_TRUE(source(page).contains("name=\"" + anchor + '"')) << target.toStdString();
        }
        EXPECT_FALSE(source(file).contains("<script")) << file.toStdString();
    }
    EXPECT_GT(links, 30);
}

TEST_F(HelpTest, ItIsInTheLanguageOfThePersonOrInEnglish) {
    const auto languageFor = [this](const QLocale& locale) {
        const QLocale before;
        QLocale::setDefault(locale);
        const QString name = folder().dirName();
        QLocale::setDefault(before);
        return name;
    };
    EXPECT_EQ(languageFor(QLocale(QLocale::German, QLocale::Austria)), "de");
    EXPECT_EQ(languageFor(QLocale(QLocale::English, QLocale::UnitedKingdom)), "en");
    EXPECT_EQ(languageFor(QLocale(QLocale::Swahili)), "en");
}

TEST_F(HelpTest, TheKeyOpensThePageAboutWhatIsInFront) {
    ASSERT_TRUE(launch());
    trigger("helpAction");
    EXPECT_EQ(help().page(), "index.html");
    EXPECT_EQ(find<QAction>("helpAction")->shortcut(), QKeySequence(Qt::Key_F1));
    trigger("showPanelAction");
    for (const auto& [page, file] : {std::pair("whatPage", "what.html"),
                                     {"howPage", "preferences.html"},
                                     {"watchingPage", "watching.html"},
                                     {"enablePage", "applications.html"}}) {
        QTabWidget& pages = *desktop->panel().pages();
        pages.setCurrentWidget(pages.findChild<QWidget*>(page));
        desktop->panel().window()->activateWindow();
        waitUntil([this] { return QApplication::activeWindow() == desktop->panel().window(); });
        trigger("helpAction");
        EXPECT_EQ(help().page(), file);
        EXPECT_TRUE(folder().exists(file));
        EXPECT_EQ(message(), "");
    }
}

TEST_F(HelpTest, ALinkIsFollowedWithinTheHelpAndNowhereElse) {
    const OpenedAddresses opened;
    ASSERT_TRUE(launch());
    help().showPage("index.html");
    follow("limits.html");
    EXPECT_EQ(help().page(), "limits.html");
    for (const char* link : {"https://example.org/", "file:///etc/passwd", "../../Info.plist"}) {
        follow(link);
        EXPECT_EQ(help().page(), "limits.html") << link;
        EXPECT_TRUE(message().endsWith(link)) << message().toStdString();
    }
    EXPECT_EQ(opened.addresses, QStringList());
    follow("index.html");
    EXPECT_EQ(message(), "");
}

TEST_F(HelpTest, APageThatIsNotInstalledIsSaidToBe) {
    resources = home / "nowhere";
    desktop::HelpWindow help(resources);
    help.showPage("index.html");
    EXPECT_TRUE(help.findChild<QLabel*>("helpMessage")->text().startsWith("This page of the help"));
}

TEST_F(HelpTest, TheListAndTheTextGoTogether) {
    ASSERT_TRUE(launch());
    help().showPage("watching.html");
    auto* list = help().findChild<QListWidget*>("helpPages");
    EXPECT_EQ(list->currentItem()->text(), "Watching");
    list->setCurrentRow(0);
    EXPECT_EQ(help().page(), "index.html");
}

TEST_F(HelpTest, AboutTellsVersionsThatCanBeCopiedAndTheTerms) {
    ASSERT_TRUE(launch());
    trigger("aboutAction");
    auto* about = window().findChild<QDialog*>("aboutDialog");
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->isVisible());
    EXPECT_EQ(about->findChild<QPlainTextEdit*>("aboutLicence")->toPlainText().toStdString(),
              readFile(DORVANEL_LICENSE));
    const QString versions = about->findChild<QLabel*>("aboutVersions")->text();
    EXPECT_TRUE(versions.startsWith(QStringLiteral("Dorvanel X ") + DORVANEL_VERSION));
    EXPECT_TRUE(versions.contains(QStringLiteral("Qt ") + qVersion()));
    about->findChild<QPushButton*>("aboutCopyButton")->click();
    EXPECT_EQ(QApplication::clipboard()->text(), versions);
    trigger("aboutAction");
    EXPECT_EQ(window().findChildren<QDialog*>("aboutDialog").size(), 1);
}

}  // namespace
}  // namespace dorvanel::test
