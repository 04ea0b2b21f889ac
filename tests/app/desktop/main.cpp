// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QApplication>

#include "app/desktop/Translations.h"
#include "platform/Resources.h"

int main(int argc, char** argv) {
    // No display is needed, and none that is there is used.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    dorvanel::desktop::installTranslations(dorvanel::platform::resourcesFolder(),
                                           QLocale(QLocale::English));
    return RUN_ALL_TESTS();
}
