// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QKeyEvent>
#include <QTableView>
#include <filesystem>

#include "app/desktop/DesktopFixture.h"

namespace dorvanel::test {
namespace {

namespace fs = std::filesystem;

/// The question about files that somebody hands over.
class DroppedItemsTest : public DesktopFixture {
  protected:
    QString message() { return desktop->mainWindow().message(); }
    std::string makeFile(const std::string& name, const std::string& contents = "secret") {
        const std::string path = home / name;
        writeFile(path, contents);
        return path;
    }
    static QString cell(QDialog& dialog, int row, int column) {
        return dialog.findChild<QTableView*>("itemsTable")
            ->model()
            ->index(row, column)
            .data()
            .toString();
    }
    static QString textOf(QDialog& dialog, const char* label) {
        return dialog.findChild<QLabel*>(QLatin1String(label))->text();
    }
};

TEST_F(DroppedItemsTest, TheListTellsNamesSizesAndWhatThereIsToKnow) {
    const std::string one = makeFile("one", std::string(2048, 'x'));
    makeFile("tree/a");
    makeFile("tree/b");
    const std::string inside = makeFile("tree/a");
    const std::string named = makeFile("named");
    fs::create_hard_link(named, home.path() / "other name");
    fs::create_symlink(one, home.path() / "link");
    ASSERT_TRUE(launch());
    onQuestion([](QDialog& question) {
        EXPECT_EQ(textOf(question, "itemsQuestion"), "Shred 5 items? There is no way back.");
        EXPECT_EQ(cell(question, 0, 0), "link");
        EXPECT_EQ(cell(question, 0, 2), "A link: where it leads goes too");
        EXPECT_EQ(cell(question, 1, 1), "12 bytes");
        EXPECT_EQ(cell(question, 2, 1), "") << "it goes with its folder";
        EXPECT_EQ(cell(question, 3, 2), "Other names show what is written");
        EXPECT_EQ(cell(question, 4, 1), "2.00 KiB");
        EXPECT_TRUE(textOf(question, "itemsNotices").contains("1 file has other names"));
        EXPECT_EQ(question.findChild<QPushButton*>("shredPlannedButton")->text(), "Shred 5 Items");
        decline(question);
    });
    desktop->filesDropped({home / "link", home / "tree", inside, named, one});
    EXPECT_EQ(readFile(named), "secret");
    EXPECT_TRUE(fs::exists(inside));
}

TEST_F(DroppedItemsTest, EscapeAndReturnShredNothingAndCancelHasTheKeyboard) {
    const std::string file = makeFile("one");
    ASSERT_TRUE(launch());
    for (const int key : {Qt::Key_Return, Qt::Key_Escape}) {
        onQuestion([key](QDialog& question) {
            EXPECT_EQ(question.focusWidget()->objectName(), "cancelButton");
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
            QCoreApplication::sendEvent(&question, &event);
        });
        desktop->filesDropped({file});
    }
    EXPECT_EQ(readFile(file), "secret");
}

TEST_F(DroppedItemsTest, WhatIsShreddedIsWhatWasCheckedWhateverThePathLeadsToByThen) {
    const std::string file = makeFile("one");
    ASSERT_TRUE(launch());
    onQuestion([&](QDialog& question) {
        fs::rename(file, home.path() / "moved");
        writeFile(file, "another");
        agree(question);
    });
    desktop->filesDropped({file});
    waitForEnd();
    EXPECT_EQ(readFile(file), "another");
}

TEST_F(DroppedItemsTest, OneThatMustNotBeShreddedSavesAllAndNoQuestionStays) {
    const std::string file = makeFile("one");
    ASSERT_TRUE(launch());
    std::vector<std::string> files = {file};
    for (int i = 0; i < 300; ++i) files.push_back(home / ("missing " + std::to_string(i)));
    desktop->filesDropped(files);
    EXPECT_EQ(readFile(file), "secret");
    EXPECT_EQ(message(), "Nothing was shredded.");
    EXPECT_TRUE(desktop->mainWindow().failures().message().endsWith("does not exist"));
    EXPECT_TRUE(desktop->mainWindow().failures().allDetails().endsWith("and 100 more"));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(DroppedItemsTest, AnEmptyHandAsksNothing) {
    ASSERT_TRUE(launch());
    desktop->filesDropped({});
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(DroppedItemsTest, ALongListCostsNoWidgetForARow) {
    std::vector<std::string> files;
    for (int i = 0; i < 2000; ++i) files.push_back(makeFile("many/" + std::to_string(i)));
    ASSERT_TRUE(launch());
    onQuestion([](QDialog& question) {
        EXPECT_EQ(question.findChild<QPushButton*>("shredPlannedButton")->text(),
                  "Shred 2000 Items");
        EXPECT_EQ(cell(question, 1999, 1), "6 bytes");
        EXPECT_LT(question.findChildren<QWidget*>().size(), 60);
        agree(question);
    });
    desktop->filesDropped(files);
    waitForEnd();
    EXPECT_TRUE(fs::is_empty(home.path() / "many"));
}

TEST_F(DroppedItemsTest, ShredNeedNotWaitForTheSizes) {
    const std::string file = makeFile("one");
    ASSERT_TRUE(launch());
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&answer] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) return;
        auto* shred = dialog->findChild<QPushButton*>("shredPlannedButton");
        if (!shred->isEnabled()) return;
        answer.stop();
        shred->click();
    });
    answer.start(0);
    desktop->filesDropped({file});
    waitForEnd();
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(DroppedItemsTest, EveryControlOfItHasANameForAssistiveTechnology) {
    const std::string file = makeFile("one");
    ASSERT_TRUE(launch());
    onQuestion([](QDialog& question) {
        for (const char* name :
             {"itemsTable", "shredPlannedButton", "cancelButton", "itemsTotals"}) {
            auto* control = question.findChild<QWidget*>(QLatin1String(name));
            auto* accessible = QAccessible::queryAccessibleInterface(control);
            EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << name;
        }
        decline(question);
    });
    desktop->filesDropped({file});
}

}  // namespace
}  // namespace dorvanel::test
