// SPDX-License-Identifier: MIT
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <filesystem>

#include "DesktopFixture.h"

namespace dorvanel::test {
namespace {

using Kind = platform::Medium::Kind;

class MediumLineTest : public DesktopFixture {
  protected:
    QLabel& line() { return *find<QLabel>("mediumNotice"); }
    QString shownLine() { return line().isVisible() ? line().text() : QString(); }
    std::string makeFile(const char* name) {
        const std::string path = home / name;
        writeFile(path, "secret");
        return path;
    }
    void run() {
        trigger("shredAndNothingAction");
        waitUntil([this] { return desktop->mainWindow().message().startsWith("Shredded:"); });
        desktop->controller().run().waitForWorker();
    }
};

TEST_F(MediumLineTest, ARunSaysItOnceAndGoesOnWithoutAsking) {
    const std::string page = addSafariCache();
    const std::string caches = home / "Library/Caches/Safari";
    medium.media[caches] = {Kind::solidState, ""};
    set("ConfirmShredding", false);
    ASSERT_TRUE(launch());
    EXPECT_EQ(shownLine(), "");
    run();
    EXPECT_EQ(shownLine(),
              "Overwriting in place may not reach the old contents of “~/Library/Caches/Safari” "
              "(solid-state drive).");
    EXPECT_FALSE(std::filesystem::exists(page));
}

TEST_F(MediumLineTest, TheNextRequestTakesTheLineAwayUnlessItSaysItsOwn) {
    medium.media[home / "Library/Caches/Safari"] = {Kind::copyOnWrite, "btrfs"};
    set("ConfirmShredding", false);
    addSafariCache();
    ASSERT_TRUE(launch());
    run();
    EXPECT_TRUE(shownLine().contains("btrfs"));
    medium.media.clear();
    desktop->mainWindow().showMessage({});
    addSafariCache();
    run();
    EXPECT_EQ(shownLine(), "");
}

TEST_F(MediumLineTest, ARunThatShredsNothingLeavesNoOldLine) {
    medium.media[home / "Library/Caches/Safari"] = {Kind::copyOnWrite, "btrfs"};
    set("ConfirmShredding", false);
    addSafariCache();
    ASSERT_TRUE(launch());
    run();
    set("ConfirmShredding", true);
    onAlert([](QMessageBox& box) { click(box, "No"); });
    trigger("shredAndNothingAction");
    EXPECT_EQ(shownLine(), "");
}

TEST_F(MediumLineTest, ItIsSaidOfItemsOfTheLaunch) {
    const std::string file = makeFile("old.txt");
    medium.media[file] = {Kind::network, "nfs"};
    ASSERT_TRUE(launch({file}));
    EXPECT_TRUE(shownLine().endsWith("“~/old.txt” (nfs network mount)."))
        << shownLine().toStdString();
    desktop->controller().run().waitForWorker();
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(MediumLineTest, ItIsSaidOfDroppedFilesOnceTheyAreAgreedTo) {
    const std::string one = makeFile("one.txt"), two = makeFile("two.txt");
    for (const std::string& path : {one, two}) medium.media[path] = {Kind::overlay, "overlay"};
    ASSERT_TRUE(launch());
    onQuestion(decline);
    desktop->filesDropped({one, two});
    EXPECT_EQ(shownLine(), "");
    onQuestion(agree);
    desktop->filesDropped({one, two});
    waitForEnd();
    EXPECT_TRUE(shownLine().endsWith("“~/one.txt” and 1 more (overlay mount)."));
    EXPECT_FALSE(std::filesystem::exists(one));
    EXPECT_FALSE(std::filesystem::exists(two));
}

TEST_F(MediumLineTest, ItIsSaidOfFilesPickedInTheOpenPanel) {
    const std::string file = makeFile("picked.txt");
    medium.media[file] = {Kind::userSpace, "fuse.sshfs"};
    ASSERT_TRUE(launch());
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&file] {
        auto* panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (panel == nullptr) return;
        panel->findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(file));
        panel->findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Open)->click();
    });
    answer.start(1);
    trigger("openDocAction");
    waitForEnd();
    EXPECT_TRUE(shownLine().endsWith("“~/picked.txt” (fuse.sshfs mount)."));
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(desktop->mainWindow().message().startsWith("Shredded: 1 file"));
}

TEST_F(MediumLineTest, ALongPathIsCutInTheLineAndWholeInItsToolTip) {
    const std::string name = std::string(120, 'n') + ".txt";
    const std::string file = makeFile(name.c_str());
    medium.media[file] = {Kind::solidState, ""};
    ASSERT_TRUE(launch());
    const int width = window().width();
    onQuestion(agree);
    desktop->filesDropped({file});
    waitForEnd();
    EXPECT_FALSE(shownLine().contains(QString::fromStdString(name)));
    EXPECT_EQ(line().toolTip().toStdString(), "~/" + name);
    EXPECT_EQ(window().width(), width);
}

}  // namespace
}  // namespace dorvanel::test
