#include "app/desktop/PreferencesPanel.h"

#include <QEvent>

#include "app/desktop/Bytes.h"
#include "app/desktop/PanelControls.h"
#include "app/desktop/QtWindow.h"

namespace dorvanel::desktop {

using platform::Color;

namespace {

constexpr const char* mailsmithTemplate = "~/Mail/Mailsmith User Data/Mail/(dorvanelx)";

std::string titleOf(const QAbstractButton& box) {
    return box.text().remove(u'&').toStdString();  // a desktop may add mnemonics of its own
}

bool canBeChosen(const QComboBox& popUp, int index) {
    return index >= 0 && index < popUp.count() && index != popUpSeparator;
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
        owner_ = parts_.loadMainMenu();
        if (owner_ == nullptr || !connectControls(*owner_)) {
            parts_.log.log("Failed to load MainMenu.nib");
            parts_.sound.beep();
            return;
        }
    }
    prepareToShow();
    bringToFront(*mPreferencesWindow);
}

void PreferencesPanel::prepareToShow() {
    reallyupdateUI();
    centerOnScreen(*mPreferencesWindow);
}

bool PreferencesPanel::connectControls(QWidget& mainMenu) {
    auto* window = mainMenu.findChild<QDialog*>("mPreferencesWindow");
    if (window == nullptr) return false;
    const auto button = [window](const char* name) {
        return window->findChild<QAbstractButton*>(QLatin1String(name));
    };
    for (const PanelControl& control : panelButtons) {
        QAbstractButton* found = button(control.outlet);
        if (found == nullptr) return false;
        buttons_.emplace_back(found, control.key);
        // Not clicked: assistive technology toggles a box without a click.
        connect(found, &QAbstractButton::toggled, this, &PreferencesPanel::miscChanged);
    }
    for (const PanelControl& control : panelPopUps) {
        auto* found = window->findChild<QComboBox*>(QLatin1String(control.outlet));
        if (found == nullptr) return false;
        found->insertSeparator(popUpSeparator);
        found->installEventFilter(this);
        popUps_.emplace_back(found, control.key);
        connect(found, &QComboBox::currentIndexChanged, this, &PreferencesPanel::miscChanged);
    }
    for (const char* name : enableBoxes) {
        QAbstractButton* found = button(name);
        if (found == nullptr) return false;
        enableBoxes_.push_back(found);
        connect(found, &QAbstractButton::toggled, this, [this, found] { enableChanged(*found); });
    }
    for (const char* name :
         {"shredMailsmith1Textbox", "shredMailsmith2Textbox", "shredMailsmith3Textbox"}) {
        auto* found = window->findChild<QLabel*>(QLatin1String(name));
        if (found == nullptr) return false;
        mailsmithTexts_.push_back(std::make_unique<QtTextField>(*found, AfterDisplay()));
    }
    message_ = window->findChild<QLabel*>("preferencesMessage");
    shredMailsmithSpamCheckbox = button("shredMailsmithSpamCheckbox");
    enableMozillaCheckbox = button("enableMozillaCheckbox");
    enableNetscapeCheckbox = button("enableNetscapeCheckbox");
    if (auto* revert = button("revertButton")) {
        connect(revert, &QAbstractButton::clicked, this, [this] { parts_.preferences.revert(); });
    }
    if (auto* factory = button("revertToDefaultButton")) {
        connect(factory, &QAbstractButton::clicked, this,
                [this] { parts_.preferences.revertToDefault(); });
    }
    if (auto* close = button("closeButton")) {
        connect(close, &QAbstractButton::clicked, window, &QWidget::close);
    }
    closeByKey(*window);
    window->installEventFilter(this);
    mPreferencesWindow = window;
    shredCacheCheckbox = button("shredCacheCheckbox");
    return true;
}

void PreferencesPanel::reallyupdateUI() {
    if (shredCacheCheckbox == nullptr) return;
    const Showing showing(*this);
    const PreferenceValues& shown = parts_.preferences.displayedValues;
    const auto value = [&shown](const std::string& key) {
        const auto found = shown.find(key);
        return found == shown.end() ? Number::fromInt(0) : found->second;
    };
    for (const auto& [button, key] : buttons_) button->setChecked(value(key).boolValue());
    for (const auto& [popUp, key] : popUps_) {
        // A value that nobody could have chosen here shows as the factory's.
        const int index = value(key).intValue();
        popUp->setCurrentIndex(canBeChosen(*popUp, index) ? index : 0);
    }
    showMailsmith();
    showEnabledBrowsers();
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
}

void PreferencesPanel::miscChanged() {
    if (showing_ > 0) return;
    PreferenceValues& shown = parts_.preferences.displayedValues;
    for (const auto& [button, key] : buttons_) {
        shown.insert_or_assign(key, Number::fromBool(button->isChecked()));
    }
    for (const auto& [popUp, key] : popUps_) {
        shown.insert_or_assign(key, Number::fromInt(popUp->currentIndex()));
    }
    showSaved(parts_.preferences.commitDisplayedValues());
}

void PreferencesPanel::showSaved(const platform::Result<platform::Done>& saved) {
    if (message_ == nullptr) return;
    message_->setVisible(!saved);
    if (!saved) {
        message_->setText(QStringLiteral("In force, but not saved: ") +
                          displayText(saved.error().message()));
    }
}

void PreferencesPanel::windowWillClose() {
    mPreferencesWindow->setFocus();
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
