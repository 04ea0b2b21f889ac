// SPDX-License-Identifier: MIT
#include "targets/ProfilesMenu.h"

#include <initializer_list>
#include <string_view>

#include "base/PathComponents.h"

namespace dorvanel {
namespace {

constexpr const char* selectionKey = "ProfilesMenu";
constexpr const char* firstRunKey = "FirstRun";
constexpr const char* mozillaRoot = "~/Library/Mozilla/Profiles";
constexpr const char* firefoxRoot = "~/Library/Application Support/Firefox/Profiles";

/// Whether it names something in a folder: "", "." and ".." name the folder of all profiles or what
/// lies above it, and a slash leads anywhere.
bool isFolderName(const std::string& name) {
    constexpr std::string_view forbidden("/\0", 2);
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(forbidden) == std::string::npos;
}

std::vector<std::string> entries(const platform::FileManager& files, const std::string& root) {
    std::vector<std::string> names = files.directoryContentsAtPath(platform::expandingTilde(root));
    std::erase(names, ".DS_Store");
    return names;
}

}  // namespace

std::vector<std::string> selectedProfiles(const platform::UserDefaults& defaults) {
    std::vector<std::string> names =
        defaults.arrayForKey(selectionKey).value_or(std::vector<std::string>());
    std::erase_if(names, [](const std::string& name) { return !isFolderName(name); });
    return names;
}

ProfilesMenu::ProfilesMenu(ui::Menu& mainMenu, platform::FileManager& files,
                           platform::UserDefaults& defaults, ui::AlertPanel& alerts)
    : mMainMenu(mainMenu), files_(files), defaults_(defaults), alerts_(alerts) {}

void ProfilesMenu::populateProfilesMenu() {
    const std::vector<std::string> mozilla = entries(files_, mozillaRoot);
    const std::vector<std::string> firefox = entries(files_, firefoxRoot);
    mPrettyProfileMenuArray.clear();
    if (!defaults_.boolForKey(firstRunKey)) greetFirstRun(mozilla, firefox);

    const std::vector<std::string> selection = selectedProfiles(defaults_);
    ticked_.clear();
    ticked_.insert(selection.begin(), selection.end());
    std::vector<std::string> newSelection;
    // Without a menu nobody could tick again what is forgotten here.
    if (!findMenu()) return;

    if (!mozilla.empty()) {
        addHeading("Netscape/Mozilla");
        for (const std::string& name : mozilla) addProfile(mozillaRoot, name, name, newSelection);
    }
    if (!firefox.empty()) {
        mFreeSpaceMenu->addSeparatorItem();
        addHeading("Firefox");
        for (const std::string& name : firefox) {
            // The browser puts a random part before the name that its user gave: "x3f.default".
            addProfile(firefoxRoot, name, pathExtension(name), newSelection);
        }
    }
    storeSelection(newSelection);
}

void ProfilesMenu::greetFirstRun(const std::vector<std::string>& mozilla,
                                 const std::vector<std::string>& firefox) {
    if (mozilla.size() > 1 || firefox.size() > 1) {
        alerts_.runAlertPanel(
            "Multiple Mozilla Profiles",
            "You have more than 1 Mozilla (Netscape or Firefox) profile.  You must select profiles "
            "from the Profiles menu if you want shredding enabled for them.\n\nThis dialog will "
            "not be displayed again.",
            "OK", "", "");
    }
    std::vector<std::string> onlyProfiles;
    for (const auto* list : {&mozilla, &firefox}) {
        if (list->size() != 1) continue;
        onlyProfiles.push_back(list->front());
        defaults_.setArray(onlyProfiles, selectionKey);
    }
    defaults_.setBool(true, firstRunKey);
    synchronize();
}

bool ProfilesMenu::findMenu() {
    mMainMenu.setAutoenablesItems(true);
    mFreeSpaceMenuIndex = mMainMenu.indexOfItemWithTitle("Profiles");
    if (mFreeSpaceMenuIndex < 0) return false;
    mFreeSpaceMenuItem = &mMainMenu.itemAtIndex(mFreeSpaceMenuIndex);
    mFreeSpaceMenu = mFreeSpaceMenuItem->submenu();
    if (mFreeSpaceMenu == nullptr) return false;
    mFreeSpaceMenu->setAutoenablesItems(true);
    mFreeSpaceMenuItem->setEnabled(false);
    return true;
}

void ProfilesMenu::addHeading(const std::string& title) {
    mFreeSpaceMenu->addItemWithTitle(title, {}, "");
    mPrettyProfileMenuArray.push_back(title);
    mFreeSpaceMenuItem->setEnabled(true);
}

void ProfilesMenu::addProfile(const char* root, const std::string& name, const std::string& title,
                              std::vector<std::string>& newSelection) {
    const std::string path = appendingPathComponent(platform::expandingTilde(root), name);
    if (!files_.isDirectoryAtPath(path)) return;
    ui::MenuItem& item = mFreeSpaceMenu->addItemWithTitle(
        title, [this](ui::MenuItem& clicked) { profileMenuItem(clicked); }, "");
    mPrettyProfileMenuArray.push_back(name);
    item.setTag(static_cast<int>(mPrettyProfileMenuArray.size()) - 1);
    if (!ticked_.contains(name)) return;
    item.setState(true);
    newSelection.push_back(name);
}

void ProfilesMenu::profileMenuItem(ui::MenuItem& item) {
    std::vector<std::string> names = selectedProfiles(defaults_);
    const std::string& name = profileName(item);
    if (item.state()) {
        item.setState(false);
        std::erase(names, name);
    } else {
        item.setState(true);
        names.push_back(name);
    }
    storeSelection(names);
}

const std::string& ProfilesMenu::profileName(const ui::MenuItem& item) const {
    return mPrettyProfileMenuArray.at(static_cast<std::size_t>(item.tag()));
}

void ProfilesMenu::storeSelection(const std::vector<std::string>& names) {
    defaults_.setArray(names, selectionKey);
    synchronize();
}

void ProfilesMenu::synchronize() {
    // What could not be written stays in memory and is written with the next change.
    static_cast<void>(defaults_.synchronize());
}

}  // namespace dorvanel
