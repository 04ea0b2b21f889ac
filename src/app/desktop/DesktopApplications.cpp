// SPDX-License-Identifier: MIT
#include <QDialog>
#include <QLayout>
#include <QTabBar>
#include <QTabWidget>

#include "app/desktop/Desktop.h"
#include "app/desktop/applications/ApplicationsOverview.h"
#include "app/desktop/applications/ApplicationsView.h"
#include "app/desktop/background/BackgroundSwitches.h"
#include "watch/BrowserWatch.h"

// The applications of this computer in the main window and the panel.

namespace dorvanel::desktop {

void Desktop::makeApplications() {
    auto* layout = window_->window().findChild<QLayout*>("todayLayout");
    auto* pages = window_->window().findChild<QTabWidget*>("pages");
    if (layout == nullptr || pages == nullptr) {
        return services_.log.log("There is no place for the applications");
    }
    overview_ = std::make_unique<ApplicationsOverview>(
        window_->window(),
        ApplicationsOverview::Parts{
            .survey = services_.makeSurvey(),
            .clock = services_.clock,
            .defaults = services_.defaults,
            .isWatching = [this] { return controller_->browserWatch().isWatching(); },
            .tellFailure = [this](const QString& message,
                                  const QString& details) { tellFailure(message, details); }});
    auto* view = new ApplicationsView(overview_->model(), [this] { overview_->lookAgain(); });
    layout->addWidget(view);
    view->followInTabOrder(*pages->tabBar());
}

void Desktop::furnishPanel(QDialog& panel) {
    if (auto* layout = panel.findChild<QLayout*>("todayChoiceLayout");
        layout != nullptr && overview_ != nullptr) {
        auto* view = new ApplicationsView(overview_->model(), [this] { overview_->lookAgain(); });
        layout->addWidget(view);
        if (auto* box = panel.findChild<QWidget*>("enableMailsmithCheckbox")) {
            view->followInTabOrder(*box);
        }
    }
    if (auto* layout = panel.findChild<QLayout*>("backgroundLayout")) {
        auto* switches =
            new BackgroundSwitches(nullptr, AutostartEntry::usersFolder(), services_.systemctl);
        layout->addWidget(switches);
        if (auto* box = panel.findChild<QWidget*>("hideCheckbox")) switches->followInTabOrder(*box);
    }
}

void Desktop::followActivity(Activity now) {
    if (overview_ != nullptr) overview_->setBusy(now != Activity::idle);
}

}  // namespace dorvanel::desktop
