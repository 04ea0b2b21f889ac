// SPDX-License-Identifier: MIT
#include <QListWidget>
#include <QScreen>
#include <QShortcut>
#include <filesystem>

#include "DesktopFixture.h"

namespace dorvanel::test {
namespace {

class DocumentTest : public DesktopFixture {
  protected:
    static QListWidget& listOf(const desktop::MyDocument& document) {
        return *document.window()->findChild<QListWidget*>("documentFiles");
    }
    static QString textOf(const desktop::MyDocument& document) {
        return document.window()->findChild<QLabel*>("documentText")->text();
    }
};

TEST_F(DocumentTest, TwoDocumentsAtOnceBothShowTheTitle) {
    ASSERT_TRUE(launch());
    desktop->instanceHandlers().open({home / "one.txt"});
    desktop->instanceHandlers().open({home / "two.txt"});
    ASSERT_EQ(desktop->documents().size(), 2U);
    for (const auto& document : desktop->documents()) {
        EXPECT_EQ(document->displayName(), "Dorvanel");
        EXPECT_EQ(document->windowNibName(), "MyDocument");
        EXPECT_EQ(document->window()->windowTitle(), "Dorvanel");
        EXPECT_TRUE(document->window()->isVisible());
    }
}

TEST_F(DocumentTest, TheWindowIsCentredEachTimeItIsLoaded) {
    ASSERT_TRUE(launch());
    const QPoint middle = QApplication::primaryScreen()->availableGeometry().center();
    for (int i = 0; i < 2; ++i) {
        desktop->instanceHandlers().open({home / "one.txt"});
        QWidget& window = *desktop->documents().back()->window();
        EXPECT_LE((window.frameGeometry().center() - middle).manhattanLength(), 4);
        window.move(0, 0);
    }
}

TEST_F(DocumentTest, ItNamesTheFilesOfOneHandOver) {
    const std::string one = home / "a\nb", two = home / "\xff.txt";
    writeFile(one, "1");
    writeFile(two, "2");
    ASSERT_TRUE(launch());
    desktop->instanceHandlers().open({one, two});
    auto& list = listOf(*desktop->documents().back());
    ASSERT_EQ(list.count(), 2);
    const QString folder = QString::fromStdString(home / "");
    EXPECT_EQ(list.item(0)->text(), folder + "a" + QChar::ReplacementCharacter + "b");
    EXPECT_EQ(list.item(1)->text(), folder + QChar::ReplacementCharacter + ".txt");
    EXPECT_EQ(textOf(*desktop->documents().back()),
              "These were handed to Dorvanel. They have not been shredded.");
}

TEST_F(DocumentTest, WhatIsNotThereIsMarkedAndNotCalledUnshredded) {
    const std::string there = home / "there.txt", link = home / "leads nowhere";
    writeFile(there, "1");
    std::filesystem::create_symlink("/no/such/file", link);
    ASSERT_TRUE(launch());
    desktop->instanceHandlers().open({there, home / "missing.txt", link});
    auto& document = *desktop->documents().back();
    EXPECT_EQ(listOf(document).item(0)->text().toStdString(), there);
    EXPECT_EQ(listOf(document).item(1)->text().toStdString(), home / "missing.txt (not there)");
    EXPECT_EQ(listOf(document).item(2)->text().toStdString(), link) << "the link itself is there";
    EXPECT_EQ(textOf(document),
              "These were handed to Dorvanel. Those that are there have not been shredded.");
    desktop->instanceHandlers().open({home / "missing.txt"});
    EXPECT_EQ(textOf(*desktop->documents().back()),
              "These were handed to Dorvanel. Nothing is there by these names.");
}

TEST_F(DocumentTest, WhatIsShreddedWhileTheDocumentIsOpenIsMarkedAfterwards) {
    const std::string page = addSafariCache();
    set("ConfirmShredding", false);
    ASSERT_TRUE(launch());
    desktop->instanceHandlers().open({page});
    auto& document = *desktop->documents().back();
    EXPECT_EQ(listOf(document).item(0)->text().toStdString(), page);
    trigger("shredAndNothingAction");
    waitUntil([this] { return desktop->mainWindow().message().startsWith("Shredded:"); });
    EXPECT_EQ(listOf(document).item(0)->text().toStdString(), page + " (not there)");
}

TEST_F(DocumentTest, AClosedDocumentIsLetGo) {
    ASSERT_TRUE(launch());
    desktop->instanceHandlers().open({"/tmp/a"});
    desktop->documents().back()->window()->close();
    desktop->instanceHandlers().open({"/tmp/b"});
    EXPECT_EQ(desktop->documents().size(), 1U);
}

TEST_F(DocumentTest, ItsWindowAndThePanelsCloseByKey) {
    ASSERT_TRUE(launch());
    desktop->instanceHandlers().open({"/tmp/a"});
    trigger("showPanelAction");
    QWidget* document = desktop->documents().back()->window();
    QWidget* panel = desktop->panel().window();
    for (QWidget* each : {document, panel}) {
        auto* key = each->findChild<QShortcut*>(QString(), Qt::FindDirectChildrenOnly);
        ASSERT_NE(key, nullptr);
        EXPECT_EQ(key->key(), QKeySequence(QKeySequence::Close));
        emit key->activated();
        EXPECT_FALSE(each->isVisible());
    }
}

TEST_F(DocumentTest, WithoutItsInterfaceFileTheSystemsLogSaysSo) {
    const std::string partial = home / "resources";
    writeFile(partial + "/MainMenu.ui", readFile(resources + "/MainMenu.ui"));
    resources = partial;
    ASSERT_TRUE(launch());
    desktop->instanceHandlers().open({"/tmp/a"});
    EXPECT_THAT(log.lines, ::testing::ElementsAre("Failed to load MyDocument.nib"));
    EXPECT_TRUE(desktop->documents().empty());
}

TEST_F(DocumentTest, WhatIsHandedOverBeforeTheLaunchIsThroughWaits) {
    make();
    desktop->instanceHandlers().open({"/tmp/a"});
    EXPECT_TRUE(desktop->documents().empty());
    ASSERT_TRUE(desktop->launch({}));
    EXPECT_EQ(desktop->documents().size(), 1U);
}

}  // namespace
}  // namespace dorvanel::test
