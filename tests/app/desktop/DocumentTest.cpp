// SPDX-License-Identifier: MIT
#include <QMimeData>
#include <QScreen>
#include <QShortcut>
#include <QTreeView>
#include <filesystem>

#include "DesktopFixture.h"
#include "app/desktop/Bytes.h"

namespace dorvanel::test {
namespace {

class DocumentTest : public DesktopFixture {
  protected:
    static QTreeView& listOf(const desktop::MyDocument& document) {
        return *document.window()->findChild<QTreeView*>("documentFiles");
    }
    static QString cell(const desktop::MyDocument& document, int row, int column = 0) {
        return listOf(document).model()->index(row, column).data().toString();
    }
    /// Waits until a cell of the list says so.
    static void waitForCell(const desktop::MyDocument& document, int row, int column,
                            const std::string& text) {
        waitUntil([&] { return cell(document, row, column).toStdString() == text; });
    }
    /// Opens a document, once what it shows is known.
    desktop::MyDocument& open(const std::vector<std::string>& files) {
        desktop->instanceHandlers().open(files);
        auto& document = *desktop->documents().back();
        const auto& model = static_cast<desktop::DocumentModel&>(*listOf(document).model());
        waitUntil([&] {
            for (std::size_t row = 0; row < files.size(); ++row) {
                if (!model.isLookedAt(row)) return false;
            }
            return true;
        });
        return document;
    }
    static void pressShred(const desktop::MyDocument& document) {
        document.window()->findChild<QPushButton*>("documentShredButton")->click();
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
    auto& document = open({one, two});
    ASSERT_EQ(listOf(document).model()->rowCount(), 2);
    const QString folder = QString::fromStdString(home / "");
    EXPECT_EQ(cell(document, 0), folder + "a" + QChar::ReplacementCharacter + "b");
    EXPECT_EQ(cell(document, 1), folder + QChar::ReplacementCharacter + ".txt");
    EXPECT_EQ(textOf(document), "These were handed to Dorvanel. They have not been shredded.");
}

TEST_F(DocumentTest, EachFileHasItsIconItsSizeAndItsPlaceInTheOrderGiven) {
    const std::string folder = home / "album", file = home / "z.txt";
    writeFile(folder + "/a/one", "12345");
    writeFile(folder + "/two", "678");
    writeFile(file, "1234567");
    std::filesystem::create_symlink(file, folder + "/link");
    ASSERT_TRUE(launch());
    auto& document = open({file, folder});
    EXPECT_EQ(cell(document, 0).toStdString(), file);
    EXPECT_EQ(cell(document, 0, 1), "7 bytes");
    waitForCell(document, 1, 1, "3 files, 8 bytes");
    for (int row = 0; row < 2; ++row) {
        const QModelIndex index = listOf(document).model()->index(row, 0);
        EXPECT_FALSE(index.data(Qt::DecorationRole).value<QIcon>().isNull());
    }
    EXPECT_EQ(listOf(document).textElideMode(), Qt::ElideMiddle);
}

TEST_F(DocumentTest, WhatIsNotThereIsMarkedAndNotCalledUnshredded) {
    const std::string there = home / "there.txt", link = home / "leads nowhere";
    writeFile(there, "1");
    std::filesystem::create_symlink("/no/such/file", link);
    ASSERT_TRUE(launch());
    auto& document = open({there, home / "missing.txt", link});
    EXPECT_EQ(cell(document, 0).toStdString(), there);
    EXPECT_EQ(cell(document, 1).toStdString(), home / "missing.txt (not there)");
    EXPECT_EQ(cell(document, 1, 1), "") << "it was not seen to go";
    EXPECT_FALSE(listOf(document).model()->index(1, 0).flags() & Qt::ItemIsEnabled);
    EXPECT_EQ(cell(document, 2).toStdString(), link) << "the link itself is there";
    EXPECT_EQ(textOf(document),
              "These were handed to Dorvanel. Those that are there have not been shredded.");
    auto& second = open({home / "missing.txt"});
    EXPECT_EQ(textOf(second), "These were handed to Dorvanel. Nothing is there by these names.");
    EXPECT_FALSE(second.window()->findChild<QPushButton*>("documentShredButton")->isEnabled());
}

TEST_F(DocumentTest, WhatIsShreddedWhileTheDocumentIsOpenIsMarkedAfterwards) {
    const std::string page = addSafariCache();
    set("ConfirmShredding", false);
    ASSERT_TRUE(launch());
    auto& document = open({page});
    EXPECT_EQ(cell(document, 0).toStdString(), page);
    trigger("shredAndNothingAction");
    waitForCell(document, 0, 0, page + " (not there)");
    EXPECT_EQ(cell(document, 0, 1), "gone");
}

TEST_F(DocumentTest, ItsButtonAsksAboutAllOrJustTheSelected) {
    std::vector<std::string> files;
    for (const char* name : {"one.txt", "two.txt", "three.txt"}) {
        files.push_back(home / name);
        writeFile(files.back(), "x");
    }
    files.push_back(home / "missing.txt");
    ASSERT_TRUE(launch());
    auto& document = open(files);
    onQuestion([](QDialog& question) {
        EXPECT_TRUE(question.findChild<QLabel*>("itemsQuestion")->text().contains("3 items"));
        decline(question);
    });
    pressShred(document);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(readFile(files[static_cast<std::size_t>(i)]), "x");

    listOf(document).setCurrentIndex(listOf(document).model()->index(1, 0));
    onQuestion([](QDialog& question) { agree(question); });
    pressShred(document);
    waitForCell(document, 1, 0, files[1] + " (not there)");
    EXPECT_FALSE(std::filesystem::exists(files[1]));
    EXPECT_EQ(readFile(files[0]) + readFile(files[2]), "xx");
    EXPECT_FALSE(listOf(document).selectionModel()->hasSelection());
}

TEST_F(DocumentTest, WhatIsDraggedFromItAreCopiesByTheVeryBytesOfTheirNames) {
    const std::string odd = home / "a\xff\n#?.txt";
    writeFile(odd, "1");
    ASSERT_TRUE(launch());
    auto& document = open({odd});
    QAbstractItemModel& model = *listOf(document).model();
    const std::unique_ptr<QMimeData> data(model.mimeData({model.index(0, 0), model.index(0, 1)}));
    ASSERT_EQ(data->urls().size(), 1);
    EXPECT_EQ(desktop::pathOfUrl(data->urls().first()), odd);
    EXPECT_EQ(model.supportedDragActions(), Qt::CopyAction);
}

TEST_F(DocumentTest, TheKeyboardBeginsInTheListAndNotOnTheButton) {
    writeFile(home / "one.txt", "1");
    ASSERT_TRUE(launch());
    auto& document = open({home / "one.txt"});
    EXPECT_EQ(document.window()->focusWidget(), &listOf(document));
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
