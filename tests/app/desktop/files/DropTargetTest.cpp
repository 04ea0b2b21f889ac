// SPDX-License-Identifier: MIT
#include "app/desktop/files/DropTarget.h"

#include <QDragEnterEvent>
#include <filesystem>

#include "app/desktop/DesktopFixture.h"

namespace dorvanel::test {
namespace {

class DropTargetTest : public DesktopFixture {
  protected:
    desktop::DropOverlay& overlayOf(QWidget& window) {
        return static_cast<desktop::DropOverlay&>(*window.findChild<QFrame*>("dropOverlay"));
    }
    desktop::DropOverlay& overlay() { return overlayOf(window()); }

    /// A drag comes in over a widget; the toolkit hands it on to who takes it.
    static bool enter(QWidget& over, const QMimeData& data) {
        QDragEnterEvent event(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(&over, &event);
        return move(over, data);
    }
    /// Whether what is dragged could be dropped here.
    static bool move(QWidget& over, const QMimeData& data) {
        QDragMoveEvent event(QPoint(6, 6), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                             Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(&over, &event);
        EXPECT_TRUE(!event.isAccepted() || event.dropAction() == Qt::CopyAction);
        return event.isAccepted();
    }
    static void leave(QWidget& over) {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(&over, &event);
    }
    static bool drop(QWidget& over, const QMimeData& data) {
        QDropEvent event(QPointF(6, 6), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(&over, &event);
        const bool accepted = event.isAccepted();
        settle();
        return accepted;
    }
    void drag(QMimeData& data, int files) {
        QList<QUrl> urls;
        for (int i = 0; i < files; ++i) {
            const std::string path = home / ("file " + std::to_string(i));
            writeFile(path, "x");
            urls << QUrl::fromLocalFile(QString::fromStdString(path));
        }
        data.setUrls(urls);
    }
};

TEST_F(DropTargetTest, SaysHowMuchWouldBeShreddedAsLongAsItIsDraggedOverTheWindow) {
    ASSERT_TRUE(launch());
    EXPECT_FALSE(overlay().isVisible());
    QMimeData many, one;
    drag(many, 13);
    drag(one, 1);
    EXPECT_TRUE(enter(window(), many));
    EXPECT_TRUE(overlay().isVisible());
    EXPECT_EQ(overlay().text(), "Drop to shred 13 items");
    leave(window());
    EXPECT_FALSE(overlay().isVisible());
    EXPECT_TRUE(enter(window(), one));
    EXPECT_EQ(overlay().text(), "Drop to shred 1 item");
    leave(window());
}

TEST_F(DropTargetTest, ADropOnAnyPartOfTheWindowIsOneOnTheWindow) {
    ASSERT_TRUE(launch());
    for (const char* part : {"mBWSafari", "shredNowButton", "shreddingProgress"}) {
        QMimeData data;
        drag(data, 2);
        auto* widget = find<QWidget>(part);
        EXPECT_TRUE(enter(*widget, data)) << part;
        EXPECT_TRUE(overlay().isVisible());
        int asked = 0;
        onQuestion([&](QDialog& question) {
            ++asked;
            EXPECT_FALSE(overlay().isVisible());
            decline(question);
        });
        EXPECT_TRUE(drop(*widget, data));
        EXPECT_EQ(asked, 1);
    }
}

TEST_F(DropTargetTest, ADropOnADocumentAsksToo) {
    ASSERT_TRUE(launch());
    desktop->instanceHandlers().open({"/tmp/a"});
    QWidget& document = *desktop->documents().back()->window();
    QMimeData data;
    drag(data, 1);
    EXPECT_TRUE(enter(document, data));
    EXPECT_EQ(overlayOf(document).text(), "Drop to shred 1 item");
    onQuestion([](QDialog& question) { agree(question); });
    EXPECT_TRUE(drop(document, data));
    waitForEnd();
    EXPECT_FALSE(std::filesystem::exists(home / "file 0"));
}

TEST_F(DropTargetTest, WhatIsNoFileOfThisMachineIsRefusedWithTheReason) {
    ASSERT_TRUE(launch());
    for (const char* url : {"https://example.org/page", "file://elsewhere/file"}) {
        QMimeData data;
        drag(data, 1);
        data.setUrls(data.urls() << QUrl(url));
        EXPECT_FALSE(enter(window(), data));
        EXPECT_TRUE(overlay().isVisible());
        EXPECT_EQ(overlay().text(), "Only files and folders of this computer can be shredded");
        EXPECT_FALSE(drop(window(), data));
        EXPECT_FALSE(overlay().isVisible());
    }
    EXPECT_EQ(readFile(home / "file 0"), "x");
}

TEST_F(DropTargetTest, WhileARunIsInProgressTheReasonIsThatUntilItHasEnded) {
    addSafariCache();
    set("ConfirmShredding", false);
    draws.hold();
    ASSERT_TRUE(launch());
    trigger("shredAndNothingAction");
    QMimeData data;
    drag(data, 3);
    EXPECT_FALSE(enter(window(), data));
    EXPECT_EQ(overlay().text(), "Not now: a run is in progress");
    draws.release();
    waitForEnd();
    EXPECT_TRUE(move(window(), data)) << "it is still dragged over the window";
    EXPECT_EQ(overlay().text(), "Drop to shred 3 items");
    leave(window());
    EXPECT_EQ(readFile(home / "file 0"), "x");
}

TEST_F(DropTargetTest, TheOverlayStaysWithinAWindowThatChangesItsSize) {
    ASSERT_TRUE(launch());
    QMimeData data;
    drag(data, 1);
    EXPECT_TRUE(enter(window(), data));
    window().resize(window().size() + QSize(60, 60));
    settle();
    const QRect contents = window().centralWidget()->geometry();
    EXPECT_TRUE(contents.contains(overlay().geometry()));
    EXPECT_GT(overlay().width(), contents.width() / 2);
    leave(window());
}

}  // namespace
}  // namespace dorvanel::test
