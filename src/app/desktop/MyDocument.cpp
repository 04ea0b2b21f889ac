// SPDX-License-Identifier: MIT
#include "app/desktop/MyDocument.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <utility>

#include "app/desktop/InterfaceFile.h"
#include "app/desktop/QtWindow.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {

MyDocument::MyDocument(const PreferenceReader& preferences, std::vector<std::string> files,
                       Parts parts)
    : preferences_(preferences),
      parts_(std::move(parts)),
      model_(std::move(files)),
      survey_([this](std::size_t row, const FileFacts& facts) { found(row, facts); }) {}

std::string MyDocument::displayName() const {
    // Read for the reading's sake; the title never depends on it.
    static_cast<void>(preferences_.objectForKey("ShredCache"));
    return "Dorvanel";
}

void MyDocument::windowControllerDidLoadNib(QWidget& window) {
    window.setWindowTitle(QString::fromStdString(displayName()));
    list_ = window.findChild<QTreeView*>("documentFiles");
    if (list_ != nullptr) {
        list_->setModel(&model_);
        QHeaderView& header = *list_->header();
        header.setStretchLastSection(false);
        header.setSectionResizeMode(DocumentModel::pathColumn, QHeaderView::Stretch);
        header.setSectionResizeMode(DocumentModel::sizeColumn, QHeaderView::ResizeToContents);
        list_->setFocus();  // the button is one that shreds
    }
    if (auto* button = window.findChild<QPushButton*>("documentShredButton")) {
        QObject::connect(button, &QPushButton::clicked, &window, [this] { shredChosen(); });
    }
    refresh();
    closeByKey(window);
    centerOnScreen(window);
}

void MyDocument::refresh() {
    // What is shredded at this moment is not counted at the same time.
    survey_.start(model_.files(), !parts_.refusal || parts_.refusal().isEmpty());
}

void MyDocument::found(std::size_t row, const FileFacts& facts) {
    model_.setFacts(row, facts);
    const int line = static_cast<int>(row);
    if (model_.isMissing(line) && list_ != nullptr) {
        list_->selectionModel()->select(model_.index(line, 0),
                                        QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
    }
    tellMissing();
}

void MyDocument::tellMissing() {
    if (window_ == nullptr) return;
    const std::size_t missing = model_.missing();
    const bool isAnyThere = missing < model_.files().size();
    QString text = Words::tr("These were handed to Dorvanel. They have not been shredded.");
    if (!isAnyThere) {
        text = Words::tr("These were handed to Dorvanel. Nothing is there by these names.");
    } else if (missing > 0) {
        text = Words::tr(
            "These were handed to Dorvanel. Those that are there have not been shredded.");
    }
    auto* label = window_->findChild<QLabel*>("documentText");
    if (label != nullptr && label->text() != text) {
        label->setText(text);
        QAccessibleEvent said(label, QAccessible::Alert);
        QAccessible::updateAccessibility(&said);
    }
    if (auto* hint = window_->findChild<QLabel*>("documentHint")) hint->setVisible(isAnyThere);
    auto* button = window_->findChild<QPushButton*>("documentShredButton");
    if (button == nullptr) return;
    if (!isAnyThere && button->hasFocus()) window_->setFocus();
    button->setEnabled(isAnyThere);
}

std::vector<std::string> MyDocument::chosenFiles() const {
    std::vector<std::string> chosen;
    const QItemSelectionModel* selection = list_ != nullptr ? list_->selectionModel() : nullptr;
    const bool isAll = selection == nullptr || !selection->hasSelection();
    for (int row = 0; row < model_.rowCount(); ++row) {
        if (model_.isMissing(row) || (!isAll && !selection->isRowSelected(row))) continue;
        chosen.push_back(model_.files()[static_cast<std::size_t>(row)]);
    }
    return chosen;
}

void MyDocument::shredChosen() {
    const std::vector<std::string> chosen = chosenFiles();
    if (!chosen.empty() && parts_.shred) parts_.shred(chosen);
}

bool MyDocument::showWindows(const std::string& resourcesFolder) {
    window_ = loadInterfaceFile(resourcesFolder, windowNibName());
    if (window_ == nullptr) return false;
    windowControllerDidLoadNib(*window_);
    bringToFront(*window_);
    return true;
}

}  // namespace dorvanel::desktop
