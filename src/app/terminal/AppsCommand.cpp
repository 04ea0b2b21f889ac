// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <ostream>

#include "app/Texts.h"
#include "app/terminal/Commands.h"
#include "app/terminal/OpenedPreferences.h"
#include "apps/Applications.h"

namespace dorvanel::terminal {
namespace {

ExitStatus list(Terminal& terminal) {
    OpenedPreferences opened(terminal);
    if (!opened.areKnown()) return ExitStatus::incomplete;
    for (const std::string_view name : applicationNames) {
        const bool isEnabled = opened.preferences().browserIsEnabled(name);
        terminal.out << name << ' ' << (isEnabled ? "YES" : "NO") << '\n';
    }
    return ExitStatus::done;
}

ExitStatus enable(Terminal& terminal, const std::string& name, bool enabled) {
    if (std::find(applicationNames.begin(), applicationNames.end(), name) ==
        applicationNames.end()) {
        terminal.complain(tr("there is no application \"{}\"; \"dorvanel apps\" lists them", name));
        return ExitStatus::usage;
    }
    OpenedPreferences opened(terminal);
    if (!opened.areKnown()) return ExitStatus::incomplete;
    if (opened.preferences().browserIsEnabled(name) == enabled) return ExitStatus::done;
    return opened.statusOf(opened.preferences().enableChanged(name));
}

}  // namespace

void addAppsCommand(CLI::App& program, Action& chosen) {
    auto name = std::make_shared<std::string>();
    CLI::App* apps = program.add_subcommand(
        "apps", tr("List the supported applications, enable and disable them"));
    apps->require_subcommand(0, 1)->fallthrough();
    apps->callback([&chosen] {
        if (!chosen) chosen = list;
    });
    apps->add_subcommand("list", tr("Print every application and YES or NO (also without a word)"))
        ->fallthrough()
        ->callback([&chosen] { chosen = list; });

    const auto addSwitch = [&](const char* word, const std::string& description, bool enabled) {
        CLI::App* command = apps->add_subcommand(word, description);
        command->fallthrough()->add_option("NAME", *name, tr("The application's name"))->required();
        command->callback([&chosen, name, enabled] {
            chosen = [name, enabled](Terminal& terminal) {
                return enable(terminal, *name, enabled);
            };
        });
    };
    addSwitch("enable", tr("Shred what the application left (Mozilla with Netscape)"), true);
    addSwitch("disable", tr("Leave the application alone (Mozilla with Netscape)"), false);
}

}  // namespace dorvanel::terminal
