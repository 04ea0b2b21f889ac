// SPDX-License-Identifier: MIT
#include "app/desktop/results/ResultsView.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QVBoxLayout>

#include "app/desktop/Words.h"
#include "app/desktop/results/RunIcons.h"

namespace dorvanel::desktop {

std::unique_ptr<ResultsView> ResultsView::create(QWidget& window, RunHistory& history,
                                                 const std::function<void(quint64)>& showDetails,
                                                 const std::function<void(quint64)>& dismiss) {
    std::unique_ptr<ResultsView> made(new ResultsView(history));
    made->pages_ = window.findChild<QTabWidget*>("pages");
    made->page_ = window.findChild<QWidget*>("resultsPage");
    auto* layout = window.findChild<QVBoxLayout*>("resultsLayout");
    if (made->pages_ == nullptr || made->page_ == nullptr || layout == nullptr) return nullptr;
    QWidget& page = *made->page_;
    made->makeList(page);
    connect(made->list_, &QTreeView::activated, made.get(), [view = made.get(), showDetails] {
        if (const RunEntry* entry = view->selected()) showDetails(entry->number);
    });
    made->details_ =
        made->makeButton(page, "runDetailsButton", Words::tr("Run Details…"),
                         Words::tr("What became of every item, and what can be done"), showDetails);
    made->dismiss_ = made->makeButton(
        page, "dismissRunButton", Words::tr("Dismiss Failure"),
        Words::tr("Takes the mark of the failure away; the run stays in the list"), dismiss);
    auto* note = new QLabel(
        Words::tr("Kept in memory until Dorvanel quits; no name of a file is written down."),
        &page);
    note->setObjectName(QStringLiteral("runListNote"));
    note->setWordWrap(true);
    note->setForegroundRole(QPalette::PlaceholderText);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(note, 1);
    buttons->addWidget(made->dismiss_);
    buttons->addWidget(made->details_);
    layout->addWidget(made->nothing_, 1);
    layout->addWidget(made->list_, 1);
    layout->addLayout(buttons);
    for (auto signal : {&RunHistory::rowsInserted, &RunHistory::rowsRemoved}) {
        connect(&history, signal, made.get(), &ResultsView::follow);
    }
    connect(&history, &RunHistory::dataChanged, made.get(), &ResultsView::follow);
    connect(made->list_->selectionModel(), &QItemSelectionModel::currentRowChanged, made.get(),
            &ResultsView::follow);
    made->follow();
    return made;
}

void ResultsView::makeList(QWidget& page) {
    nothing_ =
        new QLabel(Words::tr("Nothing has been shredded since Dorvanel was started."), &page);
    nothing_->setObjectName(QStringLiteral("noRunsText"));
    nothing_->setWordWrap(true);
    nothing_->setAlignment(Qt::AlignCenter);
    list_ = new QTreeView(&page);
    list_->setObjectName(QStringLiteral("runList"));
    list_->setAccessibleName(Words::tr("Last runs"));
    list_->setModel(&history_);
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    list_->setTextElideMode(Qt::ElideMiddle);
    list_->setMinimumHeight(list_->fontMetrics().height() * 3);
    QHeaderView& header = *list_->header();
    header.setStretchLastSection(false);
    header.setSectionResizeMode(QHeaderView::ResizeToContents);
    header.setSectionResizeMode(RunHistory::result, QHeaderView::Stretch);
    header.setMaximumSectionSize(list_->fontMetrics().averageCharWidth() * 28);
}

QPushButton* ResultsView::makeButton(QWidget& page, const char* name, const QString& text,
                                     const QString& tip,
                                     const std::function<void(quint64)>& pressed) {
    auto* button = new QPushButton(text, &page);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    button->setToolTip(tip);
    button->setAccessibleDescription(tip);
    connect(button, &QPushButton::clicked, this, [this, pressed] {
        if (const RunEntry* entry = selected()) pressed(entry->number);
    });
    return button;
}

const RunEntry* ResultsView::selected() const {
    return history_.at(list_->currentIndex());
}

void ResultsView::select(quint64 number) {
    const QModelIndex index = history_.indexOf(number);
    if (index.isValid()) list_->setCurrentIndex(index);
}

void ResultsView::open() {
    pages_->setCurrentWidget(page_);
    list_->setFocus();
}

void ResultsView::follow() {
    const bool isEmpty = history_.rowCount() == 0;
    list_->setVisible(!isEmpty);
    nothing_->setVisible(isEmpty);
    const RunEntry* entry = selected();
    details_->setEnabled(entry != nullptr);
    dismiss_->setEnabled(entry != nullptr && entry->isMarked);
    const int marked = history_.markedCount();
    const int tab = pages_->indexOf(page_);
    pages_->setTabText(tab, marked == 0 ? Words::tr("&Last Runs")
                                        : Words::tr("&Last Runs (%Ln)", nullptr, marked));
    pages_->setTabIcon(tab, marked == 0 ? QIcon() : failureIcon());
    pages_->setTabToolTip(
        tab, marked == 0
                 ? QString()
                 : Words::tr("%Ln run(s) failed and (was|were) not dismissed", nullptr, marked));
}

}  // namespace dorvanel::desktop
