// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QWidget>

#include "app/desktop/background/AutostartEntry.h"
#include "app/desktop/background/WatchService.h"

namespace dorvanel::desktop {

/// The two ways to have Browser Watch at work from the login on, a switch and a few words for each.
/// A click has its effect at once; what stands in the way is told beside the switch. Main thread.
class BackgroundSwitches final : public QWidget {
  public:
    explicit BackgroundSwitches(QWidget* parent,
                                const std::string& autostartFolder = AutostartEntry::usersFolder(),
                                const QString& systemctl = QStringLiteral("systemctl"));

    /// The Tab key goes from `former` through the switches, in their order.
    void followInTabOrder(QWidget& former);
    /// Shows how things are now; also each time the widget comes up.
    void refresh();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    struct Switch {
        QCheckBox* box;
        QLabel* note;
    };
    Switch addSwitch(const char* name, const QString& text, const QString& explanation);
    void setAutostart(bool on);
    void showAutostart(const QString& trouble = {});
    void showService();

    AutostartEntry entry_;
    WatchService service_;
    Switch autostart_;
    Switch watch_;
};

}  // namespace dorvanel::desktop
