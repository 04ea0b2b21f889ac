// SPDX-License-Identifier: MIT
#include <QAction>
#include <QApplication>

#include "app/desktop/Desktop.h"
#include "app/desktop/Words.h"
#include "app/desktop/help/HelpPages.h"
#include "app/desktop/help/MediumSentence.h"
#include "platform/FileManager.h"

// What tells people about the program: the first minutes, the help and the box about it.

namespace dorvanel::desktop {
namespace {

/// Whether somebody has read the first steps.
constexpr const char* dismissedKey = "WelcomeDismissed";

/// What starts by itself, as the preferences are.
QString sentenceAboutWatching(const Preferences& preferences) {
    if (!preferences.boolForKey("BrowserWatch")) {
        return Words::tr("Nothing starts by itself: Browser Watch is off in the preferences.");
    }
    if (!preferences.prefsConfirmShredding()) {
        return Words::tr(
            "One thing starts by itself, and without a question: Browser Watch is on, "
            "so when an enabled browser or mail program quits, traces are shredded.");
    }
    return Words::tr(
        "One thing starts by itself: Browser Watch is on, so when an enabled browser or "
        "mail program quits, traces are to be shredded; you are asked first.");
}

}  // namespace

void Desktop::makeHelp() {
    QMainWindow& window = window_->window();
    if (auto* action = window.findChild<QAction*>("helpAction")) {
        action->setShortcutContext(Qt::ApplicationShortcut);
        connect(action, &QAction::triggered, this, &Desktop::showHelp);
    }
    welcome_ = WelcomeView::create(
        window,
        {.watchSentence = [this] { return sentenceAboutWatching(services_.preferencesInstance); },
         .mediumSentence =
             [this] {
                 return sentenceAboutHome(services_.medium.mediumAt(platform::homeDirectory()));
             },
         .showLimits = [this] { help().showPage(QStringLiteral("limits.html")); },
         .dismissed =
             [this] {
                 services_.defaults.setBool(true, dismissedKey);
                 // What cannot be written now is written with the next change of anything.
                 static_cast<void>(services_.defaults.synchronize());
             }});
    if (welcome_ == nullptr) return;
    if (auto* action = window.findChild<QAction*>("firstStepsAction")) {
        connect(action, &QAction::triggered, this, [this] {
            welcome_->show();
            activate();
        });
    }
    if (!services_.defaults.boolForKey(dismissedKey)) welcome_->show();
}

HelpWindow& Desktop::help() {
    if (help_ == nullptr) help_ = std::make_unique<HelpWindow>(services_.resourcesFolder);
    return *help_;
}

void Desktop::showHelp() {
    const QWidget* front = QApplication::activeWindow();
    if (front != nullptr && front == panel_.window()) {
        const QString page = panel_.pages()->currentWidget()->objectName();
        return help().showPage(QLatin1String(helpPageOfPreferences(page)));
    }
    help().showPage(QStringLiteral("index.html"));
}

void Desktop::showAbout() {
    if (about_ == nullptr) {
        about_ = new AboutDialog(&window_->window());
        about_->setAttribute(Qt::WA_DeleteOnClose);
    }
    bringToFront(*about_);
}

QRect Desktop::progressArea() const {
    if (window_ == nullptr || !window_->window().isVisible()) return {};
    QRect area;
    for (const char* name :
         {"runMessage", "stopButton", "shreddingProgress", "workText", "itemName", "fileName"}) {
        const auto* widget = window_->window().findChild<QWidget*>(QLatin1String(name));
        if (widget == nullptr || !widget->isVisible()) continue;
        area |= QRect(widget->mapToGlobal(QPoint()), widget->size());
    }
    return area;
}

}  // namespace dorvanel::desktop
