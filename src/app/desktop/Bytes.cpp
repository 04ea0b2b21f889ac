// SPDX-License-Identifier: MIT
#include "app/desktop/Bytes.h"

#include <QByteArray>

namespace dorvanel::desktop {

QString displayText(std::string_view bytes) {
    QString text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    for (QChar& character : text) {
        const QChar::Category category = character.category();
        const bool hides = category == QChar::Other_Control || category == QChar::Other_Format ||
                           category == QChar::Separator_Line ||
                           category == QChar::Separator_Paragraph;
        if (hides) character = QChar::ReplacementCharacter;
    }
    return text;
}

std::string pathOfUrl(const QUrl& url) {
    if (!url.isValid() || !url.isLocalFile() || !url.host().isEmpty()) return {};
    const QByteArray encoded = url.path(QUrl::FullyEncoded).toLatin1();
    const QByteArray path = QByteArray::fromPercentEncoding(encoded);
    // The system would take what stands before a zero for the whole name.
    return path.contains('\0') ? std::string() : path.toStdString();
}

QString urlOfPath(const std::string& path) {
    const QByteArray bytes = QByteArray::fromStdString(path);
    return QStringLiteral("file://") + QString::fromLatin1(bytes.toPercentEncoding("/"));
}

}  // namespace dorvanel::desktop
