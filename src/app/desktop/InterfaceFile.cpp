// SPDX-License-Identifier: MIT
#include "app/desktop/InterfaceFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QUiLoader>

namespace dorvanel::desktop {
namespace {

/// A loader without the plugins of the form editor: no form of ours has their widgets, and loading
/// them takes as long as the form.
std::unique_ptr<QUiLoader> makeLoader() {
    const QStringList paths = QCoreApplication::libraryPaths();
    QCoreApplication::setLibraryPaths({});
    auto loader = std::make_unique<QUiLoader>();
    QCoreApplication::setLibraryPaths(paths);
    return loader;
}

}  // namespace

std::unique_ptr<QWidget> loadInterfaceFile(const std::string& folder, const std::string& name) {
    QFile file(QFile::decodeName(QByteArray::fromStdString(folder + "/" + name + ".ui")));
    if (!file.open(QIODevice::ReadOnly)) return nullptr;
    return std::unique_ptr<QWidget>(makeLoader()->load(&file));
}

}  // namespace dorvanel::desktop
