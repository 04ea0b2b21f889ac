// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/desktop/NumberPopUp.h"
#include "app/desktop/QtOutlets.h"
#include "platform/FileManager.h"
#include "platform/SystemLog.h"
#include "platform/SystemSound.h"
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
    };
    explicit PreferencesPanel(Parts parts);
    ~PreferencesPanel() override;

    /// Brings the panel to the front, in the middle of the screen, with the values as they are now;
    /// loads it first where no control is connected yet. When that fails, one line in the system's
    /// log and a beep are all that comes of it.
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
    };
    /// Nothing where one is missing.
    static std::optional<Controls> findControls(const QWidget& mainMenu);
    void connectControls(const Controls& found);
    void connectCommands();
    void prepareToShow();
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
    QLabel* message_ = nullptr;
    std::vector<std::pair<QAbstractButton*, BoolKey>> buttons_;  ///< with their keys
    std::vector<NumberPopUp> popUps_;
    std::vector<QAbstractButton*> enableBoxes_;
    std::vector<std::unique_ptr<QtTextField>> mailsmithTexts_;
};

}  // namespace dorvanel::desktop
