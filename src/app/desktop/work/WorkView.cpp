// SPDX-License-Identifier: MIT
#include "app/desktop/work/WorkView.h"

#include <QLayout>
#include <QLocale>
#include <chrono>
#include <utility>

#include "app/desktop/Bytes.h"
#include "app/desktop/Words.h"
#include "app/desktop/work/WorkText.h"

namespace dorvanel::desktop {
namespace {

constexpr std::chrono::milliseconds lookInterval{250};

void showText(QLabel& label, const QString& text) {
    if (label.text() != text) label.setText(text);
    label.setVisible(!text.isEmpty());
}

}  // namespace

std::unique_ptr<WorkView> WorkView::create(Parts parts) {
    std::unique_ptr<WorkView> made(new WorkView(std::move(parts)));
    return made->text_ == nullptr || made->item_ == nullptr ? nullptr : std::move(made);
}

WorkView::WorkView(Parts parts)
    : parts_(std::move(parts)),
      text_(parts_.window.findChild<QLabel*>("workText")),
      item_(parts_.window.findChild<QLabel*>("itemName")),
      title_(parts_.window.windowTitle()) {
    timer_.setInterval(lookInterval);
    connect(&timer_, &QTimer::timeout, this, &WorkView::refresh);
}

void WorkView::setWorking(bool isWorking) {
    if (isWorking == isWorking_) return;
    isWorking_ = isWorking;
    estimate_.clear();
    if (isWorking) {
        timer_.start();
    } else {
        timer_.stop();
    }
    refresh();
}

void WorkView::setCountdown(const QString& text) {
    countdown_ = text;
    refresh();
}

void WorkView::refresh() {
    const ui::WorkState state = isWorking_ ? progress_.latest() : ui::WorkState{};
    if (state.phase == ui::WorkPhase::overwriting) {
        estimate_.add(parts_.clock.now(), state.done, state.total);
    }
    showText(*text_, workTextOf(state, estimate_));
    showItem(state);
    showOutside(percentOf(state));
}

void WorkView::showItem(const ui::WorkState& state) {
    const QString whole = itemTextOf(state);
    if (item_->isHidden() && !whole.isEmpty()) {
        // Its width is known once it has its place.
        item_->show();
        if (QLayout* layout = item_->parentWidget()->layout()) layout->activate();
    }
    showText(*item_, item_->fontMetrics().elidedText(whole, Qt::ElideMiddle, item_->width()));
    const QString path = displayText(state.path);
    if (item_->toolTip() == path && item_->accessibleName() == whole) return;
    item_->setToolTip(path);
    item_->setAccessibleName(whole);
}

void WorkView::showOutside(int percent) {
    const QString text =
        percent < 0 ? QString() : Words::tr("%1 %").arg(QLocale().toString(percent));
    const QString title =
        text.isEmpty() ? title_
                       : Words::tr("%1 – %2", "how far it is, and the program").arg(text, title_);
    if (parts_.window.windowTitle() != title) parts_.window.setWindowTitle(title);
    parts_.showTip(countdown_.isEmpty() ? text : countdown_);
    if (parts_.launcher != nullptr) {
        parts_.launcher->show({.percent = percent, .urgent = !countdown_.isEmpty()});
    }
}

}  // namespace dorvanel::desktop
