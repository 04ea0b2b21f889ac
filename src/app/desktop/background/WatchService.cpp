// SPDX-License-Identifier: MIT
#include "app/desktop/background/WatchService.h"

#include <QStandardPaths>
#include <utility>

#include "app/desktop/Bytes.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

QString unit() {
    return QStringLiteral("dorvanel-watch.service");
}

}  // namespace

WatchService::WatchService(std::function<void()> changed, const QString& program)
    : changed_(std::move(changed)), program_(program) {
    connect(&process_, &QProcess::finished, this, [this] { finish(true); });
    connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) finish(false);
    });
}

WatchService::~WatchService() {
    process_.disconnect(this);
    process_.kill();
    process_.waitForFinished();
}

void WatchService::start(const QStringList& arguments,
                         std::function<void(bool, const QString&)> done) {
    done_ = std::move(done);
    process_.start(program_, QStringList{QStringLiteral("--user")} + arguments);
}

void WatchService::finish(bool isStarted) {
    const bool isGood =
        isStarted && process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
    const QString told = isGood
                             ? QString::fromUtf8(process_.readAllStandardOutput())
                             : displayText(process_.readAllStandardError().trimmed().toStdString());
    std::exchange(done_, {})(isGood, told);
}

void WatchService::look() {
    if (isBusy()) return;
    if (QStandardPaths::findExecutable(program_).isEmpty()) {
        state_ = {.isKnown = true, .trouble = Words::tr("There is no systemd on this computer.")};
        return changed_();
    }
    start({QStringLiteral("show"), QStringLiteral("--property=LoadState,UnitFileState,ActiveState"),
           unit()},
          [this](bool isGood, const QString& told) {
              if (isGood) {
                  take(told);
              } else {
                  state_ = {.isKnown = true,
                            .trouble = Words::tr("systemd does not answer: %1").arg(told)};
              }
              changed_();
          });
}

void WatchService::take(const QString& answer) {
    state_ = {.isKnown = true};
    const QStringList lines = answer.split(u'\n');
    const QString fileState = QStringLiteral("UnitFileState=");
    state_.isEnabled = lines.contains(fileState + QStringLiteral("enabled")) ||
                       lines.contains(fileState + QStringLiteral("enabled-runtime"));
    state_.isActive = lines.contains(QStringLiteral("ActiveState=active")) ||
                      lines.contains(QStringLiteral("ActiveState=activating"));
    state_.isAvailable = lines.contains(QStringLiteral("LoadState=loaded"));
    if (!state_.isAvailable) {
        state_.trouble = Words::tr("The service is not installed: the package “dorvanel” has it.");
    }
}

void WatchService::set(bool on) {
    if (isBusy()) return;
    start({on ? QStringLiteral("enable") : QStringLiteral("disable"), QStringLiteral("--now"),
           unit()},
          [this](bool isGood, const QString& told) {
              const QString trouble =
                  isGood ? QString() : Words::tr("systemd could not do it: %1").arg(told);
              state_.trouble = trouble;
              if (isGood) return look();
              changed_();
          });
}

}  // namespace dorvanel::desktop
