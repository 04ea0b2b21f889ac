// SPDX-License-Identifier: MIT
#include "app/desktop/QtOutlets.h"

#include <QFontMetrics>
#include <algorithm>
#include <cmath>

#include "app/desktop/Bytes.h"
#include "app/desktop/Colors.h"

namespace dorvanel::desktop {

using ui::Color;

QtTextField::QtTextField(QLabel& label, Elide elide)
    : label_(label), elide_(elide), text_(label.text()), wake_([this] { show(); }) {}

void QtTextField::setStringValue(std::string_view text) {
    {
        const std::lock_guard lock(mutex_);
        pendingText_ = text;
    }
    change();
}

void QtTextField::setTextColor(Color color) {
    {
        const std::lock_guard lock(mutex_);
        pendingColor_ = color;
    }
    change();
}

void QtTextField::change() {
    if (isMainThread()) {
        show();
    } else {
        wake_.post();
    }
}

void QtTextField::display() {
    if (!isMainThread()) return;  // the main loop comes round by itself
    label_.repaint();
}

void QtTextField::show() {
    std::optional<std::string> text;
    std::optional<Color> color;
    {
        const std::lock_guard lock(mutex_);
        text.swap(pendingText_);
        color.swap(pendingColor_);
    }
    if (text) {
        text_ = displayText(*text);
        showText();
    }
    if (color && color != color_) {
        color_ = color;
        showColor(*color);
    }
}

void QtTextField::showText() {
    if (elide_ == Elide::no) {
        label_.setText(text_);
        return;
    }
    label_.setText(label_.fontMetrics().elidedText(text_, Qt::ElideMiddle, label_.width()));
    label_.setToolTip(text_);
    label_.setAccessibleDescription(text_);
}

void QtTextField::restyle() {
    if (elide_ != Elide::no) showText();
    if (color_) showColor(*color_);
}

void QtTextField::showColor(Color color) {
    QPalette palette = label_.palette();
    const QPalette& base = label_.parentWidget() ? label_.parentWidget()->palette() : palette;
    palette.setColor(label_.foregroundRole(), readableColor(color, base));
    label_.setPalette(palette);
}

ApplicationLabel::ApplicationLabel(QLabel& label, QLabel& mark) : QtTextField(label), mark_(mark) {}

void ApplicationLabel::showColor(Color color) {
    QtTextField::showColor(color);
    const QPalette base = mark_.parentWidget()->palette();
    mark_.setPixmap(markFor(color, base, mark_.devicePixelRatioF()));
    QString state = QStringLiteral("%1 is not watched.");
    QString word = QStringLiteral("not watched");
    if (color == Color::red) {
        state = QStringLiteral("%1 is running. Its traces are left alone until it quits.");
        word = QStringLiteral("running");
    } else if (color == Color::green) {
        state = QStringLiteral("%1 is watched. It is not running.");
        word = QStringLiteral("watched, not running");
    }
    state = state.arg(label().text());
    for (QLabel* part : {&label(), &mark_}) part->setToolTip(state);
    label().setAccessibleDescription(state);
    mark_.setAccessibleName(word);
}

QtProgressIndicator::QtProgressIndicator(QProgressBar& bar)
    : bar_(bar), wake_([this] { show(); }) {}

void QtProgressIndicator::setDoubleValue(double percent) {
    percent_ = percent;
    if (isMainThread()) {
        show();
    } else {
        wake_.post();
    }
}

void QtProgressIndicator::display() {
    if (!isMainThread()) return;
    bar_.repaint();
}

void QtProgressIndicator::show() {
    // A file that grew after it was measured leads beyond the end; a value there would be ignored.
    bar_.setValue(static_cast<int>(std::lround(std::clamp(percent_.load(), 0.0, 100.0))));
}

}  // namespace dorvanel::desktop
