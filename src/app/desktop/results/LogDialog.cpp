// SPDX-License-Identifier: MIT
#include "app/desktop/results/LogDialog.h"

#include <QAccessible>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QScrollBar>
#include <QVBoxLayout>
#include <utility>

#include "app/desktop/Bytes.h"
#include "app/desktop/Elision.h"
#include "app/desktop/QtWindow.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

constexpr QSize usualSize{640, 420};

}  // namespace

LogDialog::LogDialog(QWidget& parent, Parts parts)
    : QDialog(&parent),
      parts_(std::move(parts)),
      note_(new QLabel(this)),
      preferences_(new QPushButton(Words::tr("&Preferences…"), this)),
      text_(new QPlainTextEdit(this)) {
    setObjectName(QStringLiteral("logDialog"));
    setWindowTitle(Words::tr("Activity Log"));
    note_->setObjectName(QStringLiteral("logNote"));
    note_->setTextFormat(Qt::PlainText);
    note_->setWordWrap(true);
    preferences_->setObjectName(QStringLiteral("logPreferencesButton"));
    preferences_->setAutoDefault(false);
    preferences_->setAccessibleDescription(Words::tr("Where the activity log is turned on"));
    connect(preferences_, &QPushButton::clicked, this, [this] { parts_.showPreferences(); });
    auto* top = new QHBoxLayout;
    top->addWidget(note_, 1);
    top->addWidget(preferences_);
    text_->setObjectName(QStringLiteral("logText"));
    text_->setAccessibleName(Words::tr("Activity log"));
    text_->setReadOnly(true);
    // The keyboard reaches every line, and selects and copies.
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setUndoRedoEnabled(false);
    text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* box = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* reload = box->addButton(Words::tr("&Read Again"), QDialogButtonBox::ActionRole);
    reload->setObjectName(QStringLiteral("reloadLogButton"));
    reload->setAutoDefault(false);
    box->button(QDialogButtonBox::Close)->setDefault(true);
    connect(reload, &QPushButton::clicked, this, &LogDialog::reload);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(text_, 1);
    layout->addWidget(box);
    closeByKey(*this);
    resize(usualSize);
    text_->setFocus();
}

void LogDialog::reload() {
    const bool isBegun = task_.start([this] { tail_ = readLogTail(parts_.path, limit); },
                                     [this] { show(std::exchange(tail_, {})); });
    if (!isBegun && !task_.isAtWork()) {
        show({.trouble = Words::tr("The activity log cannot be read: the computer has no thread "
                                   "to give.")});
    }
}

void LogDialog::show(const LogTail& tail) {
    const bool isOn = parts_.isOn();
    QStringList notes;
    if (!isOn) {
        notes << (tail.text.isEmpty()
                      ? Words::tr("The activity log is off: runs write nothing down.")
                      : Words::tr("The activity log is off: this is of an earlier run."));
    }
    // A log that is off need not be there.
    if (!tail.trouble.isEmpty() && (isOn || !tail.isMissing)) notes << tail.trouble;
    if (tail.isOnlyTheEnd) notes << Words::tr("Only the end of the log is shown, the last 1 MiB.");
    if (isOn && tail.trouble.isEmpty() && tail.text.isEmpty()) {
        notes << Words::tr("The activity log is empty.");
    }
    notes << displayText(parts_.path);
    showCut(*note_, notes.join(u'\n'));
    preferences_->setVisible(!isOn);
    text_->setPlainText(tail.text);
    text_->verticalScrollBar()->setValue(text_->verticalScrollBar()->maximum());
    QAccessibleEvent said(note_, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

}  // namespace dorvanel::desktop
