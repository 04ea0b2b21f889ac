// SPDX-License-Identifier: MIT
#include "app/desktop/help/HelpPages.h"

#include <QDir>
#include <QFile>
#include <QLocale>

#include "app/desktop/Words.h"

namespace dorvanel::desktop {

std::vector<HelpPage> helpPages() {
    return {{"index.html", Words::tr("First steps")},
            {"what.html", Words::tr("What is shredded")},
            {"preview.html", Words::tr("See first")},
            {"stop.html", Words::tr("Stop and go on")},
            {"limits.html", Words::tr("What overwriting cannot promise")},
            {"applications.html", Words::tr("Applications of today")},
            {"watching.html", Words::tr("Watching")},
            {"preferences.html", Words::tr("Preferences and passes")},
            {"results.html", Words::tr("Results and reports")},
            {"recovery.html", Words::tr("When it was cut off")},
            {"terminal.html", Words::tr("In the terminal")}};
}

QString helpFolder(const std::string& resourcesFolder) {
    const QDir help(
        QDir::cleanPath(QFile::decodeName(QByteArray::fromStdString(resourcesFolder + "/help"))));
    for (QString language : QLocale().uiLanguages()) {
        language.replace(u'-', u'_');
        for (const QString& name : {language, language.section(u'_', 0, 0)}) {
            if (help.exists(name + QStringLiteral("/index.html"))) return help.filePath(name);
        }
    }
    return help.filePath(QStringLiteral("en"));
}

const char* helpPageOfPreferences(const QString& panelPage) {
    if (panelPage == QStringLiteral("whatPage")) return "what.html";
    if (panelPage == QStringLiteral("watchingPage")) return "watching.html";
    if (panelPage == QStringLiteral("enablePage")) return "applications.html";
    return "preferences.html";
}

}  // namespace dorvanel::desktop
