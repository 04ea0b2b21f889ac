// SPDX-License-Identifier: MIT
#include "app/desktop/results/RunDetails.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QLocale>
#include <QStandardPaths>
#include <QVBoxLayout>
#include <filesystem>
#include <system_error>
#include <utility>

#include "app/desktop/Bytes.h"
#include "app/desktop/Elision.h"
#include "app/desktop/QtWindow.h"
#include "app/desktop/Words.h"
#include "app/desktop/results/RunIcons.h"
#include "app/desktop/results/SavedReport.h"
#include "app/desktop/results/ShowInFolder.h"

namespace dorvanel::desktop {
namespace {

constexpr QSize usualSize{620, 400};

void addLines(QTreeWidgetItem& parent, const std::vector<DetailLine>& lines) {
    for (const DetailLine& line : lines) {
        auto* item = new QTreeWidgetItem(&parent, {line.what, line.fate});
        item->setToolTip(0, line.what);
        item->setToolTip(1, line.fate);
        if (line.isTrouble) item->setIcon(0, failureIcon());
        addLines(*item, line.lines);
    }
}

}  // namespace

RunDetails::RunDetails(QWidget& parent, const RunEntry& entry, const QString& older,
                       const QDBusConnection& bus, TryAgain tryAgain)
    : QDialog(&parent),
      entry_(entry),
      lines_(detailLinesOf(entry_)),
      left_(leftBy(entry_)),
      bus_(bus),
      tryAgain_(std::move(tryAgain)),
      tree_(new QTreeWidget(this)),
      message_(new QLabel(this)) {
    setObjectName(QStringLiteral("runDetails"));
    setAttribute(Qt::WA_DeleteOnClose);
    //: Title of a window; %1: a time of day, %2: who started the run
    setWindowTitle(Words::tr("Run of %1: %2")
                       .arg(QLocale().toString(entry_.when().time(), QLocale::ShortFormat),
                            starterOf(entry_)));
    auto* layout = new QVBoxLayout(this);
    auto* summary = new QLabel(this);
    summary->setObjectName(QStringLiteral("runSummary"));
    summary->setTextFormat(Qt::PlainText);
    summary->setWordWrap(true);
    const bool isTold = entry_.failure.isEmpty() || entry_.failure == entry_.message;
    showCut(*summary, isTold ? entry_.message : entry_.message + u'\n' + entry_.failure);
    layout->addWidget(summary);
    makeTree(older);
    layout->addWidget(tree_, 1);
    message_->setObjectName(QStringLiteral("runDetailsMessage"));
    message_->setTextFormat(Qt::PlainText);
    message_->setWordWrap(true);
    message_->hide();
    layout->addWidget(message_);
    makeButtons();
    closeByKey(*this);
    resize(usualSize);
    tree_->setFocus();
}

void RunDetails::makeTree(const QString& older) {
    tree_->setObjectName(QStringLiteral("runTree"));
    tree_->setAccessibleName(Words::tr("What became of the items"));
    tree_->setHeaderLabels({Words::tr("Item"), Words::tr("What became of it")});
    tree_->setUniformRowHeights(true);
    tree_->setTextElideMode(Qt::ElideMiddle);
    tree_->header()->setSectionResizeMode(QHeaderView::Stretch);
    addLines(*tree_->invisibleRootItem(), lines_);
    if (!older.isEmpty()) {
        DetailLine group{.what = Words::tr("Older failures"), .isTrouble = true};
        for (const QString& line : older.split(u'\n', Qt::SkipEmptyParts)) {
            group.lines.push_back({.what = line});
        }
        addLines(*tree_->invisibleRootItem(), {group});
    }
    if (tree_->topLevelItemCount() == 0) {
        addLines(*tree_->invisibleRootItem(), {{.what = Words::tr("There are no items.")}});
    }
    // What went wrong is open; all that went well only where there is nothing else.
    for (int i = 0; i < tree_->topLevelItemCount(); ++i) {
        QTreeWidgetItem* group = tree_->topLevelItem(i);
        if (!group->icon(0).isNull() || tree_->topLevelItemCount() == 1) group->setExpanded(true);
        group->setFirstColumnSpanned(group->childCount() > 0);
    }
    tree_->setCurrentItem(tree_->topLevelItem(0));
}

QPushButton* RunDetails::addButton(const char* name, const QString& text, const QString& tip,
                                   void (RunDetails::*pressed)()) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    button->setToolTip(tip);
    button->setAccessibleDescription(tip);
    connect(button, &QPushButton::clicked, this, pressed);
    return button;
}

