// SPDX-License-Identifier: MIT
#include "app/desktop/PreferencesPanel.h"

#include <QAccessible>
#include <QEvent>
#include <QScreen>

#include "app/desktop/Bytes.h"
#include "app/desktop/Elision.h"
#include "app/desktop/PanelControls.h"
#include "app/desktop/QtWindow.h"
#include "app/desktop/Words.h"
#include "app/desktop/preferences/PanelPlace.h"
#include "app/desktop/preferences/PassText.h"
#include "apps/Applications.h"

namespace dorvanel::desktop {

using ui::Color;

namespace {

constexpr const char* mailsmithTemplate = "~/Mail/Mailsmith User Data/Mail/(dorvanelx)";

std::string titleOf(const QAbstractButton& box) {
    return box.text().remove(u'&').toStdString();  // a desktop may add mnemonics of its own
}

}  // namespace

/// While one lives, controls change because the panel sets them, not because somebody does.
class PreferencesPanel::Showing {
  public:
    explicit Showing(PreferencesPanel& panel) : panel_(panel) { ++panel_.showing_; }
    ~Showing() { --panel_.showing_; }
    Showing(const Showing&) = delete;
    Showing& operator=(const Showing&) = delete;

  private:
    PreferencesPanel& panel_;
};

PreferencesPanel::PreferencesPanel(Parts parts) : parts_(std::move(parts)) {
    parts_.preferences.setView(this);
}

PreferencesPanel::~PreferencesPanel() {
    parts_.preferences.setView(nullptr);
}

void PreferencesPanel::showPanel() {
    if (shredCacheCheckbox == nullptr) {
        std::unique_ptr<QWidget> loaded = parts_.loadMainMenu();
        const auto found = loaded != nullptr ? findControls(*loaded) : std::nullopt;
        if (!found) {
            parts_.log.log("Failed to load MainMenu.nib");
            parts_.sound.beep();
            return;
        }
        owner_ = std::move(loaded);
        connectControls(*found);
    }
    prepareToShow();
    bringToFront(*mPreferencesWindow);
}

void PreferencesPanel::prepareToShow() {
    if (!mPreferencesWindow->isVisible()) rememberOpened();
    reallyupdateUI();
    if (!parts_.preferences.areKnown()) {
        showMessage(Words::tr("The stored preferences cannot be read, and nothing is shredded "
                              "until they can. “Factory Settings” sets the file aside and begins "
                              "again. %1")
                        .arg(trouble()));
    }
    place();
}

void PreferencesPanel::rememberOpened() {
    opened_.reset();
    // What nobody knows cannot be brought back.
    if (parts_.defaults == nullptr || !parts_.preferences.areKnown()) return;
    opened_.emplace(parts_.preferences, *parts_.defaults);
}

void PreferencesPanel::place() {
    centerOnScreen(*mPreferencesWindow);
    const QScreen* screen = mPreferencesWindow->screen();
    if (screen == nullptr || !parts_.keepVisible) return;
    const QPoint shift = shiftToKeepVisible(mPreferencesWindow->frameGeometry(),
                                            parts_.keepVisible(), screen->availableGeometry());
    mPreferencesWindow->move(mPreferencesWindow->pos() + shift);
}

std::optional<PreferencesPanel::Controls> PreferencesPanel::findControls(const QWidget& mainMenu) {
    Controls found;
    found.window = mainMenu.findChild<QDialog*>("mPreferencesWindow");
    if (found.window == nullptr) return std::nullopt;
    bool all = true;
    const auto find = [&]<typename Control>(const char* name, Control*& control) {
        control = found.window->findChild<Control*>(QLatin1String(name));
        all = all && control != nullptr;
    };
    for (const auto& control : panelButtons) {
        find(control.outlet, found.buttons.emplace_back(nullptr, control.key).first);
    }
    for (const auto& control : panelPopUps) {
        find(control.outlet, found.popUps.emplace_back(nullptr, control.key).first);
    }
    for (const SupportedApplication* application : displayOrder) {
        find(application->checkBox.data(), found.enableBoxes.emplace_back());
    }
    for (const char* name :
         {"shredMailsmith1Textbox", "shredMailsmith2Textbox", "shredMailsmith3Textbox"}) {
        find(name, found.mailsmithTexts.emplace_back());
    }
    find("panelPages", found.pages);
    find("preferencesSearch", found.searchField);
    find("searchResults", found.searchResults);
    find("preferencesMessage", found.message);
    find("passText", found.passText);
    find("undoButton", found.undoButton);
    find("revertButton", found.revertButton);
    return all ? std::optional(found) : std::nullopt;
}

void PreferencesPanel::connectControls(const Controls& found) {
    mPreferencesWindow = found.window;
    buttons_ = found.buttons;
    enableBoxes_ = found.enableBoxes;
    for (const auto& [button, key] : buttons_) {
        // Not clicked: assistive technology toggles a box without a click.
        connect(button, &QAbstractButton::toggled, this, &PreferencesPanel::miscChanged);
    }
    for (const auto& [popUp, key] : found.popUps) {
        popUps_.emplace_back(*popUp, key);
        popUp->installEventFilter(this);
        connect(popUp, &QComboBox::currentIndexChanged, this, &PreferencesPanel::miscChanged);
    }
    for (QAbstractButton* box : enableBoxes_) {
        connect(box, &QAbstractButton::toggled, this, [this, box] { enableChanged(*box); });
    }
    for (QLabel* text : found.mailsmithTexts) {
        mailsmithTexts_.push_back(std::make_unique<QtTextField>(*text));
    }
    const auto button = [&found](const char* name) {
        return found.window->findChild<QAbstractButton*>(QLatin1String(name));
    };
    shredCacheCheckbox = button("shredCacheCheckbox");
    shredMailsmithSpamCheckbox = button("shredMailsmithSpamCheckbox");
    enableMozillaCheckbox = button("enableMozillaCheckbox");
    enableNetscapeCheckbox = button("enableNetscapeCheckbox");
    pages_ = found.pages;
    message_ = found.message;
    passText_ = found.passText;
    undoButton_ = found.undoButton;
    revertButton_ = found.revertButton;
    if (parts_.furnish) parts_.furnish(*mPreferencesWindow);
    search_ = std::make_unique<PanelSearch>(*found.searchField, *found.searchResults, *pages_);
    connectCommands();
}

void PreferencesPanel::connectCommands() {
    const auto onClick = [this](const char* name, auto command) {
        auto* found = mPreferencesWindow->findChild<QAbstractButton*>(QLatin1String(name));
        if (found != nullptr) connect(found, &QAbstractButton::clicked, this, command);
    };
    onClick("revertButton", [this] { revertToOpened(); });
    onClick("undoButton", [this] { undoFactorySettings(); });
    onClick("revertToDefaultButton", [this] { beginAgain(); });
    onClick("closeButton", [this] { mPreferencesWindow->close(); });
    // Escape sends no close event.
    connect(mPreferencesWindow, &QDialog::finished, this, [this] { windowWillClose(); });
    closeByKey(*mPreferencesWindow);
    mPreferencesWindow->installEventFilter(this);
}

void PreferencesPanel::reallyupdateUI() {
    if (shredCacheCheckbox == nullptr) return;
    const Showing showing(*this);
    const PreferenceValues& shown = parts_.preferences.displayedValues;
    const auto value = [&shown](Key key) {
        const auto found = shown.find(key);
        return found == shown.end() ? Number::fromInt(0) : found->second;
    };
    for (const auto& [button, key] : buttons_) button->setChecked(value(key).boolValue());
    for (NumberPopUp& popUp : popUps_) popUp.show(value(popUp.key()).intValue());
    showMailsmith();
    showEnabledBrowsers();
    showPasses();
    showRevert();
}

void PreferencesPanel::showPasses() {
    OverwriteSettings settings;
    for (const auto& [button, key] : buttons_) {
        if (key == BoolKey("DoDSanitize")) settings.doDSanitize = button->isChecked();
        if (key == BoolKey("NSA")) settings.nsa = button->isChecked();
    }
    for (const NumberPopUp& popUp : popUps_) {
        const int number = popUp.value();
        if (popUp.key() == IndexKey("NumberOfWrites")) settings.numberOfWrites = number;
        if (popUp.key() == IndexKey("OverwritePattern")) {
            settings.pattern = static_cast<unsigned>(number);
        }
    }
    const QString text = passText(settings);
    if (text == passText_->text()) return;
    passText_->setText(text);
    QAccessibleEvent said(passText_, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&said);
}

void PreferencesPanel::showRevert() {
    const bool differs = opened_ && opened_->differsFrom(parts_.preferences);
    // A button that is dimmed would hand the keyboard on to the next.
    if (!differs && revertButton_->hasFocus()) mPreferencesWindow->setFocus();
    revertButton_->setEnabled(differs);
}

void PreferencesPanel::revertToOpened() {
    if (!opened_) return parts_.preferences.revert();
    const auto saved = opened_->restore(parts_.preferences, *parts_.defaults);
    reallyupdateUI();
    showSaved(saved);
}

void PreferencesPanel::showMailsmith() {
    const bool hasTemplate =
        parts_.files.fileExistsAtPath(platform::expandingTilde(mailsmithTemplate));
    shredMailsmithSpamCheckbox->setEnabled(hasTemplate);
    const Color plain = hasTemplate ? Color::black : Color::lightGray;
    const Color warning = hasTemplate ? Color::red : Color::darkGray;
    mailsmithTexts_[0]->setTextColor(plain);
    mailsmithTexts_[1]->setTextColor(warning);
    mailsmithTexts_[2]->setTextColor(plain);
}

void PreferencesPanel::showEnabledBrowsers() {
    if (shredCacheCheckbox == nullptr) return;
    const Showing showing(*this);
    parts_.preferences.loadBrowserInfo();
    for (QAbstractButton* box : enableBoxes_) {
        box->setChecked(parts_.preferences.browserIsEnabled(titleOf(*box)));
    }
}

void PreferencesPanel::showMozillaAndNetscape() {
    if (shredCacheCheckbox == nullptr) return;
    const Showing showing(*this);
    for (QAbstractButton* box : {enableMozillaCheckbox, enableNetscapeCheckbox}) {
        box->setChecked(parts_.preferences.browserIsEnabled(titleOf(*box)));
    }
}

void PreferencesPanel::enableChanged(const QAbstractButton& box) {
    if (showing_ > 0) return;
    showSaved(parts_.preferences.enableChanged(titleOf(box)));
    showRevert();
}

void PreferencesPanel::miscChanged() {
    if (showing_ > 0) return;
    PreferenceValues& shown = parts_.preferences.displayedValues;
    for (const auto& [button, key] : buttons_) {
        shown.insert_or_assign(key, Number::fromBool(button->isChecked()));
    }
    for (const NumberPopUp& popUp : popUps_) {
        shown.insert_or_assign(popUp.key(), Number::fromInt(popUp.value()));
    }
    showSaved(parts_.preferences.commitDisplayedValues());
    showPasses();
    showRevert();
}

void PreferencesPanel::beginAgain() {
    const bool wereKnown = parts_.preferences.areKnown();
    std::optional<PreferenceSnapshot> before;
    if (wereKnown && parts_.defaults != nullptr) {
        before.emplace(parts_.preferences, *parts_.defaults);
    }
    if (const auto started = parts_.preferences.startAfresh(); !started) {
        return showMessage(Words::tr("Not done: %1").arg(displayText(started.error().message())));
    }
    parts_.preferences.revertToDefault();
    if (before && before->differsFrom(parts_.preferences)) return offerUndo(*before);
    if (wereKnown) return;
    const auto saved = parts_.preferences.saveDefaults();
    rememberOpened();
    showRevert();
    if (!saved) return showSaved(saved);
    showMessage(Words::tr("The preferences begin again. %1").arg(trouble()));
}

void PreferencesPanel::offerUndo(const PreferenceSnapshot& before) {
    showMessage(Words::tr("The factory settings are set."));
    beforeFactory_ = before;
    undoButton_->show();
    QAccessibleEvent said(message_, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void PreferencesPanel::undoFactorySettings() {
    if (!beforeFactory_) return;
    const auto saved = beforeFactory_->restore(parts_.preferences, *parts_.defaults);
    reallyupdateUI();
    showSaved(saved);
}

QString PreferencesPanel::trouble() const {
    return parts_.trouble ? displayText(parts_.trouble()) : QString();
}

void PreferencesPanel::showSaved(const Result<Done>& saved) {
    if (saved) return showMessage({});
    const QString reason = displayText(saved.error().message());
    showMessage(parts_.preferences.areKnown()
                    ? Words::tr("In force, but not saved: %1").arg(reason)
                    : Words::tr("Not saved, and nothing is shredded by it: %1").arg(reason));
}

void PreferencesPanel::showMessage(const QString& message) {
    // What could be undone was another message's.
    beforeFactory_.reset();
    if (undoButton_->hasFocus()) mPreferencesWindow->setFocus();
    undoButton_->hide();
    message_->setVisible(!message.isEmpty());
    showCut(*message_, message);
}

void PreferencesPanel::windowWillClose() {
    mPreferencesWindow->setFocus();
    search_->clear();
    if (beforeFactory_) showMessage({});
}

bool PreferencesPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == mPreferencesWindow && event->type() == QEvent::Close) windowWillClose();
    if (watched == mPreferencesWindow && event->type() == QEvent::PaletteChange) {
        for (const auto& text : mailsmithTexts_) text->restyle();
    }
    // Scrolling the panel must not change, and save, what the pointer happens to pass over.
    if (event->type() == QEvent::Wheel && qobject_cast<QComboBox*>(watched) != nullptr) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace dorvanel::desktop
