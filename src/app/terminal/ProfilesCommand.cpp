// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>

#include "app/Texts.h"
#include "app/terminal/Commands.h"
#include "app/terminal/OpenedPreferences.h"
#include "app/terminal/TerminalAlertPanel.h"
#include "platform/FileManager.h"
#include "targets/ProfilesMenu.h"
#include "ui/Menu.h"

namespace dorvanel::terminal {
namespace {

/// The Profiles menu of a command, built as a launch builds it.
class OpenedProfiles {
  public:
    OpenedProfiles(OpenedPreferences& opened, Terminal& terminal)
        : opened_(opened),
          alerts_(terminal.in, terminal.err, TerminalAlertPanel::Answers::asked),
          item_(mainMenu_.addItemWithTitle("Profiles", {}, "")),
          submenu_(item_.makeSubmenu()),
          profiles_(mainMenu_, platform::defaultFileManager(), opened_.defaults(), alerts_) {
        profiles_.populateProfilesMenu();
    }

    /// Calls with every item of the menu, in order.
    template <typename Visit>
    void eachItem(Visit visit) {
        for (int i = 0; i < submenu_.numberOfItems(); ++i) visit(submenu_.itemAtIndex(i));
    }
    /// The full folder name behind an item that can be clicked; null for any other.
    [[nodiscard]] const std::string* nameOf(const ui::MenuItem& item) const {
        return item.isSeparatorItem() || !item.isEnabled() ? nullptr : &profiles_.profileName(item);
    }
    /// Whether what the menu has changed is saved; tells on `err` when it is not.
    [[nodiscard]] ExitStatus save() { return opened_.statusOf(opened_.defaults().synchronize()); }

  private:
    OpenedPreferences& opened_;
    TerminalAlertPanel alerts_;
    ui::Menu mainMenu_;
    ui::MenuItem& item_;
    ui::Menu& submenu_;
    ProfilesMenu profiles_;
};

ExitStatus list(Terminal& terminal) {
    OpenedPreferences preferences(terminal);
    if (!preferences.areKnown()) return ExitStatus::incomplete;
    OpenedProfiles opened(preferences, terminal);
    opened.eachItem([&](const ui::MenuItem& item) {
        if (const std::string* name = opened.nameOf(item)) {
            terminal.out << (item.state() ? "[x] " : "[ ] ") << terminal.forOut(*name) << '\n';
        } else {
            terminal.out << item.title() << '\n';  // a heading, or the separator's empty line
        }
    });
    return opened.save();
}

ExitStatus select(Terminal& terminal, const std::string& name, bool selected) {
    OpenedPreferences preferences(terminal);
    if (!preferences.areKnown()) return ExitStatus::incomplete;
    OpenedProfiles opened(preferences, terminal);
    ui::MenuItem* first = nullptr;
    bool isSelected = false;
    // Mozilla and Firefox may each have a profile of this name; the selection holds names alone.
    opened.eachItem([&](ui::MenuItem& item) {
        const std::string* itsName = opened.nameOf(item);
        if (itsName == nullptr || *itsName != name) return;
        if (first == nullptr) first = &item;
        isSelected = isSelected || item.state();
    });
    if (first == nullptr) {
        terminal.complain(tr("there is no profile \"{}\"; \"dorvanel profiles\" lists them", name));
        return ExitStatus::usage;
    }
    if (isSelected != selected) first->performAction();
    return opened.save();
}

}  // namespace

void addProfilesCommand(CLI::App& program, Action& chosen) {
    auto name = std::make_shared<std::string>();
    CLI::App* profiles = program.add_subcommand(
        "profiles", tr("List the Mozilla and Firefox profiles, select those to shred"));
    profiles->require_subcommand(0, 1)->fallthrough();
    profiles->callback([&chosen] {
        if (!chosen) chosen = list;
    });
    profiles
        ->add_subcommand("list",
                         tr("Print every profile, [x] before the selected (also without a word)"))
        ->fallthrough()
        ->callback([&chosen] { chosen = list; });

    const auto addSwitch = [&](const char* word, const std::string& description, bool selected) {
        CLI::App* command = profiles->add_subcommand(word, description);
        command->fallthrough()
            ->add_option("NAME", *name, tr("The profile's folder name"))
            ->required();
        command->callback([&chosen, name, selected] {
            chosen = [name, selected](Terminal& terminal) {
                return select(terminal, *name, selected);
            };
        });
    };
    addSwitch("select", tr("Shred the profile's traces"), true);
    addSwitch("deselect", tr("Leave the profile alone"), false);
}

}  // namespace dorvanel::terminal
