// SPDX-License-Identifier: MIT
#include "app/desktop/Colors.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>

namespace dorvanel::desktop {

using ui::Color;

namespace {

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

}  // namespace

QColor readableColor(Color color, const QPalette& palette) {
    const bool dark = isDark(palette);
    // Each has a contrast of 4.5 or more to the usual window colours but the greys, which say
    // "off".
    switch (color) {
        case Color::red:
            return dark ? QColor(0xff, 0x8a, 0x80) : QColor(0xb3, 0x1b, 0x1b);
        case Color::green:
            return dark ? QColor(0x6f, 0xd0, 0x8c) : QColor(0x1b, 0x6e, 0x35);
        case Color::lightGray:
            return dark ? QColor(0x96, 0x96, 0x96) : QColor(0x70, 0x70, 0x70);
        case Color::darkGray:
            return dark ? QColor(0xb8, 0xb8, 0xb8) : QColor(0x4c, 0x4c, 0x4c);
        case Color::black:
            break;
    }
    return palette.color(QPalette::WindowText);
}

QPixmap markFor(Color color, const QPalette& palette, qreal pixelRatio) {
    QPixmap pixmap(QSize(markSide, markSide) * pixelRatio);
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ink = readableColor(color, palette);
    painter.setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (color == Color::red) {
        painter.setBrush(ink);
        painter.drawEllipse(QRectF(3, 3, 10, 10));
    } else if (color == Color::green) {
        painter.drawEllipse(QRectF(2, 2, 12, 12));
        QPainterPath tick(QPointF(5.2, 8.2));
        tick.lineTo(7.2, 10.2);
        tick.lineTo(10.8, 5.8);
        painter.drawPath(tick);
    } else {
        painter.drawLine(QPointF(4.5, 8), QPointF(11.5, 8));
    }
    return pixmap;
}

void keepOutlinesVisible() {
    constexpr int nearlyBlack = 8;  // of 255
    const bool isBlack = QApplication::palette().window().color().lightness() < nearlyBlack;
    if (isBlack && QApplication::style()->name() == QLatin1String("fusion")) {
        QApplication::setStyle(QStringLiteral("windows"));
    }
}

}  // namespace dorvanel::desktop
