// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QStyle>
#include <thread>

#include "DesktopFixture.h"
#include "app/desktop/Colors.h"
#include "app/desktop/Elision.h"
#include "app/desktop/QtOutlets.h"
#include "app/desktop/plan/PlanWords.h"

namespace dorvanel::test {
namespace {

using ui::Color;

TEST(OutletsTest, WhatAWorkerSetBetweenTwoTurnsOfTheLoopIsShownOnce) {
    QProgressBar bar;
    bar.setRange(0, 100);
    desktop::QtProgressIndicator progress(bar);
    QLabel label;
    desktop::QtTextField name(label);
    int shown = 0;
    QObject::connect(&bar, &QProgressBar::valueChanged, [&shown] { ++shown; });

    constexpr int values = 200'000;
    std::thread([&] {
        for (int i = 0; i <= values; ++i) {
            progress.setDoubleValue(100.0 * i / values);
            progress.display();
            name.setStringValue("file " + std::to_string(i));
            name.display();
        }
    }).join();
    EXPECT_EQ(shown, 0) << "only the main thread touches a control";
    waitUntil([&] { return label.text() == "file 200000" && bar.value() == 100; });
    EXPECT_EQ(shown, 1);
}

TEST(OutletsTest, TheLastValueOfAWorkerIsShownAlsoWhileTheLoopTurns) {
    QLabel label;
    desktop::QtTextField name(label);
    std::thread worker([&] {
        for (int i = 0; i <= 20'000; ++i) name.setStringValue("file " + std::to_string(i));
    });
    waitUntil([&] { return label.text() == "file 20000"; });
    worker.join();
    EXPECT_EQ(label.text(), "file 20000");
}

TEST(OutletsTest, AValueBeyondTheEndShowsAsTheEnd) {
    QProgressBar bar;
    bar.setRange(0, 100);
    desktop::QtProgressIndicator progress(bar);
    progress.setDoubleValue(97);
    EXPECT_EQ(bar.value(), 97);
    progress.setDoubleValue(104);
    EXPECT_EQ(bar.value(), 100);
    progress.setDoubleValue(-1);
    EXPECT_EQ(bar.value(), 0);
}

TEST(OutletsTest, OnTheMainThreadAValueIsThereAtOnce) {
    QLabel label;
    desktop::QtTextField field(label);
    field.setStringValue("now");
    EXPECT_EQ(label.text(), "now");
}

TEST(OutletsTest, AValueOfTheMainThreadIsNotUndoneByAnOlderOneOfTheWorker) {
    QLabel label;
    desktop::QtTextField field(label);
    std::thread([&field] { field.setStringValue("older"); }).join();
    field.setStringValue("newer");
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    EXPECT_EQ(label.text(), "newer");
}

TEST(OutletsTest, ALongNameIsCutToTheLabelAndWholeInTheToolTip) {
    QLabel label;
    label.resize(120, 20);
    desktop::QtTextField field(label, desktop::QtTextField::Elide::middle);
    const std::string name(300, 'n');
    field.setStringValue(name);
    EXPECT_LT(label.text().size(), 60);
    EXPECT_EQ(label.toolTip().toStdString(), name);
    EXPECT_EQ(label.accessibleDescription().toStdString(), name);
}

TEST(OutletsTest, AMessageKeepsItsWordsAndALongOneOfThemIsCutAndWholeInTheToolTip) {
    QLabel label;
    label.setWordWrap(true);
    desktop::showCut(label, "Two words\nand a line.");
    EXPECT_EQ(label.text(), "Two words\nand a line.");
    EXPECT_EQ(label.toolTip(), "");
    EXPECT_EQ(label.accessibleName(), "");
    const QString whole = "Not saved: /" + QString(300, 'n') + " is full";
    desktop::showCut(label, whole);
    EXPECT_TRUE(label.text().startsWith("Not saved: /nnn"));
    EXPECT_TRUE(label.text().endsWith("n is full"));
    EXPECT_LE(label.minimumSizeHint().width(), 400);
    EXPECT_EQ(label.toolTip(), whole);
    EXPECT_EQ(label.accessibleName(), whole);
}

TEST(OutletsTest, NoTextOfAFileIsTakenForMarkup) {
    QLabel label;
    label.setTextFormat(Qt::PlainText);
    desktop::QtTextField field(label);
    field.setStringValue("<b>\xff\x1b[31m\xe2\x80\xae");
    const QChar r = QChar::ReplacementCharacter;
    EXPECT_EQ(label.text(), QString("<b>") + r + r + "[31m" + r);
}

TEST(OutletsTest, AnApplicationsStateIsTheShapeOfItsMarkAWordAndItsToolTipNotItsText) {
    QWidget parent;
    QLabel label("Safari", &parent);
    QLabel mark(&parent);
    QLabel word(&parent);
    desktop::ApplicationLabel outlet(label, mark, word);
    std::vector<QImage> shapes;
    QStringList tips;
    QStringList words;
    for (const Color color : {Color::red, Color::green, Color::lightGray}) {
        outlet.setTextColor(color);
        EXPECT_EQ(label.text(), "Safari");
        tips << label.toolTip();
        words << word.text();
        EXPECT_EQ(mark.toolTip(), label.toolTip());
        // The mark's alpha alone: what is left of it to eyes that see no colours.
        shapes.push_back(mark.pixmap().toImage().convertToFormat(QImage::Format_Alpha8));
    }
    EXPECT_NE(shapes[0], shapes[1]);
    EXPECT_NE(shapes[1], shapes[2]);
    EXPECT_NE(shapes[0], shapes[2]);
    EXPECT_EQ(words, QStringList({"runs", "watched", "off"}));
    EXPECT_EQ(tips,
              QStringList({"Safari is running. Its traces are left alone until it quits.",
                           "Safari is watched. It is not running.", "Safari is not watched."}));
}

/// WCAG's contrast ratio of two colours.
double contrast(const QColor& one, const QColor& other) {
    const auto luminance = [](const QColor& color) {
        const auto channel = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF()) +
               0.0722 * channel(color.blueF());
    };
    const double a = luminance(one), b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

TEST(OutletsTest, EveryColourCanBeReadOnALightAndOnADarkWindow) {
    for (const auto& [ground, text] : {std::pair(QColor(0xef, 0xef, 0xef), QColor(Qt::black)),
                                       {QColor(0x35, 0x35, 0x35), Qt::white}}) {
        QPalette palette;
        palette.setColor(QPalette::Window, ground);
        palette.setColor(QPalette::WindowText, text);
        for (const Color color : {Color::black, Color::red, Color::green, Color::darkGray}) {
            EXPECT_GE(contrast(desktop::readableColor(color, palette), ground), 4.5);
        }
        EXPECT_GE(contrast(desktop::readableColor(Color::lightGray, palette), ground), 3.0);
    }
}

TEST(OutletsTest, ABoxThatIsNotTickedIsSeenOnBlack) {
    QApplication::setStyle("fusion");
    const QPalette former = QApplication::palette();
    desktop::keepOutlinesVisible();
    EXPECT_EQ(QApplication::style()->name(), "fusion");

    QPalette palette(Qt::black, Qt::black);
    for (const auto role : {QPalette::WindowText, QPalette::Light, QPalette::Dark, QPalette::Mid}) {
        palette.setColor(role, Qt::white);
    }
    QApplication::setPalette(palette);
    desktop::keepOutlinesVisible();
    QCheckBox box;
    box.resize(box.sizeHint());
    const QImage picture = box.grab().toImage();
    int bright = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) bright += qGray(picture.pixel(x, y)) > 128;
    }
    EXPECT_GE(bright, 20) << "no outline";

    QApplication::setStyle("fusion");
    QApplication::setPalette(former);
}

TEST(OutletsTest, APathBeginsAtItsLeftWhereTheLanguageDoesNot) {
    EXPECT_EQ(desktop::pathWords("/home/a/b", "/home/a"), "~/b");
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(desktop::pathWords("/home/a/b", "/home/a"), QString::fromUtf8("\u2066~/b\u2069"));
    QGuiApplication::setLayoutDirection(Qt::LayoutDirectionAuto);
}

}  // namespace
}  // namespace dorvanel::test
