// SPDX-License-Identifier: MIT
#include "app/desktop/background/BackgroundSwitches.h"

#include <QAccessible>
#include <QVBoxLayout>

#include "app/desktop/Bytes.h"
#include "app/desktop/Elision.h"
#include "app/desktop/Words.h"

namespace dorvanel::desktop {
namespace {

QLabel* addText(QVBoxLayout& layout, QWidget& parent, const QString& name, const QString& text) {
    auto* label = new QLabel(&parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setText(text);
    layout.addWidget(label);
    return label;
}

void tell(QLabel& note, const QString& text) {
    const bool isNews = !text.isEmpty() && note.property("told").toString() != text;
    note.setProperty("told", text);
    showCut(note, text);
    note.setVisible(!text.isEmpty());
    if (!isNews || !note.isVisible()) return;
    QAccessibleEvent said(&note, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

}  // namespace

BackgroundSwitches::BackgroundSwitches(QWidget* parent, const std::string& autostartFolder,
                                       const QString& systemctl)
    : QWidget(parent), entry_(autostartFolder), service_([this] { showService(); }, systemctl) {
    setObjectName(QStringLiteral("backgroundSwitches"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    autostart_ =
        addSwitch("autostartCheckbox", Words::tr("Start Dorvanel X hidden when I log in"),
                  Words::tr("Browser Watch is then at work from the login on, behind the icon in "
                            "the status area."));
    watch_ = addSwitch("watchServiceCheckbox", Words::tr("Watch without a window (systemd)"),
                       Words::tr("The service dorvanel-watch does the same with no program to be "
                                 "seen. It asks nothing; what it does is in the journal."));
    addText(*layout, *this, QStringLiteral("bothWatchersText"),
            Words::tr("One of the two is enough. With both, each shreds when an application quits: "
                      "the same is gone in the end, but the slower one finds nothing left, or "
                      "tells of things that vanished or are locked."));
    connect(autostart_.box, &QCheckBox::clicked, this, &BackgroundSwitches::setAutostart);
    connect(watch_.box, &QCheckBox::clicked, this, [this](bool on) {
        service_.set(on);
        showService();
    });
    showAutostart();
    showService();
}

BackgroundSwitches::Switch BackgroundSwitches::addSwitch(const char* name, const QString& text,
                                                         const QString& explanation) {
    auto& layout = static_cast<QVBoxLayout&>(*this->layout());
    auto* box = new QCheckBox(text, this);
    box->setObjectName(QLatin1String(name));
    box->setAccessibleDescription(explanation);
    layout.addWidget(box);
    const QString base = QLatin1String(name);
    addText(layout, *this, base + QStringLiteral("Text"), explanation);
    QLabel* note = addText(layout, *this, base + QStringLiteral("Note"), {});
    note->hide();
    return {box, note};
}

void BackgroundSwitches::followInTabOrder(QWidget& former) {
    setTabOrder(&former, autostart_.box);
    setTabOrder(autostart_.box, watch_.box);
}

void BackgroundSwitches::refresh() {
    showAutostart();
    service_.look();
    showService();
}

void BackgroundSwitches::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
}

void BackgroundSwitches::setAutostart(bool on) {
    const auto done = entry_.set(on);
    showAutostart(
        done ? QString()
             : Words::tr("This could not be changed: %1").arg(displayText(done.error().message())));
}

void BackgroundSwitches::showAutostart(const QString& trouble) {
    const AutostartEntry::State state = entry_.state();
    autostart_.box->setChecked(state == AutostartEntry::State::on);
    autostart_.box->setEnabled(state != AutostartEntry::State::foreign);
    tell(*autostart_.note,
         state == AutostartEntry::State::foreign
             ? Words::tr("Somebody else has written or changed %1; it is left alone. Remove it to "
                         "use this switch.")
                   .arg(displayText(entry_.path()))
             : trouble);
}

void BackgroundSwitches::showService() {
    const WatchService::State& state = service_.state();
    watch_.box->setChecked(state.isEnabled || state.isActive);
    watch_.box->setEnabled(state.isAvailable && !service_.isBusy());
    QString note = state.trouble;
    if (service_.isBusy() || !state.isKnown) {
        note = Words::tr("Asking systemd…");
    } else if (note.isEmpty() && state.isEnabled != state.isActive) {
        note = state.isActive ? Words::tr("It runs now, but does not start with the session.")
                              : Words::tr("It starts with the session, but does not run now.");
    } else if (note.isEmpty()) {
        note = state.isActive ? Words::tr("It runs.") : Words::tr("It does not run.");
    }
    tell(*watch_.note, note);
}

}  // namespace dorvanel::desktop
