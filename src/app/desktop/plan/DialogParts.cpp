// SPDX-License-Identifier: MIT
#include "app/desktop/plan/DialogParts.h"

#include <QAccessible>
#include <QProgressBar>
#include <QScreen>

#include "app/desktop/Words.h"

namespace dorvanel::desktop {

QuestionButtons makeQuestionButtons(QDialog& dialog) {
    QuestionButtons buttons;
    buttons.box = new QDialogButtonBox(&dialog);
    buttons.shred = new QPushButton(Words::tr("Shred"), &dialog);
    buttons.shred->setObjectName("shredPlannedButton");
    buttons.shred->setEnabled(false);
    buttons.cancel = new QPushButton(Words::tr("Cancel"), &dialog);
    buttons.cancel->setObjectName("cancelButton");
    buttons.box->addButton(buttons.shred, QDialogButtonBox::DestructiveRole);
    buttons.box->addButton(buttons.cancel, QDialogButtonBox::RejectRole);
    buttons.shred->setAutoDefault(false);
    buttons.cancel->setDefault(true);
    buttons.cancel->setFocus();
    QObject::connect(buttons.cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
    return buttons;
}

QLabel* makeTextLabel(QWidget& parent, const char* name) {
    auto* label = new QLabel(&parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QWidget* makeBusyBar(QWidget& parent, const QString& accessibleName) {
    auto* bar = new QProgressBar(&parent);
    bar->setObjectName("busyBar");
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    bar->setAccessibleName(accessibleName);
    return bar;
}

void resizeToScreen(QDialog& dialog, QSize liked) {
    const QScreen* screen = dialog.screen();
    // The frame, which the window manager adds, needs some room too.
    constexpr QSize frame(16, 48);
    dialog.resize(screen == nullptr ? liked : liked.boundedTo(screen->availableSize() - frame));
}

void announce(QLabel& label) {
    QAccessibleEvent said(&label, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

}  // namespace dorvanel::desktop
