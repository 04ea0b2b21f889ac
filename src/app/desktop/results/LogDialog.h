// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <functional>
#include <string>

#include "app/desktop/results/BackgroundTask.h"
#include "app/desktop/results/LogTail.h"

namespace dorvanel::desktop {

/// Shows the Activity Log, or why there is nothing to show. Main thread.
class LogDialog final : public QDialog {
  public:
    struct Parts {
        std::string path;
        std::function<bool()> isOn;  ///< whether runs write the log now
        std::function<void()> showPreferences;
    };
    LogDialog(QWidget& parent, Parts parts);

    /// Bytes of the log that are shown, the last ones.
    static constexpr std::size_t limit = 1024 * 1024;

    /// Reads the log again; it is shown when it has been read.
    void reload();

  private:
    void show(const LogTail& tail);

    Parts parts_;
    QLabel* note_;
    QPushButton* preferences_;
    QPlainTextEdit* text_;
    LogTail tail_;  ///< the task's, while it is at work
    BackgroundTask task_;
};

}  // namespace dorvanel::desktop
