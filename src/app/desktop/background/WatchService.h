// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QProcess>
#include <QString>
#include <functional>

namespace dorvanel::desktop {

/// Browser Watch without a window: the service of the user that the other package brings, as
/// systemd has it. Nothing waits: what is asked is answered by `changed`. Main thread.
class WatchService final : public QObject {
  public:
    struct State {
        bool isKnown = false;      ///< whether systemd has answered
        bool isAvailable = false;  ///< whether the service can be turned on and off
        bool isEnabled = false;    ///< starts with the session
        bool isActive = false;     ///< runs now
        QString trouble{};         ///< why it is not available, or what went wrong last
    };

    /// `program`: of systemd, found on PATH.
    explicit WatchService(std::function<void()> changed,
                          const QString& program = QStringLiteral("systemctl"));
    /// What is under way is ended.
    ~WatchService() override;

    [[nodiscard]] const State& state() const { return state_; }
    [[nodiscard]] bool isBusy() const { return process_.state() != QProcess::NotRunning; }
    /// Asks how it stands; while something is under way, nothing.
    void look();
    /// Turns it on, now and for every session to come, or off; likewise.
    void set(bool on);

  private:
    void start(const QStringList& arguments, std::function<void(bool, const QString&)> done);
    void take(const QString& answer);
    void finish(bool isStarted);

    std::function<void()> changed_;
    QString program_;
    QProcess process_;
    std::function<void(bool, const QString&)> done_;
    State state_;
};

}  // namespace dorvanel::desktop
