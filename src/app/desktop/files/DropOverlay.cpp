// SPDX-License-Identifier: MIT
#include "app/desktop/files/DropOverlay.h"

#include <QAccessible>
#include <QEvent>
#include <QMainWindow>
#include <QStyle>
#include <QVBoxLayout>

#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

/// How much of the window stays in sight around it, in pixels.
constexpr int margin = 12;

QIcon iconOf(const QStyle& style, bool takes) {
    return takes ? QIcon::fromTheme(QStringLiteral("edit-delete-shred"),
                                    style.standardIcon(QStyle::SP_TrashIcon))
                 : QIcon::fromTheme(QStringLiteral("dialog-cancel"),
                                    style.standardIcon(QStyle::SP_MessageBoxWarning));
}

}  // namespace

DropOverlay::DropOverlay(QWidget& window)
    : QFrame(&window), window_(window), icon_(new QLabel(this)), text_(new QLabel(this)) {
    setObjectName(QStringLiteral("dropOverlay"));
    setAccessibleName(Words::tr("What dropping would do"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAutoFillBackground(true);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setLineWidth(2);
    setForegroundRole(QPalette::Highlight);
    icon_->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
    text_->setObjectName(QStringLiteral("dropOverlayText"));
    text_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    QFont large = text_->font();
    if (large.pointSizeF() > 0) large.setPointSizeF(large.pointSizeF() * 1.3);
    text_->setFont(large);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(icon_);
    layout->addWidget(text_);
    window_.installEventFilter(this);
    hide();
}

void DropOverlay::say(const QString& text, bool takes) {
    if (isVisible() && text == text_->text()) return;
    const int size = style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, this);
    icon_->setPixmap(iconOf(*style(), takes).pixmap(QSize(size, size), devicePixelRatio()));
    text_->setText(text);
    cover();
    raise();
    show();
    QAccessibleEvent said(text_, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void DropOverlay::cover() {
    const auto* main = qobject_cast<QMainWindow*>(&window_);
    const QRect contents = main != nullptr && main->centralWidget() != nullptr
                               ? main->centralWidget()->geometry()
                               : window_.rect();
    setGeometry(contents.adjusted(margin, margin, -margin, -margin));
}

bool DropOverlay::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window_ && event->type() == QEvent::Resize && isVisible()) cover();
    return QFrame::eventFilter(watched, event);
}

}  // namespace dorvanel::desktop
