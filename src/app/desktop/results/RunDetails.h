// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <functional>
#include <string>
#include <vector>

#include "app/desktop/results/BackgroundTask.h"
#include "app/desktop/results/DetailLines.h"
#include "app/desktop/results/RunEntry.h"

namespace dorvanel::desktop {

/// All that is known of one request, and what can be done about what it left. Goes when it is
/// closed. Main thread.
class RunDetails final : public QDialog {
  public:
    /// Hands what is left to the engine again, after the checks and the question that dropped
    /// files have.
    using TryAgain = std::function<void(const std::vector<std::string>& left)>;

    /// `older`: what older failures say, which is shown too; may be empty.
    RunDetails(QWidget& parent, const RunEntry& entry, const QString& older,
               const QDBusConnection& bus, TryAgain tryAgain);

  private:
    void makeTree(const QString& older);
    void makeButtons();
    QPushButton* addButton(const char* name, const QString& text, const QString& tip,
                           void (RunDetails::*pressed)());
    void copy();
    void showWhatIsLeft();
    void tryAgain();
    void chooseFile();
    void save(const QString& file);
    /// What of what is left is there now; where nothing is, that is told.
    std::vector<std::string> stillLeft();
    void tell(const QString& message);

    RunEntry entry_;
    std::vector<DetailLine> lines_;
    std::vector<std::string> left_;
    QDBusConnection bus_;
    TryAgain tryAgain_;
    QTreeWidget* tree_;
    QLabel* message_;
    QPushButton* saveButton_ = nullptr;
    std::string document_;  ///< the task's, while it is at work
    QString saved_;         ///< likewise: what is to be told of it
    BackgroundTask task_;
};

}  // namespace dorvanel::desktop
