// SPDX-License-Identifier: MIT
#include <QAbstractScrollArea>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>

#include "DesktopFixture.h"

// On a screen of 1366x768 at scale 2, in both directions of writing: see main_small.cpp.

namespace dorvanel::test {
namespace {

class SmallScreenTest : public DesktopFixture,
                        public ::testing::WithParamInterface<Qt::LayoutDirection> {
  protected:
    SmallScreenTest() { QApplication::setLayoutDirection(GetParam()); }
    ~SmallScreenTest() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

    /// Whether the widget scrolls, and need not be in sight as a whole.
    static bool scrolls(const QWidget& widget) {
        for (const QWidget* parent = widget.parentWidget(); parent != nullptr;
             parent = parent->isWindow() ? nullptr : parent->parentWidget()) {
            if (qobject_cast<const QAbstractScrollArea*>(parent) != nullptr) return true;
        }
        return false;
    }

    /// What is off the screen, or cut off, by its object name.
    static std::string misplacedIn(QWidget& window) {
        settle();
        QStringList misplaced;
        const QRect screen = window.screen()->availableGeometry();
        if (!screen.contains(window.frameGeometry())) {
            const QRect frame = window.frameGeometry();
            misplaced << QStringLiteral("%1 itself: %2x%3 of %4x%5 at %6,%7")
                             .arg(window.objectName())
                             .arg(frame.width())
                             .arg(frame.height())
                             .arg(screen.width())
                             .arg(screen.height())
                             .arg(frame.x())
                             .arg(frame.y());
        }
        for (const QWidget* widget : window.findChildren<QWidget*>()) {
            if (!widget->isVisibleTo(&window) || widget->window() != &window) continue;
            if (scrolls(*widget)) continue;
            const QRect place(widget->mapTo(&window, QPoint()), widget->size());
            const bool isCut = qobject_cast<const QPushButton*>(widget) != nullptr &&
                               widget->width() < widget->minimumSizeHint().width();
            if (!window.rect().contains(place) || isCut) {
                misplaced << widget->metaObject()->className() + (' ' + widget->objectName());
            }
        }
        return misplaced.join(", ").toStdString();
    }
};

TEST_P(SmallScreenTest, TheMainWindowFits) {
    ASSERT_TRUE(launch());
    EXPECT_EQ(misplacedIn(window()), "");
}

TEST_P(SmallScreenTest, TheMainWindowFitsWithAFailureAndANotice) {
    ASSERT_TRUE(launch());
    desktop->mainWindow().failures().add({"2 items are still there.", "details", "10:42"});
    desktop->mainWindow().showMediumNotice(
        "Overwriting in place may not reach the old contents of “~/Library/Caches/Safari” and 3 "
        "more (solid-state drive).",
        "details");
    EXPECT_EQ(misplacedIn(window()), "");
}

TEST_P(SmallScreenTest, ThePanelFits) {
    ASSERT_TRUE(launch());
    desktop->panel().showPanel();
    EXPECT_EQ(misplacedIn(*desktop->panel().window()), "");
}

TEST_P(SmallScreenTest, ADocumentFits) {
    ASSERT_TRUE(launch());
    const std::string file = home / (std::string(200, 'n') + ".pdf");
    writeFile(file, "x");
    desktop->openFiles({file});
    EXPECT_EQ(misplacedIn(*desktop->documents().back()->window()), "");
}

INSTANTIATE_TEST_SUITE_P(Directions, SmallScreenTest,
                         ::testing::Values(Qt::LeftToRight, Qt::RightToLeft),
                         [](const auto& direction) {
                             return direction.param == Qt::LeftToRight ? "LeftToRight"
                                                                       : "RightToLeft";
                         });

}  // namespace
}  // namespace dorvanel::test
