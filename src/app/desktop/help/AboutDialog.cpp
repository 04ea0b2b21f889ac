// SPDX-License-Identifier: MIT
#include "app/desktop/help/AboutDialog.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSysInfo>
#include <QVBoxLayout>

#include "app/desktop/Words.h"
#include "app/desktop/help/LicenceText.h"

namespace dorvanel::desktop {
namespace {

constexpr int iconSize = 64;

QLabel* makeText(const QString& text, const char* name) {
    auto* label = new QLabel(text);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QLabel* makeTitle() {
    QLabel* title = makeText(Words::tr("Dorvanel X"), "aboutTitle");
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setBold(true);
    title->setFont(large);
    return title;
}

QHBoxLayout* makeHead() {
    auto* icon = new QLabel;
    icon->setPixmap(QApplication::windowIcon().pixmap(iconSize, iconSize));
    auto* words = new QVBoxLayout;
    words->addWidget(makeTitle());
    words->addWidget(
        makeText(Words::tr("Shreds files, and the traces that browsers and mail programs leave."),
                 "aboutText"));
    auto* head = new QHBoxLayout;
    head->addWidget(icon, 0, Qt::AlignTop);
    head->addLayout(words, 1);
    return head;
}

}  // namespace

QString AboutDialog::versions() {
    return Words::tr("Dorvanel X %1\nQt %2\n%3, %4")
        .arg(QStringLiteral(DORVANEL_VERSION), QLatin1String(qVersion()),
             QSysInfo::prettyProductName(), QSysInfo::currentCpuArchitecture());
}

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("aboutDialog"));
    setWindowTitle(Words::tr("About Dorvanel X"));
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(makeHead());

    QLabel* shown = makeText(versions(), "aboutVersions");
    shown->setAccessibleName(Words::tr("Versions: %1").arg(versions()));
    shown->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    layout->addWidget(shown);

    auto* terms = new QPlainTextEdit(QString::fromUtf8(licenceText));
    terms->setObjectName(QStringLiteral("aboutLicence"));
    terms->setReadOnly(true);
    terms->setTabChangesFocus(true);
    auto* termsLabel = new QLabel(Words::tr("&Licence (MIT):"));
    termsLabel->setBuddy(terms);
    layout->addWidget(termsLabel);
    layout->addWidget(terms, 1);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* copy =
        buttons->addButton(Words::tr("&Copy Versions"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("aboutCopyButton"));
    copy->setAutoDefault(false);
    layout->addWidget(buttons);
    connect(copy, &QPushButton::clicked, this,
            [] { QApplication::clipboard()->setText(versions()); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    buttons->button(QDialogButtonBox::Close)->setFocus();
    resize(480, 360);
}

}  // namespace dorvanel::desktop
