// SPDX-License-Identifier: MIT
#include "app/desktop/help/HelpWindow.h"

#include <QAction>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIcon>
#include <QSignalBlocker>
#include <QSplitter>
#include <QToolBar>
#include <QVBoxLayout>

#include "app/desktop/QtWindow.h"
#include "app/desktop/Words.h"
#include "app/desktop/help/HelpPages.h"

namespace dorvanel::desktop {
namespace {

constexpr QSize usualSize{760, 520};
constexpr int listWidth = 230;

/// A button of the bar, which is dimmed until there is somewhere to go.
QAction* addCommand(QToolBar& bar, const char* icon, const QString& text,
                    QKeySequence::StandardKey key) {
    QAction* action = bar.addAction(QIcon::fromTheme(QLatin1String(icon)), text);
    action->setShortcuts(key);
    action->setShortcutContext(Qt::WindowShortcut);
    action->setEnabled(false);
    return action;
}

}  // namespace

HelpWindow::HelpWindow(const std::string& resourcesFolder)
    : folder_(helpFolder(resourcesFolder)),
      list_(new QListWidget),
      text_(new QTextBrowser),
      message_(new QLabel) {
    setObjectName(QStringLiteral("helpWindow"));
    setWindowTitle(Words::tr("Dorvanel X Help"));
    resize(usualSize);
    list_->setObjectName(QStringLiteral("helpPages"));
    list_->setAccessibleName(Words::tr("Pages of the help"));
    text_->setObjectName(QStringLiteral("helpText"));
    text_->setAccessibleName(Words::tr("Help"));
    text_->setOpenLinks(false);
    message_->setObjectName(QStringLiteral("helpMessage"));
    message_->setTextFormat(Qt::PlainText);
    message_->setWordWrap(true);
    message_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    message_->hide();

    auto* bar = new QToolBar;
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    QAction* back = addCommand(*bar, "go-previous", Words::tr("Back"), QKeySequence::Back);
    QAction* forward = addCommand(*bar, "go-next", Words::tr("Forward"), QKeySequence::Forward);
    auto* sides = new QSplitter;
    sides->addWidget(list_);
    sides->addWidget(text_);
    sides->setStretchFactor(1, 1);
    sides->setSizes({listWidth, usualSize.width() - listWidth});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(bar);
    layout->addWidget(sides, 1);
    layout->addWidget(message_);

    connect(back, &QAction::triggered, text_, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, text_, &QTextBrowser::forward);
    connect(text_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(text_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    connect(text_, &QTextBrowser::anchorClicked, this, &HelpWindow::follow);
    connect(text_, &QTextBrowser::sourceChanged, this, &HelpWindow::pageChanged);
    makeList();
    closeByKey(*this);
    auto* escape = new QAction(this);
    escape->setShortcut(QKeySequence::Cancel);
    connect(escape, &QAction::triggered, this, &QWidget::close);
    addAction(escape);
}

void HelpWindow::makeList() {
    for (const HelpPage& page : helpPages()) {
        auto* item = new QListWidgetItem(page.title, list_);
        item->setData(Qt::UserRole, QLatin1String(page.file));
    }
    connect(list_, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* item) {
        if (item == nullptr) return;
        const QString file = item->data(Qt::UserRole).toString();
        text_->setSource(QUrl::fromLocalFile(folder_ + u'/' + file));
    });
}

void HelpWindow::showPage(const QString& file) {
    text_->setSource(QUrl::fromLocalFile(folder_ + u'/' + file));
    if (!QFileInfo::exists(folder_ + u'/' + file)) {
        tell(Words::tr("This page of the help is not installed: %1").arg(folder_ + u'/' + file));
    }
    bringToFront(*this);
    text_->setFocus();
}

QString HelpWindow::page() const {
    const QFileInfo file(text_->source().toLocalFile());
    return file.path() == folder_ ? file.fileName() : QString();
}

void HelpWindow::follow(const QUrl& link) {
    const QUrl whole = text_->source().resolved(link);
    const QFileInfo file(whole.toLocalFile());
    if (whole.isLocalFile() && file.path() == folder_ && file.exists()) {
        text_->setSource(whole);
    } else {
        tell(Words::tr("This leads out of the help and was not opened: %1").arg(link.toString()));
    }
}

void HelpWindow::pageChanged(const QUrl& source) {
    tell({});
    const QString file = source.fileName();
    const QSignalBlocker blocker(list_);  // the page is there already
    for (int row = 0; row < list_->count(); ++row) {
        if (list_->item(row)->data(Qt::UserRole).toString() == file) list_->setCurrentRow(row);
    }
}

void HelpWindow::tell(const QString& message) {
    message_->setText(message);
    message_->setVisible(!message.isEmpty());
}

}  // namespace dorvanel::desktop
