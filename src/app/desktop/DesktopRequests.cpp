// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QFontMetrics>

#include "app/ShredArguments.h"
#include "app/desktop/Bytes.h"
#include "app/desktop/Desktop.h"
#include "app/desktop/QtOpenPanel.h"
#include "app/desktop/Words.h"
#include "app/desktop/plan/PlanWords.h"
#include "engine/FileAccess.h"
#include "platform/FileManager.h"
#include "run/ShreddingRun.h"

// What people ask for beside the window's own commands: files picked in the Open panel or dropped
// on it, and actions of the launcher.

namespace dorvanel::desktop {

namespace {

/// Beyond so many, reasons are only counted.
constexpr std::size_t mostReasons = 200;

/// How much room a path has in a line of the window, in pixels.
constexpr int pathWidth = 280;

QString cut(const QString& text, int width) {
    return QFontMetrics(QApplication::font()).elidedText(text, Qt::ElideMiddle, width);
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
        activity_->showRefusal(Words::tr("Not started: another question waits for your answer."));
        workspace_.beep();
    }
    return controller_->isBusy() || questions_ > 0;
}

void Desktop::performAction(const std::string& name) {
    // The controller refuses what comes while something is at work, and its log says so.
    const auto request = [this](void (Controller::*shred)()) {
        if (questions_ > 0 && refuses()) return;
        controller_->run().nextIsStartedBy({.door = StartedBy::Door::launcher});
        ((*controller_).*shred)();
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
    return takeChecked(checkShredArguments(items, services_.system));
}

std::vector<HeldItem> Desktop::takeChecked(Result<ShredArguments> result) {
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
        const QString sentence = Words::tr("“%1” %2");
        for (const ShredArguments::Complaint& complaint : checked.complaints) {
            const QString path = displayText(complaint.argument);
            const QString reason = displayText(complaint.reason);
            if (first.isEmpty()) first = sentence.arg(cut(path, pathWidth), reason);
            reasons << sentence.arg(path, reason);
            if (reasons.size() == mostReasons) break;
        }
        const std::size_t more =
            checked.complaints.size() - static_cast<std::size_t>(reasons.size());
        if (more > 0) reasons << Words::tr("and %n more", nullptr, asNumber(more));
    }
    activity_->showResult(Words::tr("Nothing was shredded."));
    tellFailure(Words::tr("Nothing was shredded: %1").arg(first), reasons.join(u'\n'));
    workspace_.beep();
    return {};
}

void Desktop::filesDropped(const std::vector<std::string>& files) {
    shredAfterQuestion(files, Words::tr("Shred Dropped Items"), StartedBy::Door::droppedFiles);
}

void Desktop::shredAfterQuestion(const std::vector<std::string>& files, const QString& title,
                                 StartedBy::Door door) {
    if (files.empty() || refuses()) return;
    std::vector<HeldItem> items = askAboutItems(files, title);
    if (items.empty()) return;
    controller_->run().nextIsStartedBy({.door = door});
    controller_->shredFiles(std::move(items));
}

}  // namespace dorvanel::desktop
