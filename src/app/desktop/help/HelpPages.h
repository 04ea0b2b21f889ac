// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <string>
#include <vector>

namespace dorvanel::desktop {

/// A page of the installed help.
struct HelpPage {
    const char* file;  ///< in the folder of a language
    QString title;     ///< in the list of the pages
};

/// All pages, in the order in which they are read.
std::vector<HelpPage> helpPages();

/// The folder of the pages below the program's resources: of the language of the locale where that
/// is installed, else English.
QString helpFolder(const std::string& resourcesFolder);

/// The page about a page of the preferences panel, by its object name; the page about preferences
/// for any other name.
const char* helpPageOfPreferences(const QString& panelPage);

}  // namespace dorvanel::desktop
