// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QListWidget>
#include <QTextBrowser>
#include <QWidget>
#include <string>

namespace dorvanel::desktop {

/// The installed help: a list of its pages beside the page that is read. Needs no network, and
/// opens nothing outside the help: the address of what a link leads to elsewhere is only shown.
/// Main thread.
class HelpWindow final : public QWidget {
  public:
    explicit HelpWindow(const std::string& resourcesFolder);

    /// Shows a page ("limits.html") in front of the other windows.
    void showPage(const QString& file);
    /// The file of the page that is read; "" when it is none of the help's.
    [[nodiscard]] QString page() const;

  private:
    void makeList();
    void follow(const QUrl& link);
    void pageChanged(const QUrl& source);
    void tell(const QString& message);

    QString folder_;
    QListWidget* list_;
    QTextBrowser* text_;
    QLabel* message_;
};

}  // namespace dorvanel::desktop
