// SPDX-License-Identifier: MIT
#include "app/desktop/MainWindow.h"

#include <QEvent>
#include <QProgressBar>

#include "app/desktop/Elision.h"

namespace dorvanel::desktop {
namespace {

// What is refused while something is at work.
constexpr std::array<const char*, 7> shreddingActions = {
    "openDocAction",         "shredTrashAction",     "previewAction",
    "shredAndNothingAction", "shredAndLogoutAction", "shredAndShutdownAction",
    "shredAndRestartAction"};
constexpr std::array<const char*, 4> shreddingButtons = {"previewButton", "shredNowButton",
                                                         "shredAndButton", "shredFilesButton"};

}  // namespace

std::unique_ptr<MainWindow> MainWindow::create(std::unique_ptr<QWidget> mainMenu) {
    std::unique_ptr<MainWindow> made(new MainWindow);
    made->window_ = qobject_cast<QMainWindow*>(mainMenu.get());
    made->owner_ = std::move(mainMenu);
    if (made->window_ == nullptr || !made->connectOutlets()) return nullptr;
    made->window_->installEventFilter(made.get());
    return made;
}

bool MainWindow::connectOutlets() {
    // The panel is loaded apart, when it is first shown.
    delete window_->findChild<QWidget*>("mPreferencesWindow");

    auto* bar = window_->findChild<QProgressBar*>("shreddingProgress");
    auto* file = window_->findChild<QLabel*>("fileName");
    mediumNotice_ = window_->findChild<QLabel*>("mediumNotice");
    auto* status = window_->findChild<QLabel*>("browserWatchStatusTextbox");
    runMessage_ = window_->findChild<QLabel*>("runMessage");
    failures_ = FailureView::create(*window_);
    profilesMenu_ = window_->findChild<QMenu*>("profilesMenu");
    for (const QObject* found :
         {static_cast<QObject*>(bar), static_cast<QObject*>(file), static_cast<QObject*>(status),
          static_cast<QObject*>(mediumNotice_), static_cast<QObject*>(runMessage_),
          static_cast<QObject*>(failures_.get()), static_cast<QObject*>(profilesMenu_)}) {
        if (found == nullptr) return false;
    }
    progress_ = std::make_unique<QtProgressIndicator>(*bar);
    fileName_ = std::make_unique<QtTextField>(*file, QtTextField::Elide::middle);
    mediumColor_ = std::make_unique<QtTextField>(*mediumNotice_);
    mediumColor_->setTextColor(ui::Color::darkGray);
    status_ = std::make_unique<QtTextField>(*status);
    for (std::size_t i = 0; i < applicationCount; ++i) {
        const QString name = QLatin1String(applications[i].labelName);
        auto* label = window_->findChild<QLabel*>(name);
        auto* mark = window_->findChild<QLabel*>(name + "Mark");
        auto* word = window_->findChild<QLabel*>(name + "Word");
        if (label == nullptr || mark == nullptr || word == nullptr) return false;
        labels_[i] = std::make_unique<ApplicationLabel>(*label, *mark, *word);
        labels_[i]->setTextColor(ui::Color::lightGray);
    }
    // The keyboard is nobody's until somebody takes it: the first button shreds.
    window_->setFocus();
    return true;
}

void MainWindow::setActions(const MainWindowActions& actions) {
    actions_ = actions;
    const auto bind = [this](const char* name, const MainWindowActions::Action& action,
                             const char* button = nullptr) {
        auto* found = window_->findChild<QAction*>(QLatin1String(name));
        if (found == nullptr) return;
        // The panel and the documents have no menus of their own: the keys are everybody's.
        found->setShortcutContext(Qt::ApplicationShortcut);
        connect(found, &QAction::triggered, this, action);
        auto* push = button ? window_->findChild<QPushButton*>(QLatin1String(button)) : nullptr;
        if (push != nullptr) connect(push, &QPushButton::clicked, found, &QAction::trigger);
    };
    bind("aboutAction", actions.about);
    bind("showPanelAction", actions.showPanel, "preferencesButton");
    bind("hideAction", actions.hide);
    bind("reallyQuitAction", actions.reallyQuit);
    bind("openDocAction", actions.openDoc, "shredFilesButton");
    bind("previewAction", actions.preview, "previewButton");
    bind("shredTrashAction", actions.shredTrash);
    bind("shredAndNothingAction", actions.shredAndNothing, "shredNowButton");
    bind("shredAndLogoutAction", actions.shredAndLogout);
    bind("shredAndShutdownAction", actions.shredAndShutdown);
    bind("shredAndRestartAction", actions.shredAndRestart);
    bind("emailSupportAction", actions.emailSupport);
    bind("webFAQAction", actions.webFAQ);
    bind("webDownloadsAction", actions.webDownloads);

    if (auto* button = window_->findChild<QPushButton*>("shredAndButton")) {
        auto* menu = new QMenu(button);
        for (const char* name :
             {"shredAndLogoutAction", "shredAndShutdownAction", "shredAndRestartAction"}) {
            if (auto* action = window_->findChild<QAction*>(QLatin1String(name))) {
                menu->addAction(action);
            }
        }
        button->setMenu(menu);
    }
}

BrowserWatchOutlets MainWindow::watchOutlets() {
    BrowserWatchOutlets outlets;
    outlets.browserWatchStatusTextbox = status_.get();
    for (std::size_t i = 0; i < applicationCount; ++i) {
        outlets.*applications[i].label = labels_[i].get();
    }
    return outlets;
}

void MainWindow::showMessage(const QString& message, const QString& whole) {
    showCut(*runMessage_, message, whole);
}

void MainWindow::setCommandsEnabled(bool enabled) {
    const auto* focused = qobject_cast<QPushButton*>(window_->focusWidget());
    for (const char* name : shreddingActions) {
        if (auto* action = window_->findChild<QAction*>(QLatin1String(name))) {
            action->setEnabled(enabled);
        }
    }
    for (const char* name : shreddingButtons) {
        auto* button = window_->findChild<QPushButton*>(QLatin1String(name));
        if (button == nullptr) continue;
        // A button that is dimmed hands the keyboard on to the next, which may shred too.
        if (!enabled && button == focused) window_->setFocus();
        button->setEnabled(enabled);
    }
    commandsEnabled_ = enabled;
    for (const QPointer<QWidget>& control : others_) {
        if (control != nullptr) control->setEnabled(enabled);
    }
    others_.removeAll(nullptr);
}

void MainWindow::addShreddingControl(QWidget& control) {
    control.setEnabled(commandsEnabled_);
    others_ << &control;
}

void MainWindow::showMediumNotice(const QString& notice, const QString& details) {
    showCut(*mediumNotice_, notice);
    mediumNotice_->setToolTip(details);
    mediumNotice_->setAccessibleDescription(details);
    mediumNotice_->setVisible(!notice.isEmpty());
}

void MainWindow::paintNow() {
    window_->repaint();
}

void MainWindow::restyle() {
    fileName_->restyle();
    mediumColor_->restyle();
    status_->restyle();
    for (const auto& label : labels_) label->restyle();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Close:
            // Closing the only window means what the Quit command means.
            event->ignore();
            if (actions_.reallyQuit) actions_.reallyQuit();
            return true;
        case QEvent::PaletteChange:
            restyle();
            break;
        case QEvent::Resize:
            fileName_->restyle();
            break;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace dorvanel::desktop
