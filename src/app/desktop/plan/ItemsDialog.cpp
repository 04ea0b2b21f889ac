// SPDX-License-Identifier: MIT
#include "app/desktop/plan/ItemsDialog.h"

#include <QHeaderView>
#include <QVBoxLayout>
#include <utility>

#include "app/desktop/Words.h"
#include "app/desktop/plan/DialogParts.h"
#include "app/desktop/plan/PlanWords.h"

namespace dorvanel::desktop {
namespace {

constexpr QSize likedSize(600, 380);

}  // namespace

ItemsDialog::ItemsDialog(QWidget& parent, std::shared_ptr<const ItemsModel::Paths> paths)
    : QDialog(&parent), model_(this) {
    setObjectName("itemsDialog");
    setWindowModality(Qt::ApplicationModal);
    setSizeGripEnabled(true);
    auto* layout = new QVBoxLayout(this);
    question_ = makeTextLabel(*this, "itemsQuestion");
    question_->setText(
        Words::tr("Shred %n item(s)? There is no way back.", nullptr, asNumber(paths->size())));
    QFont bold = question_->font();
    bold.setBold(true);
    question_->setFont(bold);
    layout->addWidget(question_);
    busy_ = makeBusyBar(*this, Words::tr("Looking at the items"));
    layout->addWidget(busy_);
    model_.showPaths(std::move(paths));
    makeTable();
    layout->addWidget(table_, 1);
    notices_ = makeTextLabel(*this, "itemsNotices");
    notices_->hide();
    layout->addWidget(notices_);
    totals_ = makeTextLabel(*this, "itemsTotals");
    totals_->setText(Words::tr("Looking…"));
    layout->addWidget(totals_);
    const QuestionButtons buttons = makeQuestionButtons(*this);
    shred_ = buttons.shred;
    shred_->setText(Words::tr("Shred %n Item(s)", nullptr, model_.rowCount()));
    connect(shred_, &QPushButton::clicked, this, &QDialog::accept);
    layout->addWidget(buttons.box);
    resizeToScreen(*this, likedSize);
}

void ItemsDialog::makeTable() {
    table_ = new QTableView(this);
    table_->setObjectName("itemsTable");
    table_->setAccessibleName(Words::tr("Items to be shredded"));
    table_->setModel(&model_);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setTextElideMode(Qt::ElideMiddle);
    table_->setShowGrid(false);
    table_->setAlternatingRowColors(true);
    table_->setWordWrap(false);
    table_->setTabKeyNavigation(false);
    table_->setMinimumHeight(table_->fontMetrics().height() * 5);
    // Rows that are all alike cost nothing until they are drawn.
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() + 8);
    QHeaderView* header = table_->horizontalHeader();
    header->setHighlightSections(false);
    header->setSectionResizeMode(ItemsModel::nameColumn, QHeaderView::Stretch);
    header->resizeSection(
        ItemsModel::sizeColumn,
        table_->fontMetrics().horizontalAdvance(QStringLiteral("1,023.9 GiB")) + 16);
    header->resizeSection(ItemsModel::notesColumn, 180);
}

void ItemsDialog::showChecked(std::shared_ptr<const ItemsModel::Items> items) {
    model_.showItems(std::move(items));
    const int count = model_.rowCount();
    question_->setText(Words::tr("Shred %n item(s)? There is no way back.", nullptr, count));
    shred_->setText(Words::tr("Shred %n Item(s)", nullptr, count));
    shred_->setEnabled(true);
    showTotals();
    announce(*question_);
}

void ItemsDialog::add(const std::vector<ItemFinding>& findings) {
    model_.add(findings);
    for (const ItemFinding& found : findings) {
        files_ += found.files;
        bytes_ += found.bytes;
    }
    showTotals();
}

void ItemsDialog::showComplete(const QStringList& notices) {
    isComplete_ = true;
    busy_->hide();
    model_.setComplete();
    notices_->setText(notices.join(u' '));
    notices_->setVisible(!notices.isEmpty());
    showTotals();
    announce(notices.isEmpty() ? *totals_ : *notices_);
}

void ItemsDialog::showTotals() {
    const QString files = Words::tr("%n file(s)", nullptr, asNumber(files_));
    totals_->setText(isComplete_
                         ? Words::tr("%1, %2").arg(files, sizeWords(bytes_))
                         : Words::tr("Looking… %1, %2 until now").arg(files, sizeWords(bytes_)));
}

}  // namespace dorvanel::desktop
