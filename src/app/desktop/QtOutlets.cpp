// SPDX-License-Identifier: MIT
#include "app/desktop/QtOutlets.h"

#include <QFontMetrics>
#include <algorithm>
#include <cmath>

#include "app/desktop/AlertWords.h"
#include "app/desktop/Bytes.h"
#include "app/desktop/Colors.h"
#include "app/desktop/Words.h"

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
        // What is cut is a name, in nobody's language.
        text_ = displayText(elide_ == Elide::no ? statusWords(*text) : *text);
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

ApplicationLabel::ApplicationLabel(QLabel& label, QLabel& mark, QLabel& word)
    : QtTextField(label), mark_(mark), word_(word) {}

void ApplicationLabel::showColor(Color color) {
    QtTextField::showColor(color);
    const QPalette base = mark_.parentWidget()->palette();
    mark_.setPixmap(markFor(color, base, mark_.devicePixelRatioF()));
    word_.setPalette(label().palette());
    const QString name = label().text();
    QString state = Words::tr("%1 is not watched.").arg(name);
    QString spoken = Words::tr("not watched");
    QString word = Words::tr("off", "an application that is not watched");
    if (color == Color::red) {
        state = Words::tr("%1 is running. Its traces are left alone until it quits.").arg(name);
        spoken = Words::tr("running");
        word = Words::tr("runs", "an application");
    } else if (color == Color::green) {
        state = Words::tr("%1 is watched. It is not running.").arg(name);
        spoken = Words::tr("watched, not running");
        word = Words::tr("watched", "an application");
    }
    for (QLabel* part : {&label(), &mark_, &word_}) part->setToolTip(state);
    label().setAccessibleDescription(state);
    mark_.setAccessibleName(spoken);
    word_.setText(word);
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
