// SPDX-License-Identifier: MIT
#include "app/desktop/QtOpenPanel.h"

#include <QFile>
#include <QFileDialog>

namespace dorvanel::desktop {

std::optional<std::vector<std::string>> QtOpenPanel::runModalForDirectory(
    const std::string& directory) {
    QFileDialog dialog(&parent_, QStringLiteral("Shred Files"),
                       QFile::decodeName(QByteArray::fromStdString(directory)));
    dialog.setFileMode(multiple_ ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    dialog.setLabelText(QFileDialog::Accept, QStringLiteral("&Shred"));
    // A link stands for the link: what it leads to must not be picked in its place.
    dialog.setOption(QFileDialog::DontResolveSymlinks);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    std::vector<std::string> paths;
    for (const QString& file : dialog.selectedFiles()) {
        paths.push_back(QFile::encodeName(file).toStdString());
    }
    return paths;
}

}  // namespace dorvanel::desktop
