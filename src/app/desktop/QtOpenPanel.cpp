// SPDX-License-Identifier: MIT
#include "app/desktop/QtOpenPanel.h"

#include <QFile>
#include <QFileDialog>

#include "app/desktop/Words.h"

namespace dorvanel::desktop {

std::optional<std::vector<std::string>> QtOpenPanel::runModalForDirectory(
    const std::string& directory) {
    QFileDialog dialog(&parent_, Words::tr("Shred Files: What You Choose Is Shredded at Once"),
                       QFile::decodeName(QByteArray::fromStdString(directory)));
    dialog.setFileMode(multiple_ ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    dialog.setLabelText(QFileDialog::Accept, Words::tr("&Shred"));
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
