// SPDX-License-Identifier: MIT
#include "app/desktop/applications/ApplicationsView.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QStyle>
#include <QVBoxLayout>

#include "app/desktop/Elision.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

/// So many lines of the tree can be seen at least, the header among them.
constexpr int fewestLines = 6;

QLabel* makeNote(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->hide();
    parent->layout()->addWidget(label);
    return label;
}

/// Shows a note, whole in its tool tip; none where there is no text.
void showNote(QLabel& label, const QString& text, const QString& whole = {}) {
    showCut(label, text, whole);
    label.setVisible(!text.isEmpty());
}

}  // namespace

ApplicationsView::ApplicationsView(ApplicationsModel& model, const std::function<void()>& lookAgain,
                                   QWidget* parent)
    : QWidget(parent), model_(model) {
    setObjectName(QStringLiteral("todayView"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    addOffer();
    addTree();
    addNotes();
    addLookAgain(lookAgain);
    connect(&model_, &ApplicationsModel::summaryChanged, this, &ApplicationsView::showSummary);
    showSummary();
}

void ApplicationsView::addOffer() {
    offerBox_ = new QWidget(this);
    offerBox_->setObjectName(QStringLiteral("offerBox"));
    offerBox_->hide();
    auto* row = new QHBoxLayout(offerBox_);
    row->setContentsMargins(0, 0, 0, 0);
    offerText_ = new QLabel(offerBox_);
    offerText_->setObjectName(QStringLiteral("offerText"));
    offerText_->setTextFormat(Qt::PlainText);
    offerText_->setWordWrap(true);
    row->addWidget(offerText_, 1);
    chooseButton_ = new QPushButton(Words::tr("Choose Recommended Traces"), offerBox_);
    chooseButton_->setObjectName(QStringLiteral("chooseRecommendedButton"));
    chooseButton_->setAutoDefault(false);
    const QString means = Words::tr("Chooses what nobody misses; nothing is shredded yet");
    chooseButton_->setToolTip(means);
    chooseButton_->setAccessibleDescription(means);
    connect(chooseButton_, &QPushButton::clicked, &model_, &ApplicationsModel::chooseRecommended);
    row->addWidget(chooseButton_);
    layout()->addWidget(offerBox_);
}

void ApplicationsView::addTree() {
    tree_ = new QTreeView(this);
    tree_->setObjectName(QStringLiteral("todayTree"));
    tree_->setAccessibleName(Words::tr("Applications on this computer"));
    tree_->setModel(&model_);
    tree_->setAllColumnsShowFocus(true);
    tree_->setUniformRowHeights(true);
    tree_->setTextElideMode(Qt::ElideMiddle);
    // As much as there is room for: what stands below is to be seen too.
    tree_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    tree_->setMinimumHeight(tree_->fontMetrics().lineSpacing() * fewestLines * 5 / 4);
    QHeaderView& header = *tree_->header();
    header.setStretchLastSection(false);
    header.setSectionsMovable(false);
    header.setSectionResizeMode(QHeaderView::ResizeToContents);
    header.setSectionResizeMode(ApplicationsModel::nameColumn, QHeaderView::Stretch);
    header.setMinimumSectionSize(tree_->fontMetrics().averageCharWidth() * 16);
    static_cast<QVBoxLayout*>(layout())->addWidget(tree_, 1);
    setFocusProxy(tree_);
}

void ApplicationsView::addNotes() {
    emptyText_ = makeNote("todayEmptyText", this);
    unseenText_ = makeNote("unseenText", this);
    faultsText_ = makeNote("faultsText", this);
}

void ApplicationsView::addLookAgain(const std::function<void()>& lookAgain) {
    auto* row = new QHBoxLayout;
    countingText_ = new QLabel(this);
    countingText_->setObjectName(QStringLiteral("countingText"));
    row->addWidget(countingText_, 1);
    auto* action = new QAction(Words::tr("Look Again"), this);
    action->setObjectName(QStringLiteral("lookAgainAction"));
    action->setShortcut(Qt::Key_F5);
    connect(action, &QAction::triggered, this, lookAgain);
    addAction(action);
    lookAgainButton_ = new QPushButton(action->text(), this);
    lookAgainButton_->setObjectName(QStringLiteral("lookAgainButton"));
    lookAgainButton_->setAutoDefault(false);
    lookAgainButton_->setIcon(QIcon::fromTheme(QStringLiteral("view-refresh"),
                                               style()->standardIcon(QStyle::SP_BrowserReload)));
    const QString means = Words::tr("Counts again what is there (F5)");
    lookAgainButton_->setToolTip(means);
    lookAgainButton_->setAccessibleDescription(means);
    connect(lookAgainButton_, &QPushButton::clicked, action, &QAction::trigger);
    row->addWidget(lookAgainButton_);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void ApplicationsView::followInTabOrder(QWidget& former) {
    setTabOrder(&former, chooseButton_);
    setTabOrder(chooseButton_, tree_);
    setTabOrder(tree_, lookAgainButton_);
}

void ApplicationsView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    makeRoomForNotes();
}

/// Where the view scrolls, its labels are given the room of one line if they do not ask for more.
void ApplicationsView::makeRoomForNotes() {
    for (QLabel* note : {emptyText_, unseenText_, faultsText_}) {
        note->setMinimumHeight(note->isHidden() ? 0 : note->heightForWidth(width()));
    }
}

void ApplicationsView::showSummary() {
    showOffer();
    const bool isEmpty = model_.rowCount() == 0;
    if (isEmpty && tree_->hasFocus()) lookAgainButton_->setFocus();
    tree_->setHidden(isEmpty);
    QString empty;
    if (isEmpty && model_.isCounted()) {
        empty = Words::tr(
            "No application that Dorvanel knows has left anything in this home "
            "folder.");
    }
    showNote(*emptyText_, empty);
    countingText_->setText(model_.isCounting() ? Words::tr("Counting…") : QString());

    const QStringList unseen = model_.unseen();
    showNote(*unseenText_,
             unseen.isEmpty() ? QString()
                              : Words::tr("%n place(s) could not be looked into: %1", nullptr,
                                          static_cast<int>(unseen.size()))
                                    .arg(unseen.first()),
             unseen.join(u'\n'));
    const QStringList faults = model_.faults();
    showNote(*faultsText_,
             faults.isEmpty() ? QString()
                              : Words::tr("%n fault(s) in the descriptions of applications: %1",
                                          nullptr, static_cast<int>(faults.size()))
                                    .arg(faults.first()),
             faults.join(u'\n'));
    makeRoomForNotes();
}

void ApplicationsView::showOffer() {
    const QString offer = model_.offer();
    // What has the keyboard must not hand it on to a command that shreds.
    if (offer.isEmpty() && chooseButton_->hasFocus()) tree_->setFocus();
    offerBox_->setHidden(offer.isEmpty());
    if (offer == offerText_->text()) return;
    offerText_->setText(offer);
    if (offer.isEmpty()) return;
    QAccessibleEvent said(offerText_, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

}  // namespace dorvanel::desktop
