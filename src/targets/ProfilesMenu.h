// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "platform/FileManager.h"
#include "platform/UserDefaults.h"
#include "ui/AlertPanel.h"
#include "ui/Menu.h"

namespace dorvanel {

/// The profile folder names that the user ticked in the Profiles menu, Mozilla's and Firefox's in
/// one list; empty when none is stored. What is stored but names no single folder is left out,
/// whoever stored it.
std::vector<std::string> selectedProfiles(const platform::UserDefaults& defaults);

/// The Profiles menu, through which the user chooses the Mozilla and Firefox profiles to shred.
/// The selection lives in the user defaults and is synchronized after every change. Main thread.
class ProfilesMenu {
  public:
    /// All four must outlive this object; the items that it adds to the menu call back into it.
    ProfilesMenu(ui::Menu& mainMenu, platform::FileManager& files, platform::UserDefaults& defaults,
                 ui::AlertPanel& alerts);

    /// Fills the submenu of the main menu's item "Profiles", once per launch. At the first launch
    /// of all it ticks an only profile, and tells the user to choose where there are several.
    /// Profiles that are gone drop out of the selection. Without an item "Profiles" that has a
    /// submenu no menu is built and the selection stays as it is.
    void populateProfilesMenu();

    /// The action of a profile's item: ticks or unticks it, in the menu and in the selection.
    void profileMenuItem(ui::MenuItem& item);

    /// The full folder name behind a profile's item, whose title may be shortened.
    [[nodiscard]] const std::string& profileName(const ui::MenuItem& item) const;

    /// The submenu; null before it is populated and where there is none.
    [[nodiscard]] const ui::Menu* menu() const { return mFreeSpaceMenu; }

  private:
    void greetFirstRun(const std::vector<std::string>& mozilla,
                       const std::vector<std::string>& firefox);
    bool findMenu();
    void addHeading(const std::string& title);
    /// Adds the item of a profile folder, ticked when it was; an entry that is no folder gets none.
    void addProfile(const char* root, const std::string& name, const std::string& title,
                    std::vector<std::string>& newSelection);
    void storeSelection(const std::vector<std::string>& names);
    void synchronize();

    ui::Menu& mMainMenu;
    platform::FileManager& files_;
    platform::UserDefaults& defaults_;
    ui::AlertPanel& alerts_;

    int mFreeSpaceMenuIndex = -1;
    ui::MenuItem* mFreeSpaceMenuItem = nullptr;
    ui::Menu* mFreeSpaceMenu = nullptr;
    /// One entry for each item but the separator; a profile item's tag is its index here.
    std::vector<std::string> mPrettyProfileMenuArray;
    /// What was selected before the menu was built.
    std::unordered_set<std::string> ticked_;
};

}  // namespace dorvanel
