// SPDX-License-Identifier: MIT
#include "app/desktop/Elision.h"

#include <QStringList>

namespace dorvanel::desktop {
namespace {

/// How much room a word has in a message, in pixels.
constexpr int wordWidth = 360;

}  // namespace

QString withLongWordsCut(const QString& text, const QFontMetrics& metrics, int width) {
    QString shown;
    qsizetype start = 0;
    const auto takeWord = [&](qsizetype end) {
        shown += metrics.elidedText(text.mid(start, end - start), Qt::ElideMiddle, width);
        start = end + 1;
    };
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (!text[at].isSpace()) continue;
        takeWord(at);
        shown += text[at];
    }
    takeWord(text.size());
    return shown;
}

void showCut(QLabel& label, const QString& text, const QString& whole) {
    const QString& all = whole.isEmpty() ? text : whole;
    const QString shown = withLongWordsCut(text, label.fontMetrics(), wordWidth);
    label.setText(shown);
    label.setToolTip(shown == all ? QString() : all);
    label.setAccessibleName(shown == all ? QString() : all);
}

}  // namespace dorvanel::desktop
