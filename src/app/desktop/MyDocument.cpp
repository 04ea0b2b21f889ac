#include "app/desktop/MyDocument.h"

#include <QListWidget>
#include <utility>

#include "app/desktop/Bytes.h"
#include "app/desktop/InterfaceFile.h"
#include "app/desktop/QtWindow.h"

namespace dorvanel::desktop {

MyDocument::MyDocument(const PreferenceReader& preferences, std::vector<std::string> files)
    : preferences_(preferences), files_(std::move(files)) {}

std::string MyDocument::displayName() const {
    // Read for the reading's sake; the title never depends on it.
    static_cast<void>(preferences_.objectForKey("ShredCache"));
    return "Dorvanel";
}

void MyDocument::windowControllerDidLoadNib(QWidget& window) const {
    window.setWindowTitle(QString::fromStdString(displayName()));
    if (auto* list = window.findChild<QListWidget*>("documentFiles")) {
        for (const std::string& file : files_) {
            auto* item = new QListWidgetItem(displayText(file), list);
            item->setToolTip(displayText(file));
        }
    }
    closeByKey(window);
    centerOnScreen(window);
}

bool MyDocument::showWindows(const std::string& resourcesFolder) {
    window_ = loadInterfaceFile(resourcesFolder, windowNibName());
    if (window_ == nullptr) return false;
    windowControllerDidLoadNib(*window_);
    bringToFront(*window_);
    return true;
}

}  // namespace dorvanel::desktop
