// SPDX-License-Identifier: MIT
#include "app/desktop/QtAlertPanel.h"

#include <QApplication>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <array>

#include "app/desktop/AlertWords.h"
#include "app/desktop/Bytes.h"
#include "app/desktop/Elision.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {

using ui::AlertButton;

namespace {

constexpr int iconSide = 48;
constexpr int alertWidth = 420;

/// The names of the buttons as objects, in the order of AlertButton.
constexpr std::array<const char*, 3> buttonNames = {"defaultButton", "alternateButton",
                                                    "otherButton"};

/// What the controller's alerts are titled and answered with, for whoever translates them.
[[maybe_unused]] constexpr std::array<const char*, 10> knownTexts = {
    QT_TRANSLATE_NOOP("Words", "Dorvanel Confirmation"),
    QT_TRANSLATE_NOOP("Words", "Dorvanel Quit Browsers"),
    QT_TRANSLATE_NOOP("Words", "Multiple Mozilla Profiles"),
    QT_TRANSLATE_NOOP("Words", "Yes"),
    QT_TRANSLATE_NOOP("Words", "No"),
    QT_TRANSLATE_NOOP("Words", "OK"),
    QT_TRANSLATE_NOOP("Words", "Cancel"),
    QT_TRANSLATE_NOOP("Words", "Hide"),
    QT_TRANSLATE_NOOP("Words", "Quit"),
    QT_TRANSLATE_NOOP("Words", "Shred")};

/// A title as the person reads it.
QString inWords(const std::string& title) {
    return displayText(Words::tr(title.c_str()).toStdString());
}

/// An alert's message with its own line breaks kept.
QString messageText(const std::string& message) {
    QStringList lines;
    for (const QByteArray& line : QByteArray::fromStdString(message).split('\n')) {
        lines << displayText(std::string_view(line.constData(), size_t(line.size())));
    }
    return lines.join(u'\n');
}

}  // namespace

QMessageBox* makeAlert(QWidget* parent, const AlertText& text) {
    auto* box = new QMessageBox(parent);
    box->setIconPixmap(QApplication::windowIcon().pixmap(iconSide));
    box->setTextFormat(Qt::PlainText);
    box->setWindowTitle(inWords(text.title));
    box->setText(inWords(text.title));
    const QString message = messageText(alertWords(text.message));
    box->setInformativeText(withLongWordsCut(message, box->fontMetrics(), alertNameWidth));
    if (auto* shown = box->findChild<QLabel*>("qt_msgbox_informativelabel")) {
        const QString whole = text.whole.empty() ? message : messageText(alertWords(text.whole));
        if (shown->text() != whole) {
            shown->setToolTip(whole);
            shown->setAccessibleName(whole);
        }
    }
    box->setAccessibleName(inWords(text.title));
    if (auto* title = box->findChild<QLabel*>("qt_msgbox_label")) {
        QFont bold = title->font();
        bold.setBold(true);
        title->setFont(bold);
    }
    // A message of a few lines reads better wide than high.
    if (auto* grid = qobject_cast<QGridLayout*>(box->layout())) {
        grid->addItem(new QSpacerItem(alertWidth, 0), grid->rowCount(), 0, 1, grid->columnCount());
    }

    const std::array<const std::string*, 3> titles = {&text.defaultButton, &text.alternateButton,
                                                      &text.otherButton};
    for (std::size_t i = 0; i < titles.size(); ++i) {
        if (titles[i]->empty()) continue;
        const bool isCancel = *titles[i] == "Cancel" || *titles[i] == "No";
        const auto role = isCancel ? QMessageBox::RejectRole
                          : i == 2 ? QMessageBox::DestructiveRole
                                   : QMessageBox::AcceptRole;
        QPushButton* button = box->addButton(inWords(*titles[i]), role);
        button->setObjectName(QLatin1String(buttonNames[i]));
        if (i == 0) box->setDefaultButton(button);
        if (i == 0 || isCancel) box->setEscapeButton(button);
    }
    return box;
}

AlertButton clickedButton(const QMessageBox& box) {
    const QAbstractButton* clicked = box.clickedButton();
    // The program ended, and its alerts with it: nobody has agreed to anything.
    if (clicked == nullptr) clicked = box.escapeButton();
    for (std::size_t i = 1; i < buttonNames.size(); ++i) {
        if (clicked != nullptr && clicked->objectName() == QLatin1String(buttonNames[i])) {
            return i == 1 ? AlertButton::alternateButton : AlertButton::otherButton;
        }
    }
    return AlertButton::defaultButton;
}

AlertButton QtAlertPanel::runAlertPanel(const std::string& title, const std::string& message,
                                        const std::string& defaultButton,
                                        const std::string& alternateButton,
                                        const std::string& otherButton) {
    return ask({title, message, defaultButton, alternateButton, otherButton});
}

AlertButton QtAlertPanel::ask(const AlertText& text) {
    const QtRunLoop::Hold hold(loop_);
    QPointer<QMessageBox> box(makeAlert(&parent_, text));
    box->setWindowModality(Qt::ApplicationModal);
    // Once the program ends, nobody is asked any more: the answer is that of a box that was shut.
    if (!loop_.isStopping()) {
        asking_(true);
        box->exec();
        asking_(false);
    }
    const AlertButton answer = box ? clickedButton(*box) : AlertButton::defaultButton;
    delete box;
    return answer;
}

}  // namespace dorvanel::desktop
