// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/desktop/NumberPopUp.h"
#include "app/desktop/QtOutlets.h"
#include "app/desktop/preferences/PanelSearch.h"
#include "app/desktop/preferences/PreferenceSnapshot.h"
#include "platform/FileManager.h"
#include "platform/SystemLog.h"
#include "platform/SystemSound.h"
#include "platform/UserDefaults.h"
#include "prefs/Preferences.h"

namespace dorvanel::desktop {

/// The panel that shows and edits the preferences. A click is committed and saved before it
/// returns. Main thread.
class PreferencesPanel final : public QObject, public PreferencesView {
  public:
    /// What the panel stands on; all of it outlives the panel.
    struct Parts {
        Preferences& preferences;
        const platform::FileManager& files;
        platform::SystemLog& log;
        platform::SystemSound& sound;
        /// Loads the interface file "MainMenu"; null when it cannot be.
        std::function<std::unique_ptr<QWidget>()> loadMainMenu;
        /// What became of the stored preferences: the file and the reason. May be empty.
        std::function<std::string()> trouble = {};
        /// Where the list of the enabled applications is stored; null: nothing can be taken back.
        platform::UserDefaults* defaults = nullptr;
        /// The part of the screen that the panel leaves visible where there is room beside it. May
        /// be empty.
        std::function<QRect()> keepVisible = {};
        /// Puts what others have for the panel into its places, once, when it is loaded. May be
        /// empty.
        std::function<void(QDialog&)> furnish = {};
    };
    explicit PreferencesPanel(Parts parts);
    ~PreferencesPanel() override;

    /// Brings the panel to the front, in the middle of the screen or as little beside it as keeps
    /// the window's progress visible, with the values as they are now; loads it first where no
    /// control is connected yet. When that fails, one line in the system's log and a beep are all
    /// that comes of it.
    void showPanel();
    /// Sets every control. Without controls, nothing.
    void reallyupdateUI() override;
    /// Sets the twelve enable check boxes.
    void showEnabledBrowsers();
    void showMozillaAndNetscape() override;
    /// Ends any editing in progress.
    void windowWillClose();

    /// The panel's window; null before it is loaded.
    [[nodiscard]] QDialog* window() const { return mPreferencesWindow; }
    /// The pages by the object names of their scroll areas ("howPage"); null before it is loaded.
    [[nodiscard]] QTabWidget* pages() const { return pages_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    class Showing;

    /// The controls that a panel must have.
    struct Controls {
        QDialog* window = nullptr;
        std::vector<std::pair<QAbstractButton*, BoolKey>> buttons;  ///< with their keys
        std::vector<std::pair<QComboBox*, IndexKey>> popUps;        ///< with their keys
        std::vector<QAbstractButton*> enableBoxes;
        std::vector<QLabel*> mailsmithTexts;
        QTabWidget* pages = nullptr;
        QLineEdit* searchField = nullptr;
        QListWidget* searchResults = nullptr;
        QLabel* message = nullptr;
        QLabel* passText = nullptr;
        QPushButton* undoButton = nullptr;
        QPushButton* revertButton = nullptr;
    };
    /// Nothing where one is missing.
    static std::optional<Controls> findControls(const QWidget& mainMenu);
    void connectControls(const Controls& found);
    void connectCommands();
    void prepareToShow();
    /// Keeps what Revert brings back.
    void rememberOpened();
    void place();
    /// Says in words what the choices of overwriting, as they are shown, come to.
    void showPasses();
    /// Whether there is anything to go back to.
    void showRevert();
    void revertToOpened();
    void undoFactorySettings();
    void offerUndo(const PreferenceSnapshot& before);
    void enableChanged(const QAbstractButton& box);
    void miscChanged();
    void showMailsmith();
    /// Goes back to the factory settings; stored preferences that cannot be read are set aside.
    void beginAgain();
    void showMessage(const QString& message);
    [[nodiscard]] QString trouble() const;
    void showSaved(const Result<Done>& saved);

    Parts parts_;
    int showing_ = 0;
    std::unique_ptr<QWidget> owner_;  ///< what the interface file made; owns all controls
    QDialog* mPreferencesWindow = nullptr;
    QAbstractButton* shredCacheCheckbox = nullptr;  ///< null: no control is connected
    QAbstractButton* shredMailsmithSpamCheckbox = nullptr;
    QAbstractButton* enableMozillaCheckbox = nullptr;
    QAbstractButton* enableNetscapeCheckbox = nullptr;
    QTabWidget* pages_ = nullptr;
    std::unique_ptr<PanelSearch> search_;
    QLabel* message_ = nullptr;
    QLabel* passText_ = nullptr;
    QPushButton* undoButton_ = nullptr;
    QPushButton* revertButton_ = nullptr;
    std::optional<PreferenceSnapshot> opened_;                   ///< when the panel was opened
    std::optional<PreferenceSnapshot> beforeFactory_;            ///< what Undo brings back
    std::vector<std::pair<QAbstractButton*, BoolKey>> buttons_;  ///< with their keys
    std::vector<NumberPopUp> popUps_;
    std::vector<QAbstractButton*> enableBoxes_;
    std::vector<std::unique_ptr<QtTextField>> mailsmithTexts_;
};

}  // namespace dorvanel::desktop