void RunDetails::makeButtons() {
    auto* box = new QDialogButtonBox(QDialogButtonBox::Close, this);
    const auto add = [&](auto... arguments) {
        auto* button = addButton(arguments...);
        box->addButton(button, QDialogButtonBox::ActionRole);
        return button;
    };
    add("copyRunButton", Words::tr("&Copy"), Words::tr("Copies the details as text"),
        &RunDetails::copy);
    auto* show = add("showInFolderButton", Words::tr("Show in &Folder"),
                     Words::tr("Shows what is still there in the file manager"),
                     &RunDetails::showWhatIsLeft);
    auto* again =
        add("tryAgainButton", Words::tr("&Try Again…"),
            Words::tr("Shreds what is still there, after a question"), &RunDetails::tryAgain);
    saveButton_ = add("saveReportButton", Words::tr("&Save Report…"),
                      Words::tr("Writes the run to a file, as JSON for other programs"),
                      &RunDetails::chooseFile);
    show->setEnabled(!left_.empty());
    again->setEnabled(!left_.empty() && tryAgain_);
    if (entry_.onlyCounted > 0) {
        saveButton_->setEnabled(false);
        saveButton_->setToolTip(Words::tr("Of an older run not every item is kept"));
        saveButton_->setAccessibleDescription(saveButton_->toolTip());
    }
    box->button(QDialogButtonBox::Close)->setDefault(true);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::close);
    layout()->addWidget(box);
}

void RunDetails::tell(const QString& message) {
    showCut(*message_, message);
    message_->show();
    QAccessibleEvent said(message_, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void RunDetails::copy() {
    const bool isTold = entry_.failure.isEmpty() || entry_.failure == entry_.message;
    QString text = windowTitle() + u'\n' + entry_.message + u'\n';
    if (!isTold) text += entry_.failure + u'\n';
    QApplication::clipboard()->setText(text + asText(lines_) + u'\n');
    tell(Words::tr("The details were copied."));
}

std::vector<std::string> RunDetails::stillLeft() {
    std::vector<std::string> there;
    for (const std::string& path : left_) {
        std::error_code ignored;
        if (std::filesystem::exists(std::filesystem::symlink_status(path, ignored))) {
            there.push_back(path);
        }
    }
    if (there.empty()) tell(Words::tr("Nothing of it is there any more."));
    return there;
}

void RunDetails::showWhatIsLeft() {
    const std::vector<std::string> there = stillLeft();
    if (!there.empty()) showInFolder(there, bus_);
}

void RunDetails::tryAgain() {
    const std::vector<std::string> there = stillLeft();
    if (there.empty()) return;
    // The question comes up over the main window, and what becomes of it is shown there.
    const TryAgain again = tryAgain_;
    close();
    again(there);
}

void RunDetails::chooseFile() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    auto* dialog = new QFileDialog(this, Words::tr("Save Report"), folder,
                                   Words::tr("Reports (%1)").arg(QStringLiteral("*.json")));
    dialog->setObjectName(QStringLiteral("saveReportDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("json"));
    dialog->selectFile(Words::tr("Dorvanel X Report.json"));
    connect(dialog, &QFileDialog::fileSelected, this, &RunDetails::save);
    dialog->open();
}

void RunDetails::save(const QString& file) {
    const std::string path = QFile::encodeName(file).toStdString();
    document_ = reportDocumentOf(entry_);
    const bool isBegun = task_.start(
        [this, path] {
            const auto written = saveReport(document_, path);
            saved_ = written ? Words::tr("The report was saved: %1").arg(displayText(path))
                             : Words::tr("The report was not saved: %1")
                                   .arg(displayText(written.error().message()));
        },
        [this] {
            document_.clear();
            saveButton_->setEnabled(true);
            tell(saved_);
        });
    if (isBegun) {
        saveButton_->setEnabled(false);
    } else {
        tell(Words::tr("The report was not saved: the computer has no thread to give."));
    }
}

}  // namespace dorvanel::desktop
