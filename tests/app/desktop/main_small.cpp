// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QApplication>

#include "app/desktop/Translations.h"
#include "platform/Resources.h"
#include "support/TemporaryFolder.h"

// A screen of 1366x768 at scale 2.
int main(int argc, char** argv) {
    const dorvanel::test::TemporaryFolder folder;
    const std::string screen = folder / "screen.json";
    dorvanel::test::writeFile(
        screen, R"({"screens": [{"name": "small", "x": 0, "y": 0, "width": 1366, "height": 768,)"
                R"( "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    qputenv("QT_QPA_PLATFORM", QByteArray::fromStdString("offscreen:configfile=" + screen));
    qputenv("QT_SCALE_FACTOR", "2");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    dorvanel::desktop::installTranslations(dorvanel::platform::resourcesFolder(),
                                           QLocale(QLocale::English));
    return RUN_ALL_TESTS();
}
