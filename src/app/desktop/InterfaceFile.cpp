// SPDX-License-Identifier: MIT
#include "app/desktop/InterfaceFile.h"

#include <QFile>
#include <QUiLoader>

namespace dorvanel::desktop {

std::unique_ptr<QWidget> loadInterfaceFile(const std::string& folder, const std::string& name) {
    QFile file(QFile::decodeName(QByteArray::fromStdString(folder + "/" + name + ".ui")));
    if (!file.open(QIODevice::ReadOnly)) return nullptr;
    QUiLoader loader;
    return std::unique_ptr<QWidget>(loader.load(&file));
}

}  // namespace dorvanel::desktop
