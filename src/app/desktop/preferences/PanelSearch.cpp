// SPDX-License-Identifier: MIT
#include "app/desktop/preferences/PanelSearch.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QShortcut>

#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

QString withoutMnemonic(QString text) {
    return text.remove(u'&');
}

/// What a person calls the control.
QString titleOf(const QWidget& control, const QWidget& page) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) {
        return withoutMnemonic(button->text());
    }
    for (const auto* label : page.findChildren<QLabel*>()) {
        if (label->buddy() == &control) return withoutMnemonic(label->text()).remove(u':');
    }
    return control.accessibleName();
}

/// All that the control says of itself.
QString textOf(const QWidget& control, const QString& title) {
    QStringList parts = {title, control.toolTip(), control.accessibleDescription()};
    if (const auto* box = qobject_cast<const QComboBox*>(&control)) {
        for (int i = 0; i < box->count(); ++i) parts << box->itemText(i);
    }
    return parts.join(u'\n');
}

bool saysAll(const QString& text, const QStringList& words) {
    return std::all_of(words.begin(), words.end(), [&text](const QString& word) {
        return text.contains(word, Qt::CaseInsensitive);
    });
}

}  // namespace

PanelSearch::PanelSearch(QLineEdit& field, QListWidget& results, QTabWidget& pages)
    : field_(field), results_(results), pages_(pages) {
    connect(&field_, &QLineEdit::textChanged, this, &PanelSearch::search);
    connect(&field_, &QLineEdit::returnPressed, this, [this] { choose(results_.item(0)); });
    connect(&results_, &QListWidget::itemActivated, this, &PanelSearch::choose);
    // A click is enough; the style may ask for two where it activates.
    connect(&results_, &QListWidget::itemClicked, this, &PanelSearch::choose);
    const auto* key = new QShortcut(QKeySequence::Find, &field_);
    connect(key, &QShortcut::activated, &field_, [this] {
        field_.setFocus(Qt::ShortcutFocusReason);
        field_.selectAll();
    });
    field_.installEventFilter(this);
    results_.installEventFilter(this);
}

void PanelSearch::clear() {
    field_.clear();
}

void PanelSearch::search(const QString& text) {
    const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    results_.clear();
    found_.clear();
    results_.setVisible(!words.isEmpty());
    pages_.setVisible(words.isEmpty());
    if (words.isEmpty()) return;
    for (int page = 0; page < pages_.count(); ++page) {
        addMatches(*pages_.widget(page), withoutMnemonic(pages_.tabText(page)), words);
    }
    if (found_.isEmpty()) {
        auto* none = new QListWidgetItem(Words::tr("No preference says “%1”.").arg(text));
        none->setFlags(Qt::NoItemFlags);
        results_.addItem(none);
    } else {
        results_.setCurrentRow(0);
    }
    results_.setAccessibleDescription(
        Words::tr("%n preference(s) found", nullptr, static_cast<int>(found_.size())));
    QAccessibleEvent said(&results_, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&said);
}

void PanelSearch::addMatches(QWidget& page, const QString& pageTitle, const QStringList& words) {
    for (auto* control : page.findChildren<QWidget*>()) {
        const bool isControl = qobject_cast<QAbstractButton*>(control) != nullptr ||
                               qobject_cast<QComboBox*>(control) != nullptr;
        if (!isControl || control->isHidden() || control->focusPolicy() == Qt::NoFocus) continue;
        const QString title = titleOf(*control, page);
        if (title.isEmpty() || !saysAll(textOf(*control, title), words)) continue;
        auto* item = new QListWidgetItem(
            Words::tr("%1: %2", "a page and a preference on it").arg(pageTitle, title));
        item->setToolTip(control->toolTip());
        results_.addItem(item);
        found_ << control;
    }
}

void PanelSearch::choose(const QListWidgetItem* item) {
    const qsizetype row = item == nullptr ? -1 : results_.row(item);
    if (row < 0 || row >= found_.size()) return;
    QWidget* control = found_[row];
    // Not from within the list's own signal: clearing the field takes the list's items away.
    QMetaObject::invokeMethod(
        control, [this, control] { reveal(*control); }, Qt::QueuedConnection);
}

void PanelSearch::reveal(QWidget& control) {
    clear();
    for (int index = 0; index < pages_.count(); ++index) {
        if (!pages_.widget(index)->isAncestorOf(&control)) continue;
        pages_.setCurrentIndex(index);
        if (auto* page = qobject_cast<QScrollArea*>(pages_.widget(index))) {
            page->ensureWidgetVisible(&control);
        }
    }
    // The ring that the keyboard's control wears is what points it out.
    control.setFocus(Qt::TabFocusReason);
}

bool PanelSearch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride) {
        return QObject::eventFilter(watched, event);
    }
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Escape && !field_.text().isEmpty()) {
        // It would close the panel.
        event->accept();
        if (event->type() == QEvent::KeyPress) {
            clear();
            field_.setFocus();
        }
        return true;
    }
    const bool goesDown = watched == &field_ && key->key() == Qt::Key_Down && !found_.isEmpty();
    if (goesDown && event->type() == QEvent::KeyPress) {
        results_.setFocus();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace dorvanel::desktop
