// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/desktop/FailureView.h"
#include "app/desktop/QtOutlets.h"
#include "apps/Applications.h"

namespace dorvanel::desktop {

/// What the main window's commands do; main thread.
struct MainWindowActions {
    using Action = std::function<void()>;
    Action about, showPanel, hide, reallyQuit, openDoc, preview, shredTrash;
    Action shredAndNothing, shredAndLogout, shredAndShutdown, shredAndRestart;
    Action emailSupport, webFAQ, webDownloads;
};

/// The main window as the interface file "MainMenu" makes it, with its outlets connected.
class MainWindow final : public QObject {
  public:
    /// Null when something is missing in `mainMenu`, the file's top widget.
    static std::unique_ptr<MainWindow> create(std::unique_ptr<QWidget> mainMenu);

    void setActions(const MainWindowActions& actions);

    [[nodiscard]] QMainWindow& window() { return *window_; }
    ui::ProgressIndicator& shreddingProgress() { return *progress_; }
    ui::TextField& fileName() { return *fileName_; }
    [[nodiscard]] BrowserWatchOutlets watchOutlets();
    [[nodiscard]] QMenu& profilesMenu() { return *profilesMenu_; }

    /// Shows one line about what goes on, or how it ended; `whole`: the line with nothing cut
    /// short.
    void showMessage(const QString& message, const QString& whole = {});
    [[nodiscard]] QString message() const { return runMessage_->text(); }
    /// Shows quietly, under the message, what is to be known of the medium of a request's items;
    /// nothing takes the last notice away.
    void showMediumNotice(const QString& notice, const QString& details);
    /// Paints the window as it is now, also while the main loop does not come round.
    void paintNow();
    /// Where failures stay until they are dismissed.
    FailureView& failures() { return *failures_; }
    /// Whether the commands that shred something can be given.
    void setCommandsEnabled(bool enabled);
    /// A control of another window is one of these commands too, as long as it lives.
    void addShreddingControl(QWidget& control);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    MainWindow() = default;
    bool connectOutlets();
    void restyle();

    std::unique_ptr<QWidget> owner_;
    QMainWindow* window_ = nullptr;
    QList<QPointer<QWidget>> others_;
    bool commandsEnabled_ = true;
    QLabel* runMessage_ = nullptr;
    QMenu* profilesMenu_ = nullptr;
    std::unique_ptr<FailureView> failures_;
    std::unique_ptr<QtProgressIndicator> progress_;
    std::unique_ptr<QtTextField> fileName_;
    QLabel* mediumNotice_ = nullptr;
    std::unique_ptr<QtTextField> mediumColor_;
    std::unique_ptr<QtTextField> status_;
    /// In the order of `applications`.
    std::array<std::unique_ptr<ApplicationLabel>, applicationCount> labels_;
    MainWindowActions actions_;
};

}  // namespace dorvanel::desktop
