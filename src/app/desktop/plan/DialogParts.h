// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemView>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>

namespace dorvanel::desktop {

/// The two buttons of a dialog that asks before something is shredded. "Cancel" is the default and
/// has the keyboard; "Shred" is dimmed, and never the default.
struct QuestionButtons {
    QDialogButtonBox* box = nullptr;
    QPushButton* shred = nullptr;
    QPushButton* cancel = nullptr;
};
/// Makes them for the dialog, which they accept and reject.
QuestionButtons makeQuestionButtons(QDialog& dialog);

/// A label that breaks lines and shows text as it is.
QLabel* makeTextLabel(QWidget& parent, const char* name);

/// The busy bar that is shown while something is looked for.
QWidget* makeBusyBar(QWidget& parent, const QString& accessibleName);

/// Gives the dialog the size that it likes, as far as the screen has room.
void resizeToScreen(QDialog& dialog, QSize liked);

/// Says a label's text to who cannot see it.
void announce(QLabel& label);

}  // namespace dorvanel::desktop
