// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QFontMetrics>
#include <filesystem>

#include "app/ShredArguments.h"
#include "app/desktop/Bytes.h"
#include "app/desktop/Desktop.h"
#include "app/desktop/OutcomeText.h"
#include "app/desktop/QtOpenPanel.h"
#include "base/PathComponents.h"
#include "engine/FileAccess.h"
#include "platform/FileManager.h"

// What people ask for beside the window's own commands: files picked in the Open panel or dropped
// on it, and actions of the launcher.

namespace dorvanel::desktop {

using ui::AlertButton;

namespace {

/// Beyond so many, names of dropped files are only counted.
constexpr std::size_t namesInQuestion = 8;

/// How much room a path has in a line of the window, in pixels.
constexpr int pathWidth = 280;

QString cut(const QString& text, int width) {
    return QFontMetrics(QApplication::font()).elidedText(text, Qt::ElideMiddle, width);
}

std::string nameOf(const std::string& path) {
    return std::filesystem::path(withoutTrailingSlashes(path)).filename().native();
}

/// The question about dropped files, with names of at most `width` pixels.
std::string questionAbout(const std::vector<std::string>& files, int width) {
    QStringList lines = {QStringLiteral("Shred %1? There is no way back.")
                             .arg(counted(files.size(), QStringLiteral("item"))),
                         QString()};
    for (std::size_t i = 0; i < files.size() && i < namesInQuestion; ++i) {
        lines << cut(displayText(nameOf(files[i])), width);
    }
    if (files.size() > namesInQuestion) {
        lines << QStringLiteral("and %1 more").arg(files.size() - namesInQuestion);
    }
    return lines.join(u'\n').toStdString();
}

}  // namespace

void Desktop::setAsking(bool asking) {
    questions_ += asking ? 1 : -1;
    activity_->setAsking(questions_ > 0);
}

bool Desktop::refuses() {
    if (controller_->isBusy()) {
        tellRefusal(Refusal::atWork);
    } else if (questions_ > 0) {
        activity_->showRefusal(
            QStringLiteral("Not started: another question waits for your answer."));
        workspace_.beep();
    }
    return controller_->isBusy() || questions_ > 0;
}

void Desktop::performAction(const std::string& name) {
    // The controller refuses what comes while something is at work, and its log says so.
    const auto request = [this](void (Controller::*shred)()) {
        if (questions_ == 0 || !refuses()) ((*controller_).*shred)();
    };
    if (name == "shred") return request(&Controller::shredAndNothing);
    if (name == "shred-and-log-out") return request(&Controller::shredAndLogout);
    if (name == "shred-and-shut-down") return request(&Controller::shredAndShutdown);
    if (name == "shred-and-restart") return request(&Controller::shredAndRestart);
    activate();
}

void Desktop::openDoc() {
    if (refuses()) return;
    std::vector<std::string> picked;
    {
        const QtRunLoop::Hold hold(loop_);
        QtOpenPanel panel(window_->window());
        setAsking(true);
        FileAccess::openDoc(
            panel, [&picked](std::vector<std::string> items) { picked = std::move(items); });
        setAsking(false);
    }
    std::vector<HeldItem> items = checkedItems(picked);
    if (!items.empty()) controller_->shredFiles(std::move(items));
}

std::vector<HeldItem> Desktop::checkedItems(const std::vector<std::string>& items) {
    if (items.empty()) return {};
    auto result = checkShredArguments(items, services_.system);
    QStringList reasons;
    QString first;
    if (!result) {
        first = displayText(result.error().message());
    } else {
        ShredArguments& checked = result.value();
        if (checked.complaints.empty()) {
            controller_->fileAccessInstance().protect(std::move(checked.protectedFolders));
            return std::move(checked.items);
        }
        const QString sentence = QStringLiteral("“%1” %2");
        for (const ShredArguments::Complaint& complaint : checked.complaints) {
            const QString path = displayText(complaint.argument);
            const QString reason = displayText(complaint.reason);
            if (first.isEmpty()) first = sentence.arg(cut(path, pathWidth), reason);
            reasons << sentence.arg(path, reason);
        }
    }
    activity_->showResult(QStringLiteral("Nothing was shredded."));
    tellFailure(QStringLiteral("Nothing was shredded: %1").arg(first), reasons.join(u'\n'));
    workspace_.beep();
    return {};
}

void Desktop::filesDropped(const std::vector<std::string>& files) {
    if (refuses()) return;
    std::vector<HeldItem> items = checkedItems(files);
    if (items.empty()) return;
    const AlertButton answer =
        alerts_->ask({"Shred Dropped Items", questionAbout(files, alertNameWidth), "Cancel",
                      "Shred", "", questionAbout(files, QWIDGETSIZE_MAX)});
    if (answer == AlertButton::alternateButton) controller_->shredFiles(std::move(items));
}

}  // namespace dorvanel::desktop
