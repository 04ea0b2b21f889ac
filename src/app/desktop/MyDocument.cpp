// SPDX-License-Identifier: MIT
#include "app/desktop/MyDocument.h"

#include <QLabel>
#include <QListWidget>
#include <filesystem>
#include <system_error>
#include <utility>

#include "app/desktop/Bytes.h"
#include "app/desktop/InterfaceFile.h"
#include "app/desktop/QtWindow.h"

namespace dorvanel::desktop {
namespace {

/// Only what is known not to be there: a file that cannot be looked at may be there.
bool isGone(const std::string& file) {
    std::error_code error;
    return std::filesystem::symlink_status(file, error).type() ==
           std::filesystem::file_type::not_found;
}

}  // namespace

MyDocument::MyDocument(const PreferenceReader& preferences, std::vector<std::string> files)
    : preferences_(preferences), files_(std::move(files)) {}

std::string MyDocument::displayName() const {
    // Read for the reading's sake; the title never depends on it.
    static_cast<void>(preferences_.objectForKey("ShredCache"));
    return "Dorvanel";
}

void MyDocument::windowControllerDidLoadNib(QWidget& window) const {
    window.setWindowTitle(QString::fromStdString(displayName()));
    showFiles(window);
    closeByKey(window);
    centerOnScreen(window);
}

void MyDocument::refresh() const {
    if (window_ != nullptr) showFiles(*window_);
}

void MyDocument::showFiles(QWidget& window) const {
    auto* list = window.findChild<QListWidget*>("documentFiles");
    if (list == nullptr) return;
    list->clear();
    std::size_t missing = 0;
    for (const std::string& file : files_) {
        const QString path = displayText(file);
        const bool gone = isGone(file);
        missing += gone ? 1 : 0;
        auto* item = new QListWidgetItem(gone ? path + QStringLiteral(" (not there)") : path, list);
        item->setToolTip(path);
        if (gone) item->setFlags(Qt::NoItemFlags);
    }
    QString text = QStringLiteral("These were handed to Dorvanel. They have not been shredded.");
    if (missing == files_.size()) {
        text = QStringLiteral("These were handed to Dorvanel. Nothing is there by these names.");
    } else if (missing > 0) {
        text = QStringLiteral(
            "These were handed to Dorvanel. Those that are there have not been "
            "shredded.");
    }
    if (auto* label = window.findChild<QLabel*>("documentText")) label->setText(text);
    if (auto* hint = window.findChild<QLabel*>("documentHint")) {
        hint->setVisible(missing < files_.size());
    }
}

bool MyDocument::showWindows(const std::string& resourcesFolder) {
    window_ = loadInterfaceFile(resourcesFolder, windowNibName());
    if (window_ == nullptr) return false;
    windowControllerDidLoadNib(*window_);
    bringToFront(*window_);
    return true;
}

}  // namespace dorvanel::desktop
