// SPDX-License-Identifier: MIT
#include "app/desktop/Desktop.h"
#include "app/desktop/Words.h"
#include "app/desktop/files/DropTarget.h"

// What is handed over to the program: dragged on its windows, opened in a document, or given by a
// launcher or a file manager to be asked about.

namespace dorvanel::desktop {

QString Desktop::whyNotNow() {
    if (controller_->isBusy()) return Words::tr("Not now: a run is in progress");
    if (questions_ > 0) return Words::tr("Not now: another question waits for your answer");
    return {};
}

void Desktop::takeDrops(QWidget& window) {
    new DropTarget(window,
                   {[this] { return whyNotNow(); },
                    [this](const std::vector<std::string>& files) { filesDropped(files); }});
}

void Desktop::askAbout(const std::vector<std::string>& files) {
    const auto ask = [this, files] {
        if (loop_.isStopping()) return;
        activate();
        if (!files.empty()) return filesDropped(files);
        activity_->showResult(Words::tr("Not started. Nothing was shredded."));
        tellFailure(Words::tr("Only files and folders of this computer can be shredded."), {});
        workspace_.beep();
    };
    // Who hands them over waits for the bus, which is not to wait for a person.
    QMetaObject::invokeMethod(this, ask, Qt::QueuedConnection);
}

void Desktop::openFiles(const std::vector<std::string>& files) {
    for (const std::string& file : files) {
        if (!controller_->applicationOpenFile(file)) return;
    }
    std::erase_if(documents_, [this](const auto& document) { return isClosed(*document); });
    auto document = std::make_unique<MyDocument>(
        services_.preferencesInstance, files,
        MyDocument::Parts{[this](const std::vector<std::string>& chosen) { filesDropped(chosen); },
                          [this] { return whyNotNow(); }});
    if (document->showWindows(services_.resourcesFolder)) {
        takeDrops(*document->window());
        documents_.push_back(std::move(document));
    } else {
        services_.log.log("Failed to load MyDocument.nib");
        workspace_.beep();
    }
}

}  // namespace dorvanel::desktop
