// SPDX-License-Identifier: MIT
#include "app/desktop/plan/PlanDialog.h"

#include <QHeaderView>
#include <QVBoxLayout>
#include <utility>

#include "app/desktop/Words.h"
#include "app/desktop/plan/DialogParts.h"
#include "app/desktop/plan/PlanWords.h"

namespace dorvanel::desktop {
namespace {

constexpr QSize likedSize(640, 460);
constexpr int mostKindsExpanded = 100;

}  // namespace

PlanDialog::PlanDialog(QWidget& parent, const Texts& texts)
    : QDialog(&parent), texts_(texts), model_(this) {
    setObjectName("planDialog");
    setWindowTitle(texts.title);
    setWindowModality(Qt::WindowModal);
    setSizeGripEnabled(true);
    auto* layout = new QVBoxLayout(this);
    lead_ = makeTextLabel(*this, "planLead");
    lead_->setText(Words::tr("Looking…"));
    layout->addWidget(lead_);
    busy_ = makeBusyBar(*this, Words::tr("Looking for what would be shredded"));
    layout->addWidget(busy_);
    contents_ = makeContents();
    layout->addWidget(contents_, 1);
    totals_ = makeTextLabel(*this, "planTotals");
    totals_->hide();
    layout->addWidget(totals_);
    layout->addStretch();
    const QuestionButtons buttons = makeQuestionButtons(*this);
    shred_ = buttons.shred;
    cancel_ = buttons.cancel;
    connect(shred_, &QPushButton::clicked, this, &QDialog::accept);
    layout->addWidget(buttons.box);
    resizeToScreen(*this, likedSize);
}

QWidget* PlanDialog::makeContents() {
    auto* contents = new QWidget(this);
    auto* layout = new QVBoxLayout(contents);
    layout->setContentsMargins({});
    auto* row = new QHBoxLayout;
    auto* label = new QLabel(Words::tr("&Find:"), contents);
    filter_ = new QLineEdit(contents);
    filter_->setObjectName("planFilter");
    filter_->setClearButtonEnabled(true);
    filter_->setPlaceholderText(Words::tr("Part of a name, a folder or an application"));
    label->setBuddy(filter_);
    row->addWidget(label);
    row->addWidget(filter_);
    layout->addLayout(row);

    tree_ = new QTreeView(contents);
    tree_->setObjectName("planTree");
    tree_->setAccessibleName(Words::tr("What would be shredded"));
    tree_->setModel(&model_);
    tree_->setUniformRowHeights(true);
    tree_->setTextElideMode(Qt::ElideMiddle);
    tree_->setAllColumnsShowFocus(true);
    tree_->setAlternatingRowColors(true);
    tree_->setTabKeyNavigation(false);
    tree_->setMinimumHeight(tree_->fontMetrics().height() * 5);
    QHeaderView* header = tree_->header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(PlanModel::nameColumn, QHeaderView::Stretch);
    const int width = tree_->fontMetrics().horizontalAdvance(QStringLiteral("100,000 files ")) + 12;
    for (const int column : {PlanModel::filesColumn, PlanModel::sizeColumn}) {
        header->setSectionResizeMode(column, QHeaderView::Interactive);
        header->resizeSection(column, width);
    }
    layout->addWidget(tree_, 1);
    notices_ = makeTextLabel(*contents, "planNotices");
    notices_->hide();
    layout->addWidget(notices_);
    contents->hide();
    connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
        model_.setFilter(text);
        expandShortOnes();
    });
    return contents;
}

void PlanDialog::showPlan(ShownPlan shown, PlanTree tree) {
    busy_->hide();
    model_.show(std::move(shown), std::move(tree));
    const Plan& plan = model_.plan();
    const bool isNothing = plan.items.empty();
    lead_->setText(isNothing ? texts_.nothing : texts_.lead);
    contents_->setVisible(!isNothing || !plan.skipped.empty());
    expandShortOnes();
    const QStringList notices = noticeWords(plan);
    notices_->setText(notices.join(u' '));
    notices_->setVisible(!notices.isEmpty());
    totals_->setText(totalsWords(plan));
    totals_->setVisible(!isNothing);
    shred_->setVisible(!isNothing);
    shred_->setEnabled(!isNothing);
    if (isNothing) {
        cancel_->setText(Words::tr("Close"));
    } else {
        shred_->setText(Words::tr("Shred %n Item(s)", nullptr, asNumber(plan.items.size())));
    }
    announce(isNothing ? *lead_ : *totals_);
}

void PlanDialog::showTrouble(const QString& trouble) {
    busy_->hide();
    shred_->hide();
    cancel_->setText(Words::tr("Close"));
    lead_->setText(trouble);
    announce(*lead_);
}

void PlanDialog::expandShortOnes() {
    int kinds = 0;
    for (int i = 0; i < model_.rowCount(); ++i) {
        const QModelIndex group = model_.index(i, 0);
        tree_->expand(group);
        for (int j = 0; j < model_.rowCount(group) && kinds < mostKindsExpanded; ++j) {
            const QModelIndex kind = model_.index(j, 0, group);
            if (model_.rowCount(kind) == 0 || model_.isLong(kind)) continue;
            tree_->expand(kind);
            ++kinds;
        }
    }
}

}  // namespace dorvanel::desktop
